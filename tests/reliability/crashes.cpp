#include "crashes.h"

#include <algorithm>
#include <cerrno>

#include "system/preferences.h"

using namespace Qt::StringLiterals;

using platform::Preferences;
using systemcalls::Call;

namespace {

/// Keeps the calls that change something in a folder, with their paths in it. After a given number
/// of them all fail, as if the process had been killed.
class Recorder final : public systemcalls::Watcher {
 public:
    Recorder(const QString &folder, qsizetype mostCalls)
        : folder_(folder.toUtf8()), mostCalls_(mostCalls) {}

    int errorOf(const Call &call) override {
        return concerns(call) && calls_.size() == mostCalls_ ? EIO : 0;
    }
    void succeeded(const Call &call) override {
        if (concerns(call)) {
            calls_ << call;
            for (QByteArray *path : {&calls_.last().path, &calls_.last().oldPath}) {
                *path = path->mid(folder_.size() + 1);
            }
        }
    }

    const QList<Call> &calls() const { return calls_; }

 private:
    bool concerns(const Call &call) const {
        return call.kind != systemcalls::Kind::Read && systemcalls::isIn(folder_, call.path);
    }

    QByteArray folder_;
    qsizetype mostCalls_;
    QList<Call> calls_;
};

/// Writes the values and returns the calls that this took.
QList<Call> callsToWrite(const store::Contents &values, const Configuration &configuration,
                         Preferences &preferences, qsizetype mostCalls = 1000) {
    const Recorder recorder(configuration.surroundings(), mostCalls);
    {
        const Preferences::Batch batch(preferences);
        for (auto value = values.begin(); value != values.end(); ++value) {
            preferences.setValueForKey(*value, value.key());
        }
    }
    return recorder.calls();
}

/// What is there after the calls, which have written the values.
Moment momentAfter(const QList<Call> &calls, CrashingDisk &disk, const store::Contents &values,
                   const Moment &last) {
    for (const Call &call : calls) {
        disk.apply(call);
    }
    Moment next{disk.now(), last.values};
    next.values.insert(values);
    return next;
}

}  // namespace

void settle(const Configuration &configuration, const Tree &tree) {
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

void eachCrash(const Scenario &scenario, const std::function<bool(const Crash &)> &look) {
    const Configuration configuration;
    settle(configuration, scenario.before);
    Preferences preferences;
    CrashingDisk disk(scenario.before);
    Moment last{scenario.before, readPreferences()};
    for (const store::Contents &write : scenario.writes) {
        const QList<Call> calls = callsToWrite(write, configuration, preferences);
        CrashingDisk diskAtTheEnd = disk;
        Moment next = momentAfter(calls, diskAtTheEnd, write, last);
        if (!scenario.kept.isEmpty()) {
            next.tree[scenario.kept] = scenario.before.at(storeInTree);
        }
        std::set<Tree> seen;
        for (const Call &call : calls) {
            disk.apply(call);
            std::set<Tree> states = disk.afterCrash();
            std::erase_if(states, [&](const Tree &state) { return seen.contains(state); });
            seen.insert(states.begin(), states.end());
            if (!look({call.name, states, {last, next}})) {
                return;
            }
        }
        if (!look({"the write's end", disk.afterCrash(), {next}})) {
            return;
        }
        last = next;
    }
}

std::optional<Crash> crashAfterKill(const Scenario &scenario, qsizetype calls,
                                    const store::Contents &more) {
    const Configuration configuration;
    settle(configuration, scenario.before);
    const Moment start{scenario.before, readPreferences()};
    store::Contents values = scenario.writes.constFirst();
    Preferences killed;
    QList<Call> all = callsToWrite(values, configuration, killed, calls);
    if (all.size() < calls) {
        return std::nullopt;
    }
    values.insert(more);
    Preferences next;
    all << callsToWrite(values, configuration, next);

    CrashingDisk disk(scenario.before);
    Moment end = momentAfter(all, disk, values, start);
    // An unfinished file may have taken the name.
    if (!scenario.kept.isEmpty() && std::ranges::none_of(end.tree, [&](const auto &file) {
            return file.second == scenario.before.at(storeInTree);
        })) {
        end.tree[scenario.kept] = scenario.before.at(storeInTree);
    }
    return Crash{"the write after the kill", disk.afterCrash(), {end}};
}
