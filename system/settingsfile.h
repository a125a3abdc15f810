#pragma once

#include <optional>

#include <QMap>
#include <QString>

/// A settings file in the format of QSettings. It is whole at all times, even if several programs
/// write it at once and a kill or a power cut ends any of them at any moment.
namespace platform::settingsfile {

/// Whether every line is a section, a comment or a key with its value. True if there is nothing to
/// read.
bool isParsable(const QString &path);

/// Writes the values under their keys; they are on disk when it returns. Everything else in the
/// file is carried over. If something cannot be, the old file is set aside first and its new path
/// is returned. A symbolic link is followed and stays.
///
/// Throws Exception with the reason if the file cannot be written; the file is then unchanged.
std::optional<QString> write(const QString &path, const QMap<QString, QString> &values);

}  // namespace platform::settingsfile
