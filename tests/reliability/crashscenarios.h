#pragma once

#include <QList>

#include "crashstates.h"
#include "support/store.h"

/// Where the store is in a tree that holds a configuration home.
inline constexpr const char *storeInTree = "home/Zorvan/Zorvan.conf";

/// Writes that a crash may interrupt.
struct Scenario {
    const char *name = nullptr;
    /// What the folder around the configuration home holds.
    Tree before;
    /// Each of them is a batch.
    QList<store::Contents> writes;
    /// The file in which the first write has to keep the present one aside, if any.
    QByteArray kept = {};
};

QList<Scenario> crashScenarios();
