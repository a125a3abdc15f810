#pragma once

#include <functional>

#include "support/standarderror.h"

/// What a walk did and found. If something is wrong, the process ends with the last steps, what was
/// found and how to repeat the walk.
class Journal final {
 public:
    Journal(quint32 seed, bool verbose) : seed_(seed), verbose_(verbose) {}

    void nextStep() { ++step_; }
    int step() const { return step_; }

    void say(const QString &words);

    /// What the program wrote to standard error since the last call.
    QStringList takeErrors() { return errors_.take(); }

    /// Says what the program looks like when something is wrong.
    void describeWith(std::function<QString()> state) { state_ = std::move(state); }
    void want(bool holds, const QString &found, const QString &wanted);
    [[noreturn]] void fail(const QString &found, const QString &wanted);

 private:
    quint32 seed_;
    bool verbose_;
    StandardError errors_;
    int step_ = 0;
    QStringList lastSteps_;
    std::function<QString()> state_;
};
