#pragma once

#include <QString>
#include <QTemporaryDir>

/// A place of its own for the preferences, which this process and those that it starts use from
/// then on, in place of the user's. What is in it goes when this object does.
class StoreHome final {
 public:
    StoreHome();
    ~StoreHome();
    StoreHome(const StoreHome &) = delete;
    StoreHome &operator=(const StoreHome &) = delete;

    /// For processes that tests start: uses the place of the process that started this one.
    /// Elsewhere than on Windows, they do so by themselves.
    static void join();

 private:
#ifdef Q_OS_WIN
    QString key_;
#else
    QTemporaryDir folder_;
#endif
};
