#pragma once

#include <cstdio>

#include <QStringList>
#include <QTemporaryDir>

/// Keeps what the process writes to the C library's `stderr` from the terminal while this object
/// exists. A sanitizer's report still gets there.
class StandardError final {
 public:
    StandardError();
    ~StandardError();
    StandardError(const StandardError &) = delete;
    StandardError &operator=(const StandardError &) = delete;

    /// The lines written so far.
    QStringList lines() const;
    /// Those written since the last call.
    QStringList take();

    FILE *terminal() const { return terminal_; }

 private:
    QStringList linesFrom(qsizetype start) const;
    QByteArray written() const;

    FILE *terminal_ = stderr;
#ifdef Q_OS_WIN
    QString path() const;

    const QTemporaryDir folder_;
    FILE *file_;
#else
    char *written_ = nullptr;
    std::size_t size_ = 0;
#endif
    qsizetype taken_ = 0;
};
