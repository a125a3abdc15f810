#pragma once

#include <QByteArrayList>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QTemporaryDir>

/// What the store's file holds after the first start.
inline const QByteArray seeded =
    "[General]\ncurrentStatus=0\ncurrentTest=0\nfirstRun=false\nquiz1=0\nquiz2=0\nquiz3=0\n"
    "quiz4=0\nquiz5=0\nquiz6=0\nquiz7=0\n";

/// The store's text with these entries, such as "quiz1=2", in place of those of the same keys.
inline QByteArray with(const QByteArrayList &entries, const QByteArray &text) {
    QByteArrayList lines = text.split('\n');
    for (const QByteArray &entry : entries) {
        const QByteArray key = entry.first(entry.indexOf('=') + 1);
        for (QByteArray &line : lines) {
            if (line.startsWith(key)) {
                line = entry;
            }
        }
    }
    return lines.join('\n');
}

/// Files by their paths relative to the program's folder: what they hold, or are.
using Files = QMap<QByteArray, QByteArray>;

/// A configuration home of its own, which the program and its processes use while this object
/// exists. It is in memory if possible: no test turns the power off.
class Configuration final {
 public:
    Configuration() {
        QDir().mkdir(home());
        qputenv("XDG_CONFIG_HOME", home().toUtf8());
    }
    ~Configuration() { qputenv("XDG_CONFIG_HOME", before_); }
    Configuration(const Configuration &) = delete;
    Configuration &operator=(const Configuration &) = delete;

    /// What the configuration home is in, and nothing else.
    QString surroundings() const { return place_.path(); }
    QString home() const { return place_.filePath(QStringLiteral("home")); }
    QString folder() const { return home() + QStringLiteral("/Zorvan"); }
    QString file() const { return folder() + QStringLiteral("/Zorvan.conf"); }

    /// Writes the store, or another file in the program's folder, which is created if it is
    /// missing.
    void write(const QByteArray &content,
               const QString &name = QStringLiteral("Zorvan.conf")) const {
        QDir().mkpath(folder());
        QFile target(folder() + u'/' + name);
        if (!target.open(QIODevice::WriteOnly) || target.write(content) != content.size()) {
            qFatal("%s cannot be written", qUtf8Printable(target.fileName()));
        }
    }

    Files files() const {
        Files files;
        QDirIterator all(place_.path(), QDir::Files | QDir::Hidden | QDir::System,
                         QDirIterator::Subdirectories);
        while (all.hasNext()) {
            QFile file(all.next());
            const QFileInfo info(file);
            QByteArray content = "(nothing to read)";
            if (info.isSymLink()) {
                content = "(link to " + info.symLinkTarget().toUtf8() + ')';
            } else if (info.isFile() && file.open(QIODevice::ReadOnly)) {
                content = file.readAll();
            }
            files[QDir(folder()).relativeFilePath(file.fileName()).toUtf8()] = content;
        }
        return files;
    }
    QByteArrayList filesBesideTheStore() const {
        QByteArrayList others = files().keys();
        others.removeAll("Zorvan.conf");
        return others;
    }
    /// The store's bytes.
    QByteArray content() const { return files().value("Zorvan.conf"); }

 private:
    const QByteArray before_ = qgetenv("XDG_CONFIG_HOME");
    QTemporaryDir place_{(QFileInfo(QStringLiteral("/dev/shm")).isWritable()
                              ? QStringLiteral("/dev/shm")
                              : QDir::tempPath()) +
                         QStringLiteral("/zorvan-test-XXXXXX")};
};
