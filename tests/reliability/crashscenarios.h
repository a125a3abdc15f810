#pragma once

#include <functional>
#include <optional>

#include <QList>
#include <QMap>

#include "reliability/configuration.h"
#include "reliability/crashstates.h"

/// The preferences by their keys.
using Values = QMap<QString, QString>;

/// Where the store is in such a tree.
inline constexpr const char *storeInTree = "home/Zorvan/Zorvan.conf";

/// Writes that a crash may interrupt.
struct Scenario {
    const char *name = nullptr;
    /// What the folder around the configuration home holds.
    Tree before;
    /// Each of them is a batch, unless it is of one value.
    QList<Values> writes;
    /// The file in which the first write has to keep the present one aside, if any.
    QByteArray kept = {};
};

QList<Scenario> crashScenarios();

/// What is there between two writes.
struct Moment {
    Tree tree;
    Values values;
};

/// A crash right after a call, or after the end of a write.
struct Crash {
    QByteArray after;
    /// What it may leave, and no crash earlier in the same write.
    std::set<Tree> states;
    /// What may be there: what has been announced, and what was being written.
    QList<Moment> allowed;
};

/// Performs the writes and hands over every crash there may be, in order, until `look` is false.
void eachCrash(const Scenario &scenario, const std::function<bool(const Crash &)> &look);

/// Kills the first write after that many calls, lets another process write the same and `more`, and
/// returns a crash after that; nothing if the first write does not have so many calls.
std::optional<Crash> crashAfterKill(const Scenario &scenario, qsizetype calls, const Values &more);

/// Makes the tree what the folder around the configuration home holds, and that home the one that
/// preferences are looked for in.
void settle(const Configuration &configuration, const Tree &tree);

/// What the program reads.
Values readPreferences();
