#include <cerrno>

#include <QTest>

#include "configuration.h"
#include "support/standarderror.h"
#include "support/testmain.h"
#include "system/preferences.h"
#include "systemcalls.h"

using namespace Qt::StringLiterals;

namespace {

struct Trouble {
    const char *name = nullptr;
    int error = EIO;
    /// Whether, once there is no room, nothing takes any from then on.
    bool lasts = false;
};

/// A disk on which the call with that number fails, counted from one, of those that read or change
/// something in a configuration home.
class FailingDisk final : public systemcalls::Watcher {
 public:
    FailingDisk(const Configuration &configuration, int failsAt, const Trouble &trouble = {})
        : home_(configuration.home().toUtf8()), failsAt_(failsAt), trouble_(trouble) {}

    int errorOf(const systemcalls::Call &call) override {
        using systemcalls::Kind;
        // What cannot be removed stays: that is no failure of a write.
        if (call.kind == Kind::Remove || !systemcalls::isIn(home_, call.path)) {
            return 0;
        }
        calls_ << call.name;
        const bool takesRoom =
            call.kind == Kind::Open || call.kind == Kind::Write || call.kind == Kind::MakeFolder;
        const bool isFull = trouble_.lasts && hasFailed() && takesRoom;
        return calls_.size() == failsAt_ || isFull ? trouble_.error : 0;
    }

    const QByteArrayList &calls() const { return calls_; }
    bool hasFailed() const { return calls_.size() >= failsAt_; }

 private:
    QByteArray home_;
    int failsAt_;
    Trouble trouble_;
    QByteArrayList calls_;
};

/// The files that are neither the store nor kept on purpose.
QByteArray leftovers(const Configuration &configuration) {
    QByteArrayList files = configuration.filesBesideTheStore();
    files.removeAll("Zorvan.conf.kept-1");
    return files.join(' ');
}

}  // namespace

/// The store on a disk that fails at any single step of a write.
class tst_failingdisk final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void failureAtAnyStepLosesNothing_data() {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        QTest::addColumn<QByteArray>("textsOnly");
        QTest::addColumn<Trouble>("trouble");
        const QByteArray first = "[General]\nquiz1=2\n";
        const QByteArray later = with({"quiz1=2"}, seeded);
        const QByteArray broken = "[Broken\n";
        for (const Trouble &trouble :
             {Trouble{"full once", ENOSPC}, Trouble{"full for good", ENOSPC, true},
              Trouble{"broken", EIO}}) {
            const auto row = [&](const char *file, const QByteArray &before,
                                 const QByteArray &after, const QByteArray &textsOnly) {
                QTest::addRow("%s, %s", trouble.name, file)
                    << before << after << textsOnly << trouble;
            };
            row("no file yet", "", first, first);
            row("a file", seeded, later, later);
            row("a file with a broken line", seeded + broken, later + broken, later);
            // QSettings would go on reading 0.
            row("a file that is kept aside", seeded + "quiz%31=0\n", later, later);
        }
    }

    void failureAtAnyStepLosesNothing() {
        QFETCH(const QByteArray, before);
        QFETCH(const QByteArray, after);
        QFETCH(const QByteArray, textsOnly);
        QFETCH(const Trouble, trouble);
        int failures = 0;
        bool hasFailed = true;
        for (int step = 1; hasFailed; ++step) {
            const Configuration configuration;
            if (!before.isEmpty()) {
                configuration.fill(before);
            }
            StandardError standardError;
            platform::Preferences preferences;
            QByteArray where = "step " + QByteArray::number(step) + " of ";
            {
                const FailingDisk disk(configuration, step, trouble);
                preferences.setValueForKey(u"2"_s, u"quiz1"_s);
                hasFailed = disk.hasFailed();
                where += disk.calls().join(' ') + '\n';
            }

            // Whatever the disk does, the new value is read back, and the file on the disk is
            // complete.
            QVERIFY2(preferences.valueForKey(u"quiz1"_s) == u"2", where);
            const QByteArray content = configuration.content();
            const bool told = standardError.lines().join(u' ').contains(u"cannot be written");
            const bool isKept = configuration.filesBesideTheStore().contains("Zorvan.conf.kept-1");
            QVERIFY2(
                (content == before && told) || content == after || (content == textsOnly && isKept),
                where + content);
            QVERIFY2(isKept || content == before || !before.contains('%'), where + content);
            QVERIFY2(leftovers(configuration).isEmpty(), where + leftovers(configuration));
            QVERIFY2(hasFailed || content == after, where + content);
            failures += told ? 1 : 0;

            // The next write makes up for it.
            preferences.setValueForKey(u"3"_s, u"quiz2"_s);
            for (const char *line : {"quiz1=2\n", "quiz2=3\n"}) {
                QVERIFY2(configuration.content().contains(line), where + configuration.content());
            }
            QVERIFY2(leftovers(configuration).isEmpty(), where + leftovers(configuration));
        }
        // Those that create, fill, sync and rename the new file, and that sync its folder.
        QVERIFY2(failures >= 5, QByteArray::number(failures));
    }

    void eachTimeOfTroubleIsToldOnce() {
        const Configuration configuration;
        configuration.fill(seeded);
        StandardError standardError;
        platform::Preferences preferences;
        const auto linesAfterWrite = [&](int failingStep) {
            const FailingDisk disk(configuration, failingStep);
            preferences.setValueForKey(u"2"_s, u"quiz1"_s);
            return standardError.lines().size();
        };
        QCOMPARE(linesAfterWrite(1), 1);
        QCOMPARE(linesAfterWrite(1), 1);
        QCOMPARE(linesAfterWrite(0), 1);
        QCOMPARE(linesAfterWrite(1), 2);
    }
};

ZORVAN_TEST(tst_failingdisk)
#include "tst_failingdisk.moc"
