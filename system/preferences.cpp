#include "system/preferences.h"

#include <algorithm>
#include <utility>

#include "system/exception.h"
#include "system/log.h"

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
#include <QStandardPaths>
#include <QVariantMap>

#include "system/settingsfile.h"
#else
#include <QSettings>
#endif

using namespace Qt::StringLiterals;

namespace platform {

namespace {

using Entries = QList<std::pair<QString, QString>>;

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)

QString place() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           u"/Zorvan/Zorvan.conf"_s;
}

bool isParsable(const QString &path) {
    return settingsfile::isParsable(path);
}

std::optional<QString> read(const QString &path, const QString &key) {
    return settingsfile::value(path, key);
}

void write(const QString &path, const Entries &entries) {
    QVariantMap values;
    for (const auto &[key, value] : entries) {
        values.insert(key, value);
    }
    if (const auto aside = settingsfile::write(path, values)) {
        log(u"Not all of the preferences in %1 could be carried over; the file as it was is kept "
            "as %2"_s.arg(path, *aside));
    }
}

#else

// Other systems keep the preferences themselves, and not in a text file.
class Settings final : public QSettings {
 public:
    Settings() : QSettings(NativeFormat, UserScope, u"Zorvan"_s, u"Zorvan"_s) {
        // Settings of another program or of the system must not be read as ours.
        setFallbacksEnabled(false);
    }
};

QString place() {
    return Settings().fileName();
}

bool isParsable(const QString &) {
    return true;
}

std::optional<QString> read(const QString &, const QString &key) {
    const Settings settings;
    return settings.contains(key) ? std::optional(settings.value(key).toString()) : std::nullopt;
}

void write(const QString &, const Entries &entries) {
    Settings settings;
    for (const auto &[key, value] : entries) {
        settings.setValue(key, value);
    }
    settings.sync();
    if (settings.status() != QSettings::NoError) {
        throw Exception(u"The system refuses them"_s);
    }
}

#endif

}  // namespace

Preferences::Preferences() : path_(place()) {
    if (!isParsable(path_)) {
        log(u"The preferences in %1 cannot all be parsed; what can be read is used, and the rest "
            "is left as it is"_s.arg(path_));
    }
}

Preferences &Preferences::standardUserDefaults() {
    static Preferences preferences;
    return preferences;
}

Preferences::Batch::Batch(Preferences &preferences) : preferences_(preferences) {
    preferences_.inBatch_ = true;
}

Preferences::Batch::~Batch() {
    preferences_.inBatch_ = false;
    preferences_.writeToDisk();
}

void Preferences::setValueForKey(const QString &value, const QString &key) {
    if (observer_) {
        observer_(value, key);
    }
    // The last write of a key counts, and comes where it was asked for.
    unwritten_.removeIf([&key](const auto &entry) { return entry.first == key; });
    unwritten_.append({key, value});
    if (!inBatch_) {
        writeToDisk();
    }
}

void Preferences::writeToDisk() {
    try {
        write(path_, unwritten_);
        unwritten_.clear();
        reportedUnwritable_ = false;
    } catch (const Exception &exception) {
        if (!reportedUnwritable_) {
            reportedUnwritable_ = true;
            log(u"The preferences cannot be written to %1; they last only until the program ends. "
                "%2"_s.arg(path_, QString::fromUtf8(exception.what())));
        }
    }
}

std::optional<QString> Preferences::valueForKey(const QString &key) {
    const auto unwritten =
        std::ranges::find(std::as_const(unwritten_), key, &std::pair<QString, QString>::first);
    return unwritten == unwritten_.cend() ? read(path_, key) : std::optional(unwritten->second);
}

std::optional<QString> Preferences::objectForKey(const QString &key) {
    return valueForKey(key);
}

void Preferences::setObserver(Observer observer) {
    observer_ = std::move(observer);
}

}  // namespace platform
