#include <QTest>
#include <QThread>

#include "configuration.h"
#include "recording.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

/// Two copies of the program with the same store.
class tst_company final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void twoProcessesLoseNoPassOfEachOther() {
        constexpr int passes = 500;
        const Configuration configuration;
        configuration.fill(seeded);
        Recording one(passes, {u"1"_s, u"3"_s, u"5"_s});
        Recording other(passes, {u"2"_s, u"4"_s, u"6"_s, u"7"_s});
        QVERIFY(one.waitForEnd());
        QVERIFY(other.waitForEnd());

        for (const Recording *recording : {&one, &other}) {
            QCOMPARE(recording->lost(), QByteArrayList());
            QCOMPARE(recording->done().size(), 3 * passes);
        }
        // Both write the last quiz.
        const QByteArrayList lastQuiz{"currentTest=0"};
        QCOMPARE(with(lastQuiz, configuration.content()),
                 with(one.done() + other.done() + lastQuiz, seeded));
        QCOMPARE(configuration.filesBesideTheStore(), QByteArrayList());
    }

    void killedNeighbourCostsTheOtherNothing() {
        const Configuration configuration;
        configuration.fill(seeded);
        Recording survivor(100'000, {u"1"_s, u"2"_s, u"3"_s});
        for (int kill = 1; kill <= 30; ++kill) {
            Recording neighbour(1000, {u"4"_s, u"5"_s});
            QVERIFY(neighbour.waitForLines(kill % 7));
            QThread::usleep(static_cast<unsigned long>(kill % 10 * 500));
            neighbour.kill();
            QVERIFY(survivor.waitForLines(50 * kill));
        }
        survivor.kill();
        QCOMPARE(survivor.lost(), QByteArrayList());
    }
};

ZORVAN_TEST(tst_company)
#include "tst_company.moc"
