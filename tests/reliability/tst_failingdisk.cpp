#include <cerrno>
#include <string>

#include <QTest>

#include "reliability/configuration.h"
#include "reliability/systemcalls.h"
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
};

// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): its watcher asks it
Disk disk;  // clazy:exclude=non-pod-global-static

/// The files that are neither the store nor kept on purpose.
QByteArray leftovers(const Configuration &configuration) {
    QStringList files = configuration.filesBesideTheStore();
    files.removeAll(QStringLiteral("Zorvan.conf.kept-1"));
    return files.join(u' ').toUtf8();
}

class FailingCalls final : public systemcalls::Watcher {
 public:
    int errorOf(const systemcalls::Call &call) override {
        // What cannot be removed stays: that is no failure of a write.
        if (disk.home.empty() || call.kind == systemcalls::Kind::Remove ||
            !systemcalls::isIn(QByteArray::fromStdString(disk.home), call.path)) {
            return 0;
        }
        disk.names << call.name;
        ++disk.calls;
        using systemcalls::Kind;
        const bool takesRoom =
            call.kind == Kind::Open || call.kind == Kind::Write || call.kind == Kind::MakeFolder;
        const bool isFull = disk.staysFull && disk.calls > disk.failsAt && disk.failsAt > 0;
        return disk.calls == disk.failsAt || (isFull && takesRoom) || disk.failsIn == call.name
                   ? disk.error
                   : 0;
    }
};

}  // namespace

/// The store on a disk that fails at any single step of a write.
class tst_failingdisk final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void cleanup() { disk = {}; }

    void failureAtAnyStepLosesNothing_data() {
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
            const auto row = [&](const char *file, const QByteArray &before,
                                 const QByteArray &after, const QByteArray &textsOnly) {
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

    void failureAtAnyStepLosesNothing() {
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

            // Whatever the disk does, the new value is read back, and the file on the disk is
            // complete.
            QVERIFY2(preferences.valueForKey(u"quiz1"_s) == u"2", where);
            const QByteArray content = configuration.content();
            const bool told = standardError.lines().join(u' ').contains(u"cannot be written");
            const bool isKept =
                configuration.filesBesideTheStore().contains(u"Zorvan.conf.kept-1"_s);
            QVERIFY2(
                (content == before && told) || content == after || (content == textsOnly && isKept),
                where + content);
            QVERIFY2(isKept || content == before || !before.contains('%'), where + content);
            QVERIFY2(leftovers(configuration).isEmpty(), where + leftovers(configuration));

            // The next write makes up for it.
            preferences.setValueForKey(u"3"_s, u"quiz2"_s);
            QVERIFY2(configuration.content().contains("quiz1=2\n"),
                     where + configuration.content());
            QVERIFY2(configuration.content().contains("quiz2=3\n"),
                     where + configuration.content());
            QVERIFY2(leftovers(configuration).isEmpty(), where + leftovers(configuration));
            if (!failed) {
                QCOMPARE(content, after);
                break;
            }
            failures += told ? 1 : 0;
        }
        // Creating the new file, filling it, syncing it, renaming it and syncing the folder can
        // fail.
        QVERIFY2(failures >= 5, QByteArray::number(failures));
    }

    void eachTimeOfTroubleIsToldOnce() {
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

 private:
    FailingCalls failingCalls_;
};

ZORVAN_TEST(tst_failingdisk)
#include "tst_failingdisk.moc"
