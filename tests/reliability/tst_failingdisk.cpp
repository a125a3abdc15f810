#include <array>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include <QSettings>
#include <QTest>

#include "reliability/configuration.h"
#include "support/standarderror.h"
#include "support/testmain.h"
#include "system/preferences.h"

using namespace Qt::StringLiterals;

namespace {

/// Of the calls that read or change something below `home`, the one with the number `failsAt`
/// fails, counted from one; none fails if it is zero.
struct Disk {
    std::string home = {};
    int failsAt = 0;
    int error = 0;
    int calls = 0;
    QByteArrayList names = {};

    bool fails(const char *call, const char *path) {
        if (home.empty() || std::string(path).find(home) == std::string::npos) {
            return false;
        }
        names << call;
        if (++calls != failsAt) {
            return false;
        }
        errno = error;
        return true;
    }

    bool fails(const char *call, int descriptor) {
        std::array<char, PATH_MAX> path{};
        const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
        return ::readlink(link.c_str(), path.data(), path.size() - 1) > 0 &&
               fails(call, path.data());
    }
};

// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): the system calls ask it
Disk disk;  // clazy:exclude=non-pod-global-static

/// The files that are neither the store nor kept on purpose.
QByteArray leftovers(const Configuration &configuration) {
    QStringList files = configuration.filesBesideTheStore();
    files.removeAll(QStringLiteral("Zorvan.conf.kept-1"));
    return files.join(u' ').toUtf8();
}

template <class Function>
Function *original(const char *name) {
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

}  // namespace

// These replace the system's own functions.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the system's are reserved
extern "C" {

ssize_t write(int descriptor, const void *bytes, size_t size) {
    return disk.fails("write", descriptor)
               ? -1
               : original<decltype(::write)>("write")(descriptor, bytes, size);
}

ssize_t read(int descriptor, void *bytes, size_t size) {
    return disk.fails("read", descriptor)
               ? -1
               : original<decltype(::read)>("read")(descriptor, bytes, size);
}

int fdatasync(int descriptor) {
    return disk.fails("fdatasync", descriptor)
               ? -1
               : original<decltype(::fdatasync)>("fdatasync")(descriptor);
}

int fsync(int descriptor) {
    return disk.fails("fsync", descriptor) ? -1 : original<decltype(::fsync)>("fsync")(descriptor);
}

int rename(const char *from, const char *to) noexcept {
    return disk.fails("rename", to) ? -1 : original<decltype(::rename)>("rename")(from, to);
}

int link(const char *from, const char *to) noexcept {
    return disk.fails("link", to) ? -1 : original<decltype(::link)>("link")(from, to);
}

int mkdir(const char *path, mode_t mode) noexcept {
    return disk.fails("mkdir", path) ? -1 : original<decltype(::mkdir)>("mkdir")(path, mode);
}

int open64(const char *path, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    const auto mode = va_arg(arguments, mode_t);
    va_end(arguments);
    if ((flags & O_CREAT) != 0 && disk.fails("open", path)) {
        return -1;
    }
    return original<decltype(::open64)>("open64")(path, flags, mode);
}

}  // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)

/// The store on a disk that fails at any single step of a write.
class tst_failingdisk final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void cleanup() { disk = {}; }

    void failureAtAnyStepLosesNothing_data();
    void failureAtAnyStepLosesNothing();
    void eachTimeOfTroubleIsToldOnce();
    void fileIsOnTheDiskBeforeItHasItsName();
};

void tst_failingdisk::failureAtAnyStepLosesNothing_data() {
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<int>("error");
    for (const auto &[name, error] : {std::pair("full", ENOSPC), std::pair("broken", EIO)}) {
        QTest::addRow("%s, no file yet", name) << QByteArray() << error;
        QTest::addRow("%s, a file", name) << QByteArray(seeded) << error;
        QTest::addRow("%s, a file with a broken line", name) << QByteArray(seeded) + "[Broken\n"
                                                             << error;
    }
}

void tst_failingdisk::failureAtAnyStepLosesNothing() {
    QFETCH(const QByteArray, before);
    QFETCH(const int, error);
    int failures = 0;
    for (int step = 1;; ++step) {
        const Configuration configuration;
        if (!before.isEmpty()) {
            configuration.fill(before);
        }
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, configuration.home());
        StandardError standardError;
        platform::Preferences preferences;

        disk = {.home = configuration.home().toStdString(), .failsAt = step, .error = error};
        preferences.setValueForKey(u"2"_s, u"quiz1"_s);
        const bool failed = disk.calls >= step;
        const QByteArray where = "step " + QByteArray::number(step) + " of " +
                                 disk.names.join(' ') + ", " +
                                 standardError.lines().join(u' ').toUtf8() + "\n";
        disk = {};

        // Whatever the disk does, the new value is read back, and the file on the disk is complete.
        QVERIFY2(preferences.valueForKey(u"quiz1"_s) == u"2", where);
        const bool written = configuration.content().contains("quiz1=2\n");
        const bool asBefore = configuration.content() == before;
        QVERIFY2(written || asBefore, where + configuration.content());
        const bool told = standardError.lines().join(u' ').contains(u"cannot be written");
        QVERIFY2(written != told, where + configuration.content());
        if (written && before.contains("[Broken")) {
            QVERIFY2(configuration.filesBesideTheStore().contains(u"Zorvan.conf.kept-1"_s), where);
        }
        QVERIFY2(leftovers(configuration).isEmpty(), where + leftovers(configuration));

        // The next write makes up for it.
        preferences.setValueForKey(u"3"_s, u"quiz2"_s);
        QVERIFY2(configuration.content().contains("quiz1=2\n"), where + configuration.content());
        QVERIFY2(configuration.content().contains("quiz2=3\n"), where + configuration.content());
        QVERIFY2(leftovers(configuration).isEmpty(), where + leftovers(configuration));
        if (!failed) {
            break;
        }
        failures += told ? 1 : 0;
    }
    // Creating the new file, filling it, syncing it and renaming it can each fail.
    QVERIFY2(failures >= 4, QByteArray::number(failures));
}

void tst_failingdisk::eachTimeOfTroubleIsToldOnce() {
    const Configuration configuration;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, configuration.home());
    StandardError standardError;
    platform::Preferences preferences;
    const auto write = [&](bool fails) {
        // The folder for unfinished files cannot be created.
        disk = {.home = configuration.home().toStdString(), .failsAt = fails ? 2 : 0, .error = EIO};
        preferences.setValueForKey(u"2"_s, u"quiz1"_s);
        disk = {};
        return standardError.lines().size();
    };
    QCOMPARE(write(true), 1);
    QCOMPARE(write(true), 1);
    QCOMPARE(write(false), 1);
    QCOMPARE(write(true), 2);
}

void tst_failingdisk::fileIsOnTheDiskBeforeItHasItsName() {
    const Configuration configuration;
    configuration.fill(seeded);
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, configuration.home());
    platform::Preferences preferences;
    disk = {.home = configuration.home().toStdString()};
    preferences.setValueForKey(u"1"_s, u"quiz1"_s);
    // First the new content, then its name, then the folder with that name.
    QCOMPARE(disk.names.last(3).join(' '), QByteArray("fdatasync rename fsync"));
}

ZORVAN_TEST_MAIN(tst_failingdisk)
#include "tst_failingdisk.moc"
