#pragma once

#include <QByteArray>
#include <QString>
#include <QVariantMap>

/// The text of a settings file in the format of QSettings.
namespace platform::settingstext {

/// Whether the key is written as it is: ASCII letters and digits, at least one.
bool isPlain(const QString &key);

/// `content` with the texts of `values`, whose keys are plain, in its section General. Their
/// entries are replaced, or added at the top of the section, which is added if it is missing. Every
/// other byte is carried over.
///
/// QSettings may still read something else: it knows other spellings of a key.
QByteArray edited(const QByteArray &content, const QVariantMap &values);

}  // namespace platform::settingstext
