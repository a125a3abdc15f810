#include "system/settingsfile.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <system_error>
#include <unistd.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QScopeGuard>
#include <QSettings>

#include "system/exception.h"
#include "system/settingstext.h"

using namespace Qt::StringLiterals;

namespace platform::settingsfile {

namespace {

[[noreturn]] void failWithErrno() {
    throw Exception(QString::fromStdString(std::generic_category().message(errno)));
}

void openFolder(QFile &folder, const QString &path) {
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0 ||
        !folder.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        failWithErrno();
    }
}

/// Once it returns, a file's content or the names in a folder survive a power cut.
void sync(const QFile &file) {
    // Not every file system can sync a folder.
    if (::fsync(file.handle()) != 0 && errno != EINVAL) {
        failWithErrno();
    }
}

/// Once it returns, the folder survives a power cut.
void createFolder(const QString &path) {
    const QFileInfo info(path);
    // An empty one may be what a kill has left, or what another process has just created: its name
    // need not be on the disk yet. In a folder that cannot be opened, none is created.
    if (info.exists() && (!QFileInfo(info.absolutePath()).isReadable() ||
                          !QDir(path).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System |
                                              QDir::NoDotAndDotDot))) {
        return;
    }
    createFolder(info.absolutePath());
    QFile parent;
    openFolder(parent, info.absolutePath());
    QDir().mkdir(path);
    sync(parent);
}

/// Creates the file and leaves it open. If that fails, no file is left behind.
void writeNew(QFile &file, const QByteArray &content) {
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
        throw Exception(file.errorString());
    }
    if (file.write(content) != content.size() || !file.flush()) {
        // By its name: an open file would be flushed first, which fails again on a full disk.
        QFile::remove(file.fileName());
        throw Exception(file.errorString());
    }
}

/// Keeps a copy of the file that is about to be replaced, and returns the copy's path.
QString keepAside(const QString &path, const QByteArray &content, const QFile &folder) {
    for (int number = 1;; ++number) {
        QFile aside(u"%1.kept-%2"_s.arg(path).arg(number));
        if (!aside.exists()) {
            writeNew(aside, content);
            aside.setPermissions(QFile::permissions(path));
        } else if (!QFileInfo(aside).isFile() || !aside.open(QIODevice::ReadOnly) ||
                   aside.readAll() != content) {
            continue;
        }
        sync(aside);
        sync(folder);
        return aside.fileName();
    }
}

/// What QSettings reads from the file.
QVariantMap everythingIn(const QString &path) {
    QVariantMap everything;
    // Opening a pipe would wait for its other end.
    if (QFileInfo(path).isFile()) {
        const QSettings settings(path, QSettings::IniFormat);
        for (const QString &key : settings.allKeys()) {
            // Junk can be parsed as a key for which QSettings looks up another, or none: it leaves
            // out slashes that separate nothing.
            if (!QString(u'/' + key + u'/').contains(u"//")) {
                everything.insert(key, settings.value(key));
            }
        }
    }
    return everything;
}

/// A time at which QSettings has seen neither the file nor its draft: it tells versions apart by
/// size and time, and a write takes less time than the clock's resolution.
QDateTime newTime(const QFileInfo &file) {
    static qint64 last = 0;
    last = std::max({QDateTime::currentMSecsSinceEpoch(), last + 1,
                     file.lastModified().toMSecsSinceEpoch() + 1});
    return QDateTime::fromMSecsSinceEpoch(last);
}

}  // namespace

std::optional<QString> value(const QString &path, const QString &key) {
    if (!QFileInfo(path).isFile()) {
        return std::nullopt;
    }
    const QSettings settings(path, QSettings::IniFormat);
    return settings.contains(key) ? std::optional(settings.value(key).toString()) : std::nullopt;
}

bool isParsable(const QString &path) {
    if (!QFileInfo(path).isFile()) {
        return true;
    }
    const QSettings settings(path, QSettings::IniFormat);
    // Nothing is parsed before it is asked for.
    static_cast<void>(settings.allKeys());
    return settings.status() != QSettings::FormatError;
}

std::optional<QString> write(const QString &path, const QVariantMap &values) {
    createFolder(QFileInfo(path).path());
    QFileInfo current(path);
    // As many links as the system follows.
    for (int links = 0; links < 40 && current.isSymLink(); ++links) {
        current.setFile(current.symLinkTarget());
    }
    QFile folder;
    openFolder(folder, current.path());
    // Unlike a lock file, this lock ends with its process. Not every file system has locks; a lone
    // writer is safe without one.
    while (::flock(folder.handle(), LOCK_EX) != 0 && errno == EINTR) {
    }

    current.refresh();
    if ((current.exists() || current.isSymLink()) && !current.isFile()) {
        throw Exception(u"It is not a file"_s);
    }
    QFile file(current.filePath());
    QByteArray before;
    // Opened for writing, too, so that a file that is read-only stays as it is.
    if (current.exists() && file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly)) {
        before = file.readAll();
    }
    if (file.error() != QFileDevice::NoError) {
        throw Exception(file.errorString());
    }
    QVariantMap expected = everythingIn(file.fileName());
    expected.insert(values);

    QFile next(u"%1/.%2.writing"_s.arg(current.path(), current.fileName()));
    const auto removal = qScopeGuard([&] { QFile::remove(next.fileName()); });
    const auto succeedsWith = [&](const QByteArray &content) {
        next.close();
        // A kill may have left one behind.
        QFile::remove(next.fileName());
        writeNew(next, content);
        if (current.exists()) {
            next.setPermissions(current.permissions());
        }
        next.setFileTime(newTime(current), QFileDevice::FileModificationTime);
        const QVariantMap found = everythingIn(next.fileName());
        return std::ranges::all_of(expected.keys(), [&](const QString &key) {
            return found.value(key) == expected.value(key);
        });
    };
    std::optional<QString> aside;
    if (!succeedsWith(settingstext::edited(before, values))) {
        expected.removeIf([](std::pair<const QString &, QVariant &> entry) {
            return !settingstext::isPlain(entry.first) ||
                   entry.second.typeId() != QMetaType::QString;
        });
        if (!succeedsWith(settingstext::edited({}, expected))) {
            throw Exception(u"They cannot be read back"_s);
        }
        aside = keepAside(file.fileName(), before, folder);
    }
    sync(next);
    if (::rename(QFile::encodeName(next.fileName()).constData(),
                 QFile::encodeName(file.fileName()).constData()) != 0) {
        failWithErrno();
    }
    sync(folder);
    return aside;
}

}  // namespace platform::settingsfile
