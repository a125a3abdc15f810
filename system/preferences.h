#pragma once

#include <functional>
#include <optional>

#include <QMap>
#include <QSettings>
#include <QString>

namespace platform {

/// The user's preferences store: text under text keys, kept between runs. Nothing is cached:
/// a read sees what another process wrote, a write is on the disk when it returns.
///
/// A file that cannot be parsed is read as far as it goes and kept aside before it is written
/// over. What cannot be written is kept in memory, and tried again with every later write. Either
/// is reported once, as a line on standard error.
class Preferences final {
 public:
    Preferences();

    static Preferences &standardUserDefaults();

    void setValueForKey(const QString &value, const QString &key);
    /// The text under `key`, or nothing where the key is absent.
    std::optional<QString> valueForKey(const QString &key);
    /// As valueForKey; for callers that ask only whether the key exists.
    std::optional<QString> objectForKey(const QString &key);

    using Observer = std::function<void(const QString &value, const QString &key)>;
    /// Tells `observer` of every write that is asked for, before it is made: the file has them
    /// sorted, a test has to know their order.
    void setObserver(Observer observer);

 private:
    /// Raises Exception with the reason where that cannot be done.
    void writeToDisk();

    QSettings settings_;
    Observer observer_;
    /// What is not on the disk.
    QMap<QString, QString> unwritten_;
    bool reportedUnparsable_ = false;
    bool reportedUnwritable_ = false;
};

}  // namespace platform
