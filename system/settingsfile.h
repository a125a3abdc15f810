#pragma once

#include <optional>

#include <QMap>
#include <QString>

/// A settings file in the format of QSettings that several programs write at once and that any of
/// them may leave at any moment, by a kill or a power cut: it is whole at all times.
namespace platform::settingsfile {

/// Whether every line is a section, a comment or a key with its value. True where there is nothing
/// to read.
bool isParsable(const QString &path);

/// Puts the values under their keys; they are on the disk when it returns. Everything else in the
/// file is carried over; where something cannot be, the file as it was is kept aside first, and
/// its new name returned. A symbolic link is followed and stays.
///
/// Raises Exception with the reason where the file cannot be written; it is then as it was.
std::optional<QString> write(const QString &path, const QMap<QString, QString> &values);

}  // namespace platform::settingsfile
