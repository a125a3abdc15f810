#pragma once

#include "support/standarderror.h"

/// What a walk did. If something is wrong, the process ends with the last steps, what is wrong and
/// how to repeat the walk.
class Journal final {
 public:
    Journal(quint32 seed, bool verbose) : seed_(seed), verbose_(verbose) {}

    void nextStep() { ++step_; }
    int step() const { return step_; }
    void say(const QString &words);

    /// What the program wrote to standard error since the last call.
    QStringList takeErrors() { return errors_.take(); }

    void want(bool holds, const QString &otherwise);
    void wantNone(const QStringList &faults) { want(faults.isEmpty(), faults.join(u'\n')); }

 private:
    void print(const QString &text);

    quint32 seed_;
    bool verbose_;
    StandardError errors_;
    int step_ = 0;
    QStringList lastSteps_;
};
