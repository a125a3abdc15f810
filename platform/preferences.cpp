#include "platform/preferences.h"

#include <QFile>

#include "platform/log.h"

using namespace Qt::StringLiterals;

namespace platform {

Preferences::Preferences() {
    open();
    unparsable_ = settings_->status() == QSettings::FormatError;
    if (unparsable_) {
        log(u"The preferences in %1 cannot be parsed; what can be read is used, and "
            "the file is kept aside before it is written"_s.arg(settings_->fileName()));
    }
}

Preferences &Preferences::standardUserDefaults() {
    static Preferences preferences;
    return preferences;
}

void Preferences::open() {
    settings_ = std::make_unique<QSettings>(QSettings::NativeFormat, QSettings::UserScope,
                                            u"Zorvan"_s, u"Zorvan"_s);
    // Another program's or the system's settings must not answer for ours.
    settings_->setFallbacksEnabled(false);
    settings_->sync();
}

void Preferences::setValueForKey(const QString &value, const QString &key) {
    if (unparsable_) {
        keepAside();
    }
    settings_->setValue(key, value);
    settings_->sync();
    if (unparsable_) {
        // The file is whole again, but a QSettings never forgets an error.
        unparsable_ = false;
        open();
    }
    if (settings_->status() == QSettings::AccessError && !unwritable_) {
        unwritable_ = true;
        log(u"The preferences cannot be written to %1; they last only until the "
            "program ends"_s.arg(settings_->fileName()));
    }
}

std::optional<QString> Preferences::valueForKey(const QString &key) {
    settings_->sync();
    if (!settings_->contains(key)) {
        return std::nullopt;
    }
    return settings_->value(key).toString();
}

std::optional<QString> Preferences::objectForKey(const QString &key) {
    return valueForKey(key);
}

void Preferences::keepAside() {
    const QString file = settings_->fileName();
    QString aside;
    int copy = 1;
    do {
        aside = u"%1.unparsable-%2"_s.arg(file).arg(copy++);
    } while (QFile::exists(aside));
    if (QFile::copy(file, aside)) {
        return;
    }
    log(u"%1 could not be copied to %2"_s.arg(file, aside));
}

}  // namespace platform
