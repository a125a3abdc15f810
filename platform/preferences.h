#pragma once

#include <memory>
#include <optional>

#include <QSettings>
#include <QString>

namespace platform {

/// The user's preferences store: text under text keys, kept between runs. Nothing is cached:
/// a read sees what another process wrote, a write is on the disk when it returns.
///
/// A file that cannot be parsed is read as far as it goes and copied aside before it is written
/// over; a store that cannot be written is kept in memory. Either is reported once, as a line on
/// standard error.
class Preferences final {
 public:
    Preferences();

    static Preferences &standardUserDefaults();

    void setValueForKey(const QString &value, const QString &key);
    /// The text under `key`, or nothing where the key is absent.
    std::optional<QString> valueForKey(const QString &key);
    /// As valueForKey; for callers that ask only whether the key exists.
    std::optional<QString> objectForKey(const QString &key);

 private:
    void open();
    /// Whether the file can be parsed; reports it once where it cannot.
    bool checkParsable();
    void keepAside() const;

    std::unique_ptr<QSettings> settings_;
    bool reportedUnparsable_ = false;
    bool reportedUnwritable_ = false;
};

}  // namespace platform
