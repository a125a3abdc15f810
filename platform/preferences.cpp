#include "platform/preferences.h"

#include <QFile>
#include <QStringDecoder>

#include "platform/log.h"

using namespace Qt::StringLiterals;

namespace platform {

namespace {

/// Whether every line is a section, a comment or a key with its value. QSettings itself reports
/// broken sections only, and drops any other line that it cannot read when it next writes.
bool isWellFormed(const QByteArray &text) {
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString decoded = decoder(text);
    if (decoder.hasError()) {
        return false;
    }
    bool continues = false;
    for (const QString &line : decoded.split(u'\n')) {
        const QString entry = line.trimmed();
        const bool section = entry.startsWith(u'[') && entry.endsWith(u']');
        const bool comment = entry.startsWith(u';') || entry.startsWith(u'#');
        const bool keyed = !entry.startsWith(u'[') && entry.indexOf(u'=') > 0;
        if (!continues && !entry.isEmpty() && !section && !comment && !keyed) {
            return false;
        }
        continues = entry.endsWith(u'\\');
    }
    return true;
}

}  // namespace

Preferences::Preferences() {
    open();
    checkParsable();
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
    if (!checkParsable() && !reportedUnwritable_) {
        keepAside();
    }
    settings_->setValue(key, value);
    settings_->sync();
    if (settings_->status() == QSettings::FormatError) {
        // The file is whole again, but a QSettings never forgets an error.
        open();
    }
    if (settings_->status() == QSettings::NoError) {
        reportedUnparsable_ = false;
    } else if (!reportedUnwritable_) {
        reportedUnwritable_ = true;
        log(u"The preferences cannot be written to %1; they last only until the program ends"_s.arg(
            settings_->fileName()));
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

bool Preferences::checkParsable() {
#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
    QFile file(settings_->fileName());
    if (!file.open(QIODevice::ReadOnly) || isWellFormed(file.readAll())) {
        return true;
    }
    if (!reportedUnparsable_) {
        reportedUnparsable_ = true;
        log(u"The preferences in %1 cannot be parsed; what can be read is used, and the file is "
            "kept aside before it is written over"_s.arg(file.fileName()));
    }
    return false;
#else
    // The system keeps them, and not as text.
    return true;
#endif
}

void Preferences::keepAside() const {
    const QString file = settings_->fileName();
    QString aside;
    int copy = 1;
    do {
        aside = u"%1.unparsable-%2"_s.arg(file).arg(copy++);
    } while (QFile::exists(aside));
    if (!QFile::copy(file, aside)) {
        log(u"%1 could not be copied to %2"_s.arg(file, aside));
    }
}

}  // namespace platform
