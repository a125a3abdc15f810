#include <algorithm>
#include <cerrno>

#include <QDebug>
#include <QTest>

#include "crashscenarios.h"
#include "support/standarderror.h"
#include "support/testmain.h"
#include "system/preferences.h"

using namespace Qt::StringLiterals;

using platform::Preferences;
using systemcalls::Call;

namespace {

/// Keeps the calls that change something. After a given number of them all fail, as if the process
/// had been killed.
class Recorder final : public systemcalls::Watcher {
 public:
    Recorder(const Configuration &configuration, qsizetype mostCalls)
        : Watcher(configuration.surroundings()), mostCalls_(mostCalls) {}

    int errorOf(const Call &call) override {
        return call.kind != systemcalls::Kind::Read && calls_.size() == mostCalls_ ? EIO : 0;
    }
    void succeeded(const Call &call) override {
        if (call.kind != systemcalls::Kind::Read) {
            calls_ << call;
        }
    }

    const QList<Call> &calls() const { return calls_; }

 private:
    qsizetype mostCalls_;
    QList<Call> calls_;
};

/// Writes the values and returns the calls that this took.
QList<Call> callsToWrite(const store::Contents &values, const Configuration &configuration,
                         Preferences &preferences, qsizetype mostCalls = 1000) {
    const Recorder recorder(configuration, mostCalls);
    {
        const Preferences::Batch batch(preferences);
        for (auto value = values.begin(); value != values.end(); ++value) {
            preferences.setValueForKey(*value, value.key());
        }
    }
    return recorder.calls();
}

/// Makes the tree what the folder around the configuration home holds.
void settle(const Tree &tree, const Configuration &configuration) {
    const QDir folder(configuration.surroundings());
    folder.rmdir(configuration.home());
    for (const auto &[path, content] : tree) {
        QFile file(folder.filePath(QString::fromUtf8(path)));
        if (content) {
            if (!file.open(QIODevice::WriteOnly) || file.write(*content) != content->size()) {
                qFatal("%s cannot be made", path.constData());
            }
        } else if (!path.isEmpty()) {
            folder.mkdir(file.fileName());
        }
    }
}

store::Contents readPreferences() {
    Preferences preferences;
    store::Contents values;
    QStringList keys = store::seeded().keys();
    for (const QString &key : keys << u"timedQuizzes"_s << u"colour"_s << u"notes"_s) {
        if (const auto value = preferences.valueForKey(key)) {
            values.insert(key, *value);
        }
    }
    return values;
}

/// What is there between two writes. A crash may leave more files.
struct Moment {
    Files files;
    store::Contents values;

    bool isNow(const Configuration &configuration) const {
        const Files now = configuration.files();
        return readPreferences() == values &&
               now.contains("Zorvan.conf") == files.contains("Zorvan.conf") &&
               std::ranges::all_of(files.keys(), [&](const QByteArray &file) {
                   return file.endsWith(".writing") ||
                          (now.contains(file) && now[file] == files[file]);
               });
    }
};

/// What is wrong with what the program does if a crash leaves the tree at one of the moments; empty
/// if nothing is.
QByteArray problemOf(const Tree &tree, const QList<Moment> &moments) {
    // QSettings remembers files by their paths.
    const Configuration configuration;
    settle(tree, configuration);
    store::Contents values = readPreferences();
    if (std::ranges::none_of(moments,
                             [&](const Moment &moment) { return moment.isNow(configuration); })) {
        return "the program reads: " + QDebug::toString(values).toUtf8();
    }
    Preferences().setValueForKey(u"3"_s, u"quiz7"_s);
    values.insert(u"quiz7"_s, u"3"_s);
    if (readPreferences() != values) {
        return "after the next write the program reads: " +
               QDebug::toString(readPreferences()).toUtf8();
    }
    QByteArrayList others = configuration.filesBesideTheStore();
    others.removeIf([](const QByteArray &name) { return name.contains(".kept-"); });
    return others.isEmpty() ? QByteArray() : "the next write leaves " + others.join(' ');
}

/// The same for each of the trees.
QByteArray problemOf(const std::set<Tree> &trees, const QList<Moment> &moments) {
    for (const Tree &tree : trees) {
        QByteArray problem = problemOf(tree, moments);
        if (!problem.isEmpty()) {
            problem += " from";
            for (const auto &[path, content] : tree) {
                problem += "\n  " + path + ": " +
                           content.value_or("(folder)").left(300).replace('\0', "\\0");
            }
            return problem;
        }
    }
    return {};
}

}  // namespace

/// The store after a crash or a power cut at any moment: whatever the disk may have made of it, the
/// program finds everything that a write has announced, and no half of one.
class tst_crashstates final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void everyCrashLeavesTheOldOrTheNewValues() {
        // The program tells of each file that it keeps aside.
        const StandardError standardError;
        std::set<Tree> all;
        for (const Scenario &scenario : crashScenarios()) {
            const Configuration configuration;
            settle(scenario.before, configuration);
            Preferences preferences;
            CrashingDisk disk(scenario.before);
            Moment last{configuration.files(), readPreferences()};
            for (const store::Contents &write : scenario.writes) {
                const QList<Call> calls = callsToWrite(write, configuration, preferences);
                Moment next{configuration.files(), last.values};
                next.values.insert(write);
                std::set<Tree> seen;
                for (const Call &call : calls) {
                    disk.apply(call);
                    std::set<Tree> states = disk.afterCrash();
                    std::erase_if(states, [&](const Tree &tree) { return seen.contains(tree); });
                    seen.insert(states.begin(), states.end());
                    const QByteArray problem = problemOf(states, {last, next});
                    QVERIFY2(problem.isEmpty(),
                             scenario.name + (". After " + QByteArray(call.name) + ", " + problem));
                }
                const QByteArray problem = problemOf(disk.afterCrash(), {next});
                QVERIFY2(problem.isEmpty(), scenario.name + (". After the write, " + problem));
                all.merge(seen);
                last = next;
            }
        }
        qInfo("%d different states", int(all.size()));
        QVERIFY(all.size() >= 1000);
    }

    void writeAfterAKillIsAsSafeAsAnyOther() {
        const StandardError standardError;
        for (const Scenario &scenario : crashScenarios()) {
            for (qsizetype killedAfter = 0;; ++killedAfter) {
                const Configuration configuration;
                settle(scenario.before, configuration);
                Moment end{{}, readPreferences()};
                store::Contents values = scenario.writes.constFirst();
                Preferences killed;
                QList<Call> calls = callsToWrite(values, configuration, killed, killedAfter);
                if (calls.size() < killedAfter) {
                    // Those that create, fill, sync and rename the file, and sync its folder.
                    QVERIFY2(calls.size() >= 5, scenario.name);
                    break;
                }
                values.insert(u"quiz2"_s, u"1"_s);
                Preferences next;
                calls << callsToWrite(values, configuration, next);

                CrashingDisk disk(scenario.before);
                std::ranges::for_each(calls, [&](const Call &call) { disk.apply(call); });
                end.files = configuration.files();
                end.values.insert(values);
                const QByteArray problem = problemOf(disk.afterCrash(), {end});
                QVERIFY2(problem.isEmpty(),
                         scenario.name + (". Killed after " + QByteArray::number(killedAfter) +
                                          " calls, " + problem));
            }
        }
    }
};

ZORVAN_TEST(tst_crashstates)
#include "tst_crashstates.moc"
