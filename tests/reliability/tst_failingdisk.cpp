#include <cerrno>

#include <QTest>

#include "configuration.h"
#include "support/standarderror.h"
#include "support/testmain.h"
#include "system/preferences.h"
#include "systemcalls.h"

using namespace Qt::StringLiterals;

namespace {

/// A disk on which the call with that number fails, counted from one, of those that read or change
/// something in a configuration home. If it stays full, nothing takes any room from then on.
class FailingDisk final : public systemcalls::Watcher {
 public:
    FailingDisk(const Configuration &configuration, int failsAt, bool staysFull = false)
        : Watcher(configuration.home()), failsAt_(failsAt), staysFull_(staysFull) {}

    int errorOf(const systemcalls::Call &call) override {
        using systemcalls::Kind;
        // What cannot be removed stays: that is no failure of a write.
        if (call.kind == Kind::Remove) {
            return 0;
        }
        calls_ << call.name;
        const bool takesRoom =
            call.kind == Kind::Open || call.kind == Kind::Write || call.kind == Kind::MakeFolder;
        const bool isFull = staysFull_ && hasFailed() && takesRoom;
        return calls_.size() == failsAt_ || isFull ? ENOSPC : 0;
    }

    const QByteArrayList &calls() const { return calls_; }
    bool hasFailed() const { return calls_.size() >= failsAt_; }

 private:
    int failsAt_;
    bool staysFull_;
    QByteArrayList calls_;
};

}  // namespace

/// The store on a disk that fails at any single step of a write.
class tst_failingdisk final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void failureAtAnyStepLosesNothing_data() {
        QTest::addColumn<bool>("staysFull");
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        const QByteArray texts = with({"quiz1=2"}, seeded);
        for (const bool staysFull : {false, true}) {
            const auto row = [&](const char *file, const QByteArray &before,
                                 const QByteArray &after) {
                QTest::addRow("%s, %s", staysFull ? "full for good" : "once", file)
                    << staysFull << before << after;
            };
            row("no file yet", "", "[General]\nquiz1=2\n");
            row("a file with a broken line", seeded + "[Broken\n", texts + "[Broken\n");
            // QSettings would go on reading 0, so it is kept aside.
            row("a key in another spelling", seeded + "quiz%31=0\n", texts);
        }
    }

    void failureAtAnyStepLosesNothing() {
        QFETCH(const bool, staysFull);
        QFETCH(const QByteArray, before);
        QFETCH(const QByteArray, after);
        int failures = 0;
        bool hasFailed = true;
        for (int step = 1; hasFailed; ++step) {
            const Configuration configuration;
            if (!before.isEmpty()) {
                configuration.write(before);
            }
            StandardError standardError;
            platform::Preferences preferences;
            QByteArray failed;
            QByteArray where = "step " + QByteArray::number(step) + " of ";
            {
                const FailingDisk disk(configuration, step, staysFull);
                preferences.setValueForKey(u"2"_s, u"quiz1"_s);
                hasFailed = disk.hasFailed();
                where += disk.calls().join(' ') + ", " + standardError.lines().join(u' ').toUtf8();
                failed = disk.calls().value(step - 1);
            }

            // Whatever the disk does, the new value is read back, and the file is complete.
            QVERIFY2(preferences.valueForKey(u"quiz1"_s) == u"2", where);
            const QByteArray content = configuration.content();
            QByteArrayList others = configuration.filesBesideTheStore();
            const bool isKept = others.removeAll("Zorvan.conf.kept-1") > 0;
            const bool isTold = where.contains("cannot be written");
            const bool isOld = content == before && isTold;
            const bool isEdited = content == after && !before.contains('%');
            // What cannot be read back is kept aside, too.
            const bool isNew = content == with({"quiz1=2"}, seeded) && isKept;
            QVERIFY2(isOld || isEdited || isNew, where + '\n' + content);
            QVERIFY2(isTold || (failed != "fsync" && failed != "rename"), where);
            QVERIFY2(others.isEmpty(), where + others.join(' '));
            QVERIFY2(hasFailed || content == after, where + '\n' + content);
            failures += isTold ? 1 : 0;

            // The next write makes up for it.
            preferences.setValueForKey(u"3"_s, u"quiz2"_s);
            const Files files = configuration.files();
            for (const char *line : {"quiz1=2\n", "quiz2=3\n"}) {
                QVERIFY2(files["Zorvan.conf"].contains(line), where + files["Zorvan.conf"]);
            }
            QVERIFY2(!files.contains(".Zorvan.conf.writing"), where);
        }
        // Those that create, fill, sync and rename the new file, and that sync its folder.
        QVERIFY2(failures >= 5, QByteArray::number(failures));
    }

    void eachTimeOfTroubleIsToldOnce() {
        const Configuration configuration;
        configuration.write(seeded);
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
