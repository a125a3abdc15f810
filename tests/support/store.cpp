#include "support/store.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>

#include "system/preferences.h"

namespace {

// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): filled without an object
QList<store::Write> recordedWrites;  // clazy:exclude=non-pod-global-static

}  // namespace

namespace store {

QString path() {
    return QString::fromUtf8(qgetenv("XDG_CONFIG_HOME")) + QStringLiteral("/Zorvan/Zorvan.conf");
}

Contents contents() {
    Contents contents;
    QFile file(path());
    if (!file.open(QIODevice::ReadOnly)) {
        return contents;
    }
    for (const QByteArray &line : file.readAll().split('\n')) {
        const qsizetype equals = line.indexOf('=');
        if (equals > 0) {
            contents.insert(QString::fromUtf8(line.first(equals)),
                            QString::fromUtf8(line.sliced(equals + 1)));
        }
    }
    return contents;
}

std::optional<QString> value(const QString &key) {
    const Contents all = contents();
    const auto found = all.constFind(key);
    return found == all.constEnd() ? std::nullopt : std::optional<QString>(*found);
}

void fill(const Contents &contents) {
    QDir().mkpath(QFileInfo(path()).path());
    // The program notices by its size or its time that the file has changed. Each generation adds
    // more bytes than shorter values can save.
    static int generation = 0;
    QSaveFile file(path());
    if (!file.open(QIODevice::WriteOnly)) {
        qFatal("No store to fill");
    }
    QByteArray text = "[General]\n";
    for (auto entry = contents.begin(); entry != contents.end(); ++entry) {
        text += entry.key().toUtf8() + '=' + entry.value().toUtf8() + '\n';
    }
    text += QByteArray(generation += 8, '\n');
    file.write(text);
    if (!file.commit()) {
        qFatal("The store cannot be filled");
    }
}

void set(const QString &key, const QString &value) {
    Contents all = contents();
    all.insert(key, value);
    fill(all);
}

void wipe() {
    QFile::remove(path());
}

Contents seeded() {
    Contents all;
    for (const char *key : {"currentTest", "currentStatus", "quiz1", "quiz2", "quiz3", "quiz4",
                            "quiz5", "quiz6", "quiz7"}) {
        all.insert(QString::fromLatin1(key), QStringLiteral("0"));
    }
    all.insert(QStringLiteral("firstRun"), QStringLiteral("false"));
    return all;
}

QList<Write> writes() {
    return recordedWrites;
}

void forgetWrites() {
    recordedWrites.clear();
    platform::Preferences::standardUserDefaults().setObserver(
        [](const QString &value, const QString &key) {
            recordedWrites.append({key, value});
        });
}

}  // namespace store
