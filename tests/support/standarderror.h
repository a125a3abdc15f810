#pragma once

#include <QStringList>
#include <QTemporaryFile>

/// Catches what the process writes to standard error while this object exists.
class StandardError final {
 public:
    StandardError();
    ~StandardError();
    StandardError(const StandardError &) = delete;
    StandardError &operator=(const StandardError &) = delete;

    /// The lines written so far.
    QStringList lines();

 private:
    QTemporaryFile file_;
    int original_ = -1;
};
