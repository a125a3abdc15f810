#include "support/store.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>

#include "system/preferences.h"

#ifdef Q_OS_WIN
#include <string>

#include <qt_windows.h>
#endif

namespace {

// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): filled without an object
QList<store::Write> recordedWrites;  // clazy:exclude=non-pod-global-static

#ifdef Q_OS_WIN

constexpr const wchar_t *place = L"Software\\Zorvan\\Zorvan";

/// The key of the registry that holds the store. Null if it is missing and not to be created.
class Key final {
 public:
    explicit Key(bool create) {
        if (!create) {
            RegOpenKeyExW(HKEY_CURRENT_USER, place, 0, KEY_READ, &handle_);
        } else if (RegCreateKeyExW(HKEY_CURRENT_USER, place, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                                   &handle_, nullptr) != ERROR_SUCCESS) {
            qFatal("No store to fill");
        }
    }
    ~Key() { RegCloseKey(handle_); }
    Key(const Key &) = delete;
    Key &operator=(const Key &) = delete;

    HKEY handle() const { return handle_; }

 private:
    HKEY handle_ = nullptr;
};

#else

QString path() {
    return QString::fromUtf8(qgetenv("XDG_CONFIG_HOME")) + QStringLiteral("/Zorvan/Zorvan.conf");
}

#endif

}  // namespace

namespace store {

#ifdef Q_OS_WIN

Contents contents() {
    Contents contents;
    const Key key(false);
    DWORD longestName = 0;
    DWORD longestValue = 0;
    RegQueryInfoKeyW(key.handle(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                     &longestName, &longestValue, nullptr, nullptr);
    for (DWORD index = 0;; ++index) {
        std::wstring name(longestName + 1, L'\0');
        QByteArray bytes(longestValue, '\0');
        DWORD nameLength = longestName + 1;
        DWORD type = REG_NONE;
        DWORD size = longestValue;
        if (RegEnumValueW(key.handle(), index, name.data(), &nameLength, nullptr, &type,
                          reinterpret_cast<BYTE *>(bytes.data()), &size) != ERROR_SUCCESS) {
            return contents;
        }
        // A text ends with a character that is none of its own.
        const auto length = qsizetype(size / sizeof(wchar_t)) - 1;
        const bool isText = type == REG_SZ && length >= 0;
        contents.insert(QString::fromWCharArray(name.data(), int(nameLength)),
                        isText ? QString(reinterpret_cast<const QChar *>(bytes.data()), length)
                               : QStringLiteral("(not a text)"));
    }
}

void fill(const Contents &contents) {
    wipe();
    const Key key(true);
    for (auto entry = contents.begin(); entry != contents.end(); ++entry) {
        const auto size = DWORD((entry->size() + 1) * qsizetype(sizeof(wchar_t)));
        if (RegSetValueExW(key.handle(), qUtf16Printable(entry.key()), 0, REG_SZ,
                           reinterpret_cast<const BYTE *>(entry->utf16()), size) != ERROR_SUCCESS) {
            qFatal("The store cannot be filled");
        }
    }
}

void wipe() {
    RegDeleteTreeW(HKEY_CURRENT_USER, place);
}

#else

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

void wipe() {
    QFile::remove(path());
}

#endif

std::optional<QString> value(const QString &key) {
    const Contents all = contents();
    const auto found = all.constFind(key);
    return found == all.constEnd() ? std::nullopt : std::optional<QString>(*found);
}

void set(const QString &key, const QString &value) {
    Contents all = contents();
    all.insert(key, value);
    fill(all);
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
