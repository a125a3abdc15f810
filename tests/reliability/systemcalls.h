#pragma once

#include <sys/types.h>

#include <QByteArray>
#include <QString>

/// The calls by which this process reads and changes files. A test program that links this has them
/// replaced: they go to the system as ever, but a watcher sees them and can make them fail.
namespace systemcalls {

enum class Kind {
    /// Of a file that may be created or emptied by it.
    Open,
    /// Also opening a file for that.
    Read,
    Write,
    Sync,
    Rename,
    Remove,
    MakeFolder,
};

/// Paths are relative to the watched folder.
struct Call {
    Kind kind{};
    /// What it reads or changes; the new path of what is renamed.
    QByteArray path = {};
    QByteArray oldPath = {};
    /// Whether a file that is opened is emptied.
    bool empties = false;
    /// What is written, and where.
    QByteArray bytes = {};
    off_t offset = 0;
    const char *name = nullptr;
};

/// While one exists, it is asked before every call in its folder. There can be one at a time.
class Watcher {
 public:
    explicit Watcher(const QString &folder);
    virtual ~Watcher();
    Watcher(const Watcher &) = delete;
    Watcher &operator=(const Watcher &) = delete;

    /// The error with which the call fails, before it does anything; zero to let it go on.
    virtual int errorOf(const Call & /*call*/) { return 0; }
    virtual void succeeded(const Call & /*call*/) {}

    const QByteArray &folder() const { return folder_; }

 private:
    QByteArray folder_;
};

}  // namespace systemcalls
