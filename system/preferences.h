#pragma once

#include <functional>
#include <optional>

#include <QMap>
#include <QSettings>
#include <QString>

namespace platform {

/// The user's preferences: strings under string keys, kept between runs. Nothing is cached: a read
/// sees what another process wrote, and a write is on disk when it returns.
///
/// A file that cannot be parsed is read as far as possible and set aside before it is overwritten.
/// A value that cannot be written is kept in memory, and tried again with every later write. Both
/// are reported once, on standard error.
class Preferences final {
 public:
    Preferences();

    static Preferences &standardUserDefaults();

    void setValueForKey(const QString &value, const QString &key);
    /// The text under `key`, or nothing if the key is absent.
    std::optional<QString> valueForKey(const QString &key);
    /// The same as valueForKey(), for callers that only ask whether the key exists.
    std::optional<QString> objectForKey(const QString &key);

    using Observer = std::function<void(const QString &value, const QString &key)>;
    /// Calls `observer` before every write. For tests, which need the order of the writes: the file
    /// is sorted by key.
    void setObserver(Observer observer);

 private:
    /// Throws Exception with the reason if the disk cannot be written.
    void writeToDisk();

    QSettings settings_;
    Observer observer_;
    /// Values that are not on disk yet.
    QMap<QString, QString> unwritten_;
    bool reportedUnparsable_ = false;
    bool reportedUnwritable_ = false;
};

}  // namespace platform
