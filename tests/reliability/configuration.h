#pragma once

#include <optional>
#include <utility>

#include <QByteArray>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QTemporaryDir>

/// The store's file as a test sees it, in bytes: read without the program's code and without
/// QSettings.
using Contents = QMap<QByteArray, QByteArray>;
using Entry = std::pair<QByteArray, QByteArray>;

/// What the file holds after the first start.
inline constexpr const char *seeded =
    "[General]\ncurrentStatus=0\ncurrentTest=0\nfirstRun=false\nquiz1=0\nquiz2=0\nquiz3=0\nquiz4="
    "0\n"
    "quiz5=0\nquiz6=0\nquiz7=0\n";

inline QByteArray asText(const Contents &contents) {
    QByteArray text;
    for (auto entry = contents.begin(); entry != contents.end(); ++entry) {
        text += entry.key() + '=' + *entry + '\n';
    }
    return text;
}

/// The entries that the program never writes; empty if there are none.
inline QString forbiddenValues(const Contents &contents) {
    const QMap<QByteArray, QByteArrayList> allowed{
        {"currentTest", {"0", "1", "2", "3", "4", "5", "6", "7"}},
        {"currentStatus", {"0", "pass", "fail"}},
        {"timedQuizzes", {"yes", "no"}},
        {"firstRun", {"false"}},
    };
    QStringList forbidden;
    for (auto entry = contents.begin(); entry != contents.end(); ++entry) {
        const bool passCount = entry.key().size() == 5 && entry.key().startsWith("quiz") &&
                               entry.key() >= "quiz1" && entry.key() <= "quiz7";
        const QByteArrayList values =
            passCount ? QByteArrayList{"0", "1", "2", "3"} : allowed.value(entry.key());
        if (!values.contains(*entry)) {
            forbidden << QString::fromUtf8(entry.key() + '=' + *entry);
        }
    }
    return forbidden.join(u", ");
}

/// The entries of `expected` that the contents do not have; empty if there are none.
inline QByteArray missing(const Contents &expected, const Contents &contents) {
    Contents missing;
    for (auto entry = expected.begin(); entry != expected.end(); ++entry) {
        if (!contents.contains(entry.key()) || contents.value(entry.key()) != *entry) {
            missing.insert(entry.key(), *entry);
        }
    }
    return asText(missing);
}

/// A configuration home of its own, in memory if possible: no test turns the power off.
class Configuration final {
 public:
    Configuration() { QDir().mkdir(home()); }
    ~Configuration() {
        // Files that a test has made read-only would be left behind.
        for (const QString &path : {home(), folder()}) {
            QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        }
    }
    Configuration(const Configuration &) = delete;
    Configuration &operator=(const Configuration &) = delete;

    QString home() const { return place_.filePath(QStringLiteral("home")); }
    QString folder() const { return home() + QStringLiteral("/Zorvan"); }
    QString file() const { return folder() + QStringLiteral("/Zorvan.conf"); }

    /// Writes a file in the program's folder, which is created if it is missing.
    void write(const QByteArray &content, const QString &name) const {
        QDir().mkpath(folder());
        QFile target(folder() + u'/' + name);
        if (!target.open(QIODevice::WriteOnly) || target.write(content) != content.size()) {
            qFatal("%s cannot be written", qUtf8Printable(target.fileName()));
        }
    }
    /// Writes the store.
    void fill(const QByteArray &content) const { write(content, QStringLiteral("Zorvan.conf")); }

    /// The store's bytes; empty if it cannot be read.
    QByteArray content() const {
        QFile store(file());
        return store.open(QIODevice::ReadOnly) ? store.readAll() : QByteArray();
    }

    /// The store's entries; nothing if it is anything but one complete section of entries.
    std::optional<Contents> parsed() const {
        QByteArrayList lines = content().split('\n');
        if (lines.size() < 2 || lines.takeFirst() != "[General]" || lines.takeLast() != "") {
            return std::nullopt;
        }
        Contents contents;
        for (const QByteArray &line : lines) {
            const qsizetype equals = line.indexOf('=');
            if (equals < 1 || contents.contains(line.first(equals))) {
                return std::nullopt;
            }
            contents.insert(line.first(equals), line.sliced(equals + 1));
        }
        return contents;
    }
    Contents contents() const { return parsed().value_or(Contents()); }

    /// Every other file and folder, by its path relative to the program's folder.
    QStringList filesBesideTheStore() const {
        QStringList files;
        QDirIterator all(place_.path(),
                         QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
        const QStringList expected{home(), folder(), file()};
        while (all.hasNext()) {
            const QString path = all.next();
            if (!expected.contains(path)) {
                files << QDir(folder()).relativeFilePath(path);
            }
        }
        files.sort();
        return files;
    }

 private:
    QTemporaryDir place_{(QFileInfo(QStringLiteral("/dev/shm")).isWritable()
                              ? QStringLiteral("/dev/shm")
                              : QDir::tempPath()) +
                         QStringLiteral("/zorvan-test-XXXXXX")};
};
