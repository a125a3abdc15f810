#pragma once

#include <optional>

#include <QString>
#include <QVariantMap>

/// A settings file in the format of QSettings. It is whole at all times, even if several programs
/// write it at once and a kill or a power cut ends any of them at any moment.
namespace platform::settingsfile {

/// The text under `key`; nothing if it is absent or the file cannot be read.
std::optional<QString> value(const QString &path, const QString &key);

/// Whether QSettings understands every line. True if there is nothing to read.
bool isParsable(const QString &path);

/// Writes texts under plain keys, and returns when they are on the disk. Nothing else in the file
/// changes, unless QSettings would not find the texts then: in that case the old file is kept under
/// another name, which is returned, and the new one has only what QSettings can read of its texts.
/// A symbolic link is followed and stays.
///
/// Throws Exception with the reason if the texts may not be on the disk. The file is then as it
/// was, or as it should be.
std::optional<QString> write(const QString &path, const QVariantMap &values);

}  // namespace platform::settingsfile
