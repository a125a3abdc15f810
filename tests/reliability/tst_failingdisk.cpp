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
/// fails, counted from one; and every call with the name `failsIn`. On a disk that stays full,
/// everything that takes room fails from then on.
struct Disk {
    std::string home = {};
    int failsAt = 0;
    int error = 0;
    bool staysFull = false;
    QByteArray failsIn = {};
    int calls = 0;
    QByteArrayList names = {};

    bool fails(const char *call, const char *path) {
        if (home.empty() || std::string(path).find(home) == std::string::npos) {
            return false;
        }
        names << call;
        ++calls;
        const bool takesRoom = QByteArrayList{"open", "write", "mkdir"}.contains(call);
        const bool full = staysFull && failsAt > 0 && calls > failsAt && takesRoom;
        if (calls != failsAt && !full && failsIn != call) {
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
};

void tst_failingdisk::failureAtAnyStepLosesNothing_data() {
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    QTest::addColumn<QByteArray>("textsOnly");
    QTest::addColumn<int>("error");
    QTest::addColumn<bool>("staysFull");
    const QByteArray first = "[General]\nquiz1=2\n";
    const QByteArray later = QByteArray(seeded).replace("quiz1=0", "quiz1=2");
    const QByteArray broken = "[Broken\n";
    struct Trouble {
        const char *name;
        int error;
        bool staysFull;
    };
    for (const Trouble &trouble :
         {Trouble{"full once", ENOSPC, false}, Trouble{"full for good", ENOSPC, true},
          Trouble{"broken", EIO, false}}) {
        const auto row = [&](const char *file, const QByteArray &before, const QByteArray &after,
                             const QByteArray &textsOnly) {
            QTest::addRow("%s, %s", trouble.name, file)
                << before << after << textsOnly << trouble.error << trouble.staysFull;
        };
        row("no file yet", "", first, first);
        row("a file", seeded, later, later);
        row("a file with a broken line", seeded + broken, later + broken, later);
        // QSettings would go on reading 0.
        row("a file that is kept aside", seeded + QByteArray("quiz%31=0\n"), later, later);
    }
}

void tst_failingdisk::failureAtAnyStepLosesNothing() {
    QFETCH(const QByteArray, before);
    QFETCH(const QByteArray, after);
    QFETCH(const QByteArray, textsOnly);
    QFETCH(const int, error);
    QFETCH(const bool, staysFull);
    int failures = 0;
    for (int step = 1;; ++step) {
        const Configuration configuration;
        if (!before.isEmpty()) {
            configuration.fill(before);
        }
        qputenv("XDG_CONFIG_HOME", configuration.home().toUtf8());
        StandardError standardError;
        platform::Preferences preferences;

        disk = {.home = configuration.home().toStdString(),
                .failsAt = step,
                .error = error,
                .staysFull = staysFull};
        preferences.setValueForKey(u"2"_s, u"quiz1"_s);
        const bool failed = disk.calls >= step;
        const QByteArray where = "step " + QByteArray::number(step) + " of " +
                                 disk.names.join(' ') + ", " +
                                 standardError.lines().join(u' ').toUtf8() + "\n";
        disk = {};

        // Whatever the disk does, the new value is read back, and the file on the disk is complete.
        QVERIFY2(preferences.valueForKey(u"quiz1"_s) == u"2", where);
        const QByteArray content = configuration.content();
        const bool told = standardError.lines().join(u' ').contains(u"cannot be written");
        const bool isKept = configuration.filesBesideTheStore().contains(u"Zorvan.conf.kept-1"_s);
        QVERIFY2(
            (content == before && told) || content == after || (content == textsOnly && isKept),
            where + content);
        QVERIFY2(isKept || content == before || !before.contains('%'), where + content);
        QVERIFY2(leftovers(configuration).isEmpty(), where + leftovers(configuration));

        // The next write makes up for it.
        preferences.setValueForKey(u"3"_s, u"quiz2"_s);
        QVERIFY2(configuration.content().contains("quiz1=2\n"), where + configuration.content());
        QVERIFY2(configuration.content().contains("quiz2=3\n"), where + configuration.content());
        QVERIFY2(leftovers(configuration).isEmpty(), where + leftovers(configuration));
        if (!failed) {
            QCOMPARE(content, after);
            break;
        }
        failures += told ? 1 : 0;
    }
    // Creating the new file, filling it, syncing it, renaming it and syncing the folder can fail.
    QVERIFY2(failures >= 5, QByteArray::number(failures));
}

void tst_failingdisk::eachTimeOfTroubleIsToldOnce() {
    const Configuration configuration;
    configuration.fill(seeded);
    qputenv("XDG_CONFIG_HOME", configuration.home().toUtf8());
    StandardError standardError;
    platform::Preferences preferences;
    const auto write = [&](bool fails) {
        disk = {.home = configuration.home().toStdString(),
                .error = EIO,
                .failsIn = fails ? "rename" : ""};
        preferences.setValueForKey(u"2"_s, u"quiz1"_s);
        disk = {};
        return standardError.lines().size();
    };
    QCOMPARE(write(true), 1);
    QCOMPARE(write(true), 1);
    QCOMPARE(write(false), 1);
    QCOMPARE(write(true), 2);
}

ZORVAN_TEST_MAIN(tst_failingdisk)
#include "tst_failingdisk.moc"
