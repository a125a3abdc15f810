#pragma once

#include <functional>
#include <optional>

#include "configuration.h"
#include "crashscenarios.h"

/// What is there between two writes. A crash may leave more files.
struct Moment {
    Tree tree;
    store::Contents values;
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
std::optional<Crash> crashAfterKill(const Scenario &scenario, qsizetype calls,
                                    const store::Contents &more);

/// Makes the tree what the folder around the configuration home holds.
void settle(const Configuration &configuration, const Tree &tree);

/// What the program reads.
store::Contents readPreferences();
