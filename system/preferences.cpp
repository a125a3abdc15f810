#include "system/preferences.h"

#include <utility>

#include "system/exception.h"
#include "system/log.h"

// Other systems keep the preferences themselves, and not in a text file.
#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
#define ZORVAN_PREFERENCES_ARE_A_FILE
#include "system/settingsfile.h"
#endif

using namespace Qt::StringLiterals;

namespace platform {

Preferences::Preferences()
    : settings_(QSettings::NativeFormat, QSettings::UserScope, u"Zorvan"_s, u"Zorvan"_s) {
    // Settings of another program or of the system must not be read as ours.
    settings_.setFallbacksEnabled(false);
#ifdef ZORVAN_PREFERENCES_ARE_A_FILE
    if (!settingsfile::isParsable(settings_.fileName())) {
        reportedUnparsable_ = true;
        log(u"The preferences in %1 cannot be parsed; what can be read is used, and the file is "
            "kept aside before it is written over"_s.arg(settings_.fileName()));
    }
#endif
}

Preferences &Preferences::standardUserDefaults() {
    static Preferences preferences;
    return preferences;
}

void Preferences::setValueForKey(const QString &value, const QString &key) {
    if (observer_) {
        observer_(value, key);
    }
    unwritten_.insert(key, value);
    try {
        writeToDisk();
        unwritten_.clear();
        reportedUnwritable_ = false;
    } catch (const Exception &exception) {
        if (!reportedUnwritable_) {
            reportedUnwritable_ = true;
            log(u"The preferences cannot be written to %1; they last only until the program ends. "
                "%2"_s.arg(settings_.fileName(), QString::fromUtf8(exception.what())));
        }
    }
}

void Preferences::writeToDisk() {
#ifdef ZORVAN_PREFERENCES_ARE_A_FILE
    const auto aside = settingsfile::write(settings_.fileName(), unwritten_);
    if (aside && !reportedUnparsable_) {
        log(u"Not all of the preferences in %1 could be carried over; the file as it was is kept "
            "as %2"_s.arg(settings_.fileName(), *aside));
    }
    reportedUnparsable_ = false;
#else
    for (auto value = unwritten_.begin(); value != unwritten_.end(); ++value) {
        settings_.setValue(value.key(), value.value());
    }
    settings_.sync();
    if (settings_.status() != QSettings::NoError) {
        throw Exception(u"The system refuses them"_s);
    }
#endif
}

std::optional<QString> Preferences::valueForKey(const QString &key) {
    if (const auto unwritten = unwritten_.constFind(key); unwritten != unwritten_.constEnd()) {
        return *unwritten;
    }
    settings_.sync();
    if (!settings_.contains(key)) {
        return std::nullopt;
    }
    return settings_.value(key).toString();
}

std::optional<QString> Preferences::objectForKey(const QString &key) {
    return valueForKey(key);
}

void Preferences::setObserver(Observer observer) {
    observer_ = std::move(observer);
}

}  // namespace platform
