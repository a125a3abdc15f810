#include <algorithm>

#include <QDebug>
#include <QTest>

#include "crashes.h"
#include "support/standarderror.h"
#include "support/testmain.h"
#include "system/preferences.h"

using namespace Qt::StringLiterals;

namespace {

/// Whether all is there that was there at that moment.
bool isAsAt(const Moment &moment, const Tree &state) {
    return state.contains(storeInTree) == moment.tree.contains(storeInTree) &&
           std::ranges::all_of(moment.tree, [&](const auto &file) {
               const auto found = state.find(file.first);
               return file.first.endsWith(".writing") ||
                      (found != state.end() && found->second == file.second);
           });
}

/// What is wrong with what the program does with the state; empty if nothing is.
QByteArray problemOf(const Tree &state, const Crash &crash) {
    // QSettings remembers files by their paths.
    const Configuration configuration;
    settle(configuration, state);
    store::Contents values = readPreferences();
    if (std::ranges::none_of(crash.allowed, [&](const Moment &moment) {
            return values == moment.values && isAsAt(moment, state);
        })) {
        return "the program reads: " + QDebug::toString(values).toUtf8();
    }
    platform::Preferences().setValueForKey(u"3"_s, u"quiz7"_s);
    values.insert(u"quiz7"_s, u"3"_s);
    if (readPreferences() != values) {
        return "after the next write the program reads: " +
               QDebug::toString(readPreferences()).toUtf8();
    }
    QByteArrayList others = configuration.filesBesideTheStore();
    others.removeIf([](const QByteArray &name) { return name.contains(".kept-"); });
    return others.isEmpty() ? QByteArray() : "the next write leaves " + others.join(' ');
}

/// The same for all states of the crash.
QByteArray problemOf(const Crash &crash) {
    for (const Tree &state : crash.states) {
        const QByteArray problem = problemOf(state, crash);
        if (!problem.isEmpty()) {
            return "After " + crash.after + ", " + problem + " from\n" + asText(state);
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
            QByteArray problem;
            eachCrash(scenario, [&](const Crash &crash) {
                all.insert(crash.states.begin(), crash.states.end());
                problem = problemOf(crash);
                return problem.isEmpty();
            });
            QVERIFY2(problem.isEmpty(), scenario.name + (". " + problem));
        }
        qInfo("%d different states", int(all.size()));
        QVERIFY(all.size() >= 1000);
    }

    void writeAfterAKillIsAsSafeAsAnyOther() {
        const StandardError standardError;
        for (const Scenario &scenario : crashScenarios()) {
            qsizetype calls = 0;
            while (const auto crash = crashAfterKill(scenario, calls, {{u"quiz2"_s, u"1"_s}})) {
                const QByteArray problem = problemOf(*crash);
                QVERIFY2(problem.isEmpty(),
                         scenario.name + (". Killed after " + QByteArray::number(calls) +
                                          " calls. " + problem));
                ++calls;
            }
            // Those that create, fill, sync and rename the file, and sync its folder.
            QVERIFY2(calls >= 5, scenario.name);
        }
    }
};

ZORVAN_TEST(tst_crashstates)
#include "tst_crashstates.moc"
