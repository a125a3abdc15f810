#pragma once

#include <functional>
#include <optional>
#include <utility>

#include <QList>
#include <QString>

namespace platform {

/// The user's preferences: strings under string keys, kept between runs. Nothing is cached: a read
/// sees what another process wrote, and a write is on the disk when it returns.
///
/// What cannot be parsed is left as it is. A value that cannot be written is kept in memory, and
/// tried again with every later write. Both are reported once, on standard error.
class Preferences final {
 public:
    Preferences();

    static Preferences &standardUserDefaults();

    /// Makes one write of several: while a batch exists, values are only kept in memory, and when
    /// it ends they are all on the disk. There can be one at a time. A kill meanwhile leaves all
    /// or none of them there or, where the system keeps the preferences itself, the first ones.
    class Batch final {
     public:
        explicit Batch(Preferences &preferences);
        ~Batch();
        Batch(const Batch &) = delete;
        Batch &operator=(const Batch &) = delete;

     private:
        Preferences &preferences_;
    };

    void setValueForKey(const QString &value, const QString &key);
    /// The text under `key`, or nothing if the key is absent.
    std::optional<QString> valueForKey(const QString &key);
    /// The same as valueForKey(), for callers that only ask whether the key exists.
    std::optional<QString> objectForKey(const QString &key);

    using Observer = std::function<void(const QString &value, const QString &key)>;
    /// Calls `observer` before every write. For tests, which need the order of the writes: the file
    /// does not tell it.
    void setObserver(Observer observer);

 private:
    void writeToDisk();

    /// The file, or whatever the system calls the place.
    QString path_;
    Observer observer_;
    /// Keys with values that are not on the disk yet, in the order of the writes.
    QList<std::pair<QString, QString>> unwritten_;
    bool inBatch_ = false;
    bool reportedUnwritable_ = false;
};

}  // namespace platform
