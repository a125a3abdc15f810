#pragma once

#include <functional>

#include <QCryptographicHash>

#include "monkey/account.h"
#include "monkey/liveprogram.h"

/// What a walk did and found. If something is wrong, the process ends with the last steps, what was
/// found and how to repeat the walk.
class Journal final {
 public:
    Journal(quint32 seed, bool verbose) : seed_(seed), verbose_(verbose) {}

    void nextStep() { ++step_; }
    int step() const { return step_; }

    void say(const QString &words);
    /// Adds to the hash of the walk.
    void note(const QString &seen) { digest_.addData(seen.toUtf8()); }
    QString digest() const { return QString::fromLatin1(digest_.result().toHex()); }

    Account &account() { return account_; }
    const Account &account() const { return account_; }
    void count(const QString &thing, int times = 1) { account_.count(thing, times); }

    /// What the program wrote to standard error since the last call.
    QStringList takeErrors() { return errors_.take(); }

    /// Says what the program looks like when something is wrong.
    void describeWith(std::function<QString()> state) { state_ = std::move(state); }
    void want(bool holds, const QString &found, const QString &wanted);
    [[noreturn]] void fail(const QString &found, const QString &wanted);

 private:
    quint32 seed_;
    bool verbose_;
    WrittenErrors errors_;
    Account account_;
    QCryptographicHash digest_{QCryptographicHash::Sha1};
    int step_ = 0;
    QStringList lastSteps_;
    std::function<QString()> state_;
};
