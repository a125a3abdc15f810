#include <algorithm>

#include <QTest>

#include "reliability/crashscenarios.h"
#include "support/standarderror.h"
#include "support/testmain.h"
#include "system/preferences.h"

using namespace Qt::StringLiterals;

namespace {

/// Whether the files are there as they were at that moment. A crash may leave others.
bool isAsAt(const Moment &moment, const Tree &state) {
    return state.contains(storeInTree) == moment.tree.contains(storeInTree) &&
           std::ranges::all_of(moment.tree, [&](const auto &file) {
               const auto found = state.find(file.first);
               return file.first.endsWith(".writing") ||
                      (found != state.end() && found->second == file.second);
           });
}

QString asText(const Values &values) {
    QString text;
    for (auto value = values.begin(); value != values.end(); ++value) {
        text += value.key() + u'=' + *value + u' ';
    }
    return text;
}

}  // namespace

/// The store after a crash or a power cut at any moment: whatever the disk may have made of it, the
/// program finds everything that a write has announced, and no half of one.
class tst_crashstates final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void everyCrashLeavesTheOldOrTheNewValues() {
        StandardError standardError;
        std::set<Tree> all;
        QStringList badScenarios;
        for (const Scenario &scenario : crashScenarios()) {
            std::set<Tree> states;
            eachCrash(scenario, [&](const Crash &crash) {
                states.insert(crash.states.begin(), crash.states.end());
                const QString problem = problemOf(crash);
                if (!problem.isEmpty()) {
                    badScenarios << QString::fromLatin1(scenario.name);
                    qWarning("%s. %s", scenario.name, qUtf8Printable(problem));
                }
                // The calls that follow could multiply the states without end.
                return problem.isEmpty();
            });
            qInfo("%s: %d states", scenario.name, int(states.size()));
            all.merge(states);
        }
        QCOMPARE(badScenarios, QStringList());
        const QString told = standardError.lines().join(u'\n');
        QVERIFY2(!told.contains(u"cannot be written"), qUtf8Printable(told));
        qInfo("%d different states", int(all.size()));
        QVERIFY(all.size() >= 1000);
    }

    void writeAfterAKillIsAsSafeAsAnyOther_data() {
        QTest::addColumn<Scenario>("scenario");
        for (const Scenario &scenario : crashScenarios()) {
            QTest::newRow(scenario.name) << scenario;
        }
    }

    void writeAfterAKillIsAsSafeAsAnyOther() {
        QFETCH(const Scenario, scenario);
        StandardError standardError;
        qsizetype calls = 0;
        while (const auto crash = crashAfterKill(scenario, calls, {{u"quiz2"_s, u"1"_s}})) {
            const QString problem = problemOf(*crash);
            QVERIFY2(problem.isEmpty(),
                     qUtf8Printable(u"Killed after %1 calls. "_s.arg(calls) + problem));
            ++calls;
        }
        // At least those that create, fill, sync and rename the file, and sync its folder.
        QVERIFY(calls >= 5);
    }

 private:
    /// What is wrong with what the program does with the state; empty if nothing is.
    static QString problemOf(const Tree &state, const Crash &crash) {
        // QSettings remembers files by their paths.
        const Configuration configuration;
        settle(configuration, state);
        Values values = readPreferences();
        if (std::ranges::none_of(crash.allowed, [&](const Moment &moment) {
                return values == moment.values && isAsAt(moment, state);
            })) {
            return u"the program reads: "_s + asText(values);
        }
        platform::Preferences().setValueForKey(u"3"_s, u"quiz7"_s);
        values.insert(u"quiz7"_s, u"3"_s);
        if (readPreferences() != values) {
            return u"after the next write the program reads: "_s + asText(readPreferences());
        }
        QStringList others = configuration.filesBesideTheStore();
        others.removeIf([](const QString &name) { return name.contains(u".kept-"); });
        return others.isEmpty() ? QString() : u"the next write leaves "_s + others.join(u' ');
    }

    /// The same for all states of the crash.
    static QString problemOf(const Crash &crash) {
        QStringList problems;
        for (const Tree &state : crash.states) {
            const QString problem = problemOf(state, crash);
            if (!problem.isEmpty()) {
                problems << problem + u" from\n"_s + asText(state);
            }
        }
        return problems.isEmpty() ? QString()
                                  : u"After %1, %2 of %3 states are bad; in the first, %4"_s
                                        .arg(QString::fromUtf8(crash.after))
                                        .arg(problems.size())
                                        .arg(crash.states.size())
                                        .arg(problems.constFirst());
    }
};

ZORVAN_TEST(tst_crashstates)
#include "tst_crashstates.moc"
