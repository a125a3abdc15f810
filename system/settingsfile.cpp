#include "system/settingsfile.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QSet>
#include <QSettings>
#include <QStringDecoder>

#include "system/exception.h"

using namespace Qt::StringLiterals;

namespace platform::settingsfile {

namespace {

[[noreturn]] void fail(const std::error_code &reason) {
    throw Exception(QString::fromStdString(reason.message()));
}

[[noreturn]] void failWithErrno() {
    fail({errno, std::generic_category()});
}

/// The file's folder, locked against other writers. A lock file would outlive a kill; this lock
/// ends with its process.
class LockedFolder final {
 public:
    explicit LockedFolder(const QString &path)
        : path_(path),
          descriptor_(
              ::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        if (descriptor_ < 0) {
            failWithErrno();
        }
        // Not every file system has locks; a lone writer is safe without one.
        while (::flock(descriptor_, LOCK_EX) != 0 && errno == EINTR) {
        }
    }
    ~LockedFolder() { ::close(descriptor_); }
    LockedFolder(const LockedFolder &) = delete;
    LockedFolder &operator=(const LockedFolder &) = delete;

    const QString &path() const { return path_; }
    /// Unique to this folder.
    QString id() const {
        struct ::stat status {};
        ::fstat(descriptor_, &status);
        return u"%1-%2"_s.arg(status.st_dev).arg(status.st_ino);
    }
    /// Once it returns, new names in the folder survive a power cut.
    void sync() const { ::fsync(descriptor_); }

 private:
    QString path_;
    int descriptor_;
};

/// A folder where QSettings edits a copy: its own way of writing to disk is slower, hides some
/// failures, and leaves files behind if it is killed. Files that a kill leaves here are removed by
/// the next write.
class ScratchFolder final {
 public:
    explicit ScratchFolder(const LockedFolder &store) : dir_(place(store)) {
        dir_.removeRecursively();
        std::error_code error;
        if (!std::filesystem::create_directory(dir_.filesystemPath(), error)) {
            fail(error);
        }
    }
    ~ScratchFolder() { dir_.removeRecursively(); }
    ScratchFolder(const ScratchFolder &) = delete;
    ScratchFolder &operator=(const ScratchFolder &) = delete;

    /// A path that this process has not used before, because QSettings caches files by path.
    QString newPath() const {
        static int files = 0;
        return dir_.filePath(QString::number(++files));
    }

 private:
    /// In memory if the session has a folder there; never where other users can write.
    static QString place(const LockedFolder &store) {
        const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
        const QFileInfo folder(runtime);
        return folder.isWritable() && folder.ownerId() == ::getuid()
                   ? u"%1/zorvan-%2"_s.arg(runtime, store.id())
                   : store.path() + u"/.writing"_s;
    }

    QDir dir_;
};

QString followLinks(QString path) {
    constexpr int most = 40;
    for (int links = 0; QFileInfo(path).isSymLink(); ++links) {
        if (links == most) {
            fail(std::make_error_code(std::errc::too_many_symbolic_link_levels));
        }
        path = QFileInfo(path).symLinkTarget();
    }
    return path;
}

QByteArray read(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw Exception(file.errorString());
    }
    QByteArray content = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        throw Exception(file.errorString());
    }
    return content;
}

/// Creates the file and leaves it open. If that fails, no file is left behind.
void writeNew(QFile &file, const QByteArray &content) {
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
        throw Exception(file.errorString());
    }
    if (file.write(content) != content.size() || !file.flush()) {
        const QString reason = file.errorString();
        file.remove();
        throw Exception(reason);
    }
}

/// Whether the copy has the values and everything else that the current settings have.
bool isComplete(const QSettings &copy, const QSettings &current,
                const QMap<QString, QString> &values) {
    for (auto value = values.begin(); value != values.end(); ++value) {
        if (copy.value(value.key()) != *value) {
            return false;
        }
    }
    const QStringList keys = current.allKeys();
    return std::all_of(keys.begin(), keys.end(), [&](const QString &key) {
        // Junk can be parsed as a value with an empty key, which cannot be looked up.
        return key.isEmpty() || values.contains(key) || copy.value(key) == current.value(key);
    });
}

/// `content`, which is that of `file`, with the values put in.
QByteArray edited(const QByteArray &content, const QString &file,
                  const QMap<QString, QString> &values, const ScratchFolder &scratch) {
    const QString draft = scratch.newPath();
    QFile copy(draft);
    writeNew(copy, content);
    copy.close();
    {
        QSettings settings(draft, QSettings::IniFormat);
        for (auto value = values.begin(); value != values.end(); ++value) {
            settings.setValue(value.key(), *value);
        }
    }
    // After a broken line QSettings reports no further errors, and on a full disk it takes an
    // empty file for a complete one.
    const QString finished = scratch.newPath();
    if (!QFile::rename(draft, finished) ||
        !isComplete(QSettings(finished, QSettings::IniFormat),
                    QSettings(file, QSettings::IniFormat), values)) {
        throw Exception(u"A copy in %1 cannot be written"_s.arg(QFileInfo(draft).path()));
    }
    return read(finished);
}

QSet<QByteArray> lines(const QByteArray &content) {
    QSet<QByteArray> lines;
    for (const QByteArray &line : content.split('\n')) {
        lines.insert(line.trimmed());
    }
    return lines;
}

/// Whether a line of `before`, other than those of the values, is missing or changed in `after`.
bool losesLines(const QByteArray &before, const QByteArray &after,
                const QMap<QString, QString> &values) {
    return std::ranges::any_of(lines(before) - lines(after), [&](const QByteArray &line) {
        const QByteArray key = line.first(qMax(line.indexOf('='), 0)).trimmed();
        return !line.isEmpty() && !values.contains(QString::fromUtf8(key));
    });
}

/// Gives the file a second name, which it keeps when it is replaced, and returns that name.
QString keepAside(const QString &path, const QByteArray &content) {
    for (int number = 1;; ++number) {
        QString aside = u"%1.kept-%2"_s.arg(path).arg(number);
        if (!QFile::exists(aside)) {
            std::error_code error;
            std::filesystem::create_hard_link(QFileInfo(path).filesystemFilePath(),
                                              QFileInfo(aside).filesystemFilePath(), error);
            if (error) {
                QFile copy(aside);
                writeNew(copy, content);
            }
            return aside;
        }
        if (read(aside) == content) {
            return aside;
        }
    }
}

/// Replaces the file atomically: at any moment it is either the old or the new one.
void replace(const QFileInfo &current, const QByteArray &content) {
    QFile next(u"%1/.%2.writing"_s.arg(current.path(), current.fileName()));
    // A kill may have left one behind.
    next.remove();
    writeNew(next, content);
    if (current.exists()) {
        next.setPermissions(current.permissions());
    }
    // QSettings tells versions of a file apart by size and time, and a write takes less time than
    // the clock's resolution.
    const QDateTime now = QDateTime::currentDateTime();
    const QDateTime previous = current.lastModified();
    next.setFileTime(now > previous ? now : previous.addMSecs(1),
                     QFileDevice::FileModificationTime);

    std::error_code error;
    if (::fdatasync(next.handle()) != 0) {
        error = {errno, std::generic_category()};
    } else {
        std::filesystem::rename(QFileInfo(next).filesystemFilePath(), current.filesystemFilePath(),
                                error);
    }
    if (error) {
        next.remove();
        fail(error);
    }
}

}  // namespace

bool isParsable(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return true;
    }
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString content = decoder(file.readAll());
    if (decoder.hasError()) {
        return false;
    }
    // QSettings itself reports only broken sections.
    bool continues = false;
    for (const QString &line : content.split(u'\n')) {
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

std::optional<QString> write(const QString &path, const QMap<QString, QString> &values) {
    QDir().mkpath(QFileInfo(path).path());
    const QString file = followLinks(path);
    const LockedFolder folder(QFileInfo(file).path());
    const ScratchFolder scratch(folder);

    const QFileInfo current(file);
    if (current.exists() && !current.isFile()) {
        throw Exception(u"It is not a file"_s);
    }
    if (current.exists() && !current.isWritable()) {
        fail(std::make_error_code(std::errc::permission_denied));
    }
    const QByteArray before = current.exists() ? read(file) : QByteArray();
    const QByteArray after = edited(before, file, values, scratch);
    std::optional<QString> aside;
    if (losesLines(before, after, values)) {
        aside = keepAside(file, before);
    }
    replace(current, after);
    folder.sync();
    return aside;
}

}  // namespace platform::settingsfile
