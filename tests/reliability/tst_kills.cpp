#include <QDir>
#include <QRandomGenerator>
#include <QTest>
#include <QThread>

#include "reliability/configuration.h"
#include "reliability/recording.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

/// The process that writes the store is killed, over and over, while it records passes.
class tst_kills final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void killsLoseNothing() {
        constexpr int kills = 1000;
        const quint32 seed = QRandomGenerator::global()->generate();
        QRandomGenerator random(seed);
        const Configuration configuration;
        configuration.fill(seeded);
        Contents announced = configuration.contents();

        int inAWrite = 0;
        int inAWriteThatLanded = 0;
        int withLeftovers = 0;
        int writes = 0;
        qint64 slowest = 0;
        for (int kill = 1; kill <= kills; ++kill) {
            const QByteArray where =
                "kill " + QByteArray::number(kill) + ", seed " + QByteArray::number(seed) + ": ";
            Recording recording(configuration, 1000, {u"1"_s, u"2"_s, u"3"_s, u"4"_s});
            // At any point of any write, also in the first one after the previous kill.
            recording.waitForLines(random.bounded(1, 12));
            QThread::usleep(random.bounded(6000U));
            recording.kill();
            slowest = qMax(slowest, recording.firstWrite().value_or(0));

            QVERIFY2(recording.lost().isEmpty(), where + recording.lost().join(", "));
            writes += static_cast<int>(recording.done().size());
            for (const Entry &done : recording.done()) {
                announced.insert(done.first, done.second);
            }
            const auto parsed = configuration.parsed();
            QVERIFY2(parsed, where + configuration.content());
            if (const auto due = recording.due()) {
                ++inAWrite;
                // The unfinished write may be in the file or not.
                if (parsed->value(due->first) == due->second) {
                    inAWriteThatLanded += announced.value(due->first) == due->second ? 0 : 1;
                    announced.insert(due->first, due->second);
                }
            }
            QVERIFY2(*parsed == announced, where + "\n" + configuration.content() +
                                               "but announced\n" + asText(announced));
            QVERIFY2(forbiddenValues(*parsed).isEmpty(), where + forbiddenValues(*parsed).toUtf8());

            const QStringList others = configuration.filesBesideTheStore();
            withLeftovers += others.isEmpty() ? 0 : 1;
            // The leftovers of one write only, whatever the number of kills.
            QVERIFY2(others.size() <= 1, where + others.join(u", "_s).toUtf8());
        }
        qInfo(
            "%d kills, %d of them within a write (%d landed), %d left something behind; %d writes "
            "were "
            "announced, all are there; at most %lld ms from a start to its first write",
            kills, inAWrite, inAWriteThatLanded, withLeftovers, writes, slowest);
        QVERIFY(inAWrite > kills / 2);
    }

    void nextWriteClearsAwayWhatAKillLeft() {
        const Configuration configuration;
        configuration.fill(seeded);
        configuration.write("[General]\nquiz1=3\n", u".Zorvan.conf.writing"_s);
        Recording recording(configuration, 1, {u"2"_s});
        QVERIFY(recording.waitForEnd());
        QCOMPARE(configuration.filesBesideTheStore(), QStringList());
        QCOMPARE(configuration.contents().value("quiz1"), QByteArray("0"));
        QCOMPARE(configuration.contents().value("quiz2"), QByteArray("1"));
    }

    void killedNeighbourCostsTheOtherNothing() {
        const Configuration configuration;
        configuration.fill(seeded);
        Recording survivor(configuration, 100'000, {u"1"_s, u"2"_s, u"3"_s});
        for (int kill = 0; kill < 30; ++kill) {
            Recording neighbour(configuration, 1000, {u"4"_s, u"5"_s});
            neighbour.waitForLines(1 + kill % 7);
            QThread::usleep(static_cast<unsigned long>(kill % 10 * 500));
            neighbour.kill();
        }
        survivor.waitForLines(100);
        survivor.kill();
        QCOMPARE(survivor.lost(), QByteArrayList());
        // The write that was interrupted may be in the file or not.
        Contents announced = survivor.lastOfEachQuiz();
        if (const auto due = survivor.due()) {
            announced.remove(due->first);
        }
        QVERIFY(!announced.isEmpty());
        QCOMPARE(missing(announced, configuration.contents()), QByteArray());
    }
};

ZORVAN_TEST(tst_kills)
#include "tst_kills.moc"
