#include <QProcess>
#include <QTest>

#include "support/testmain.h"

using namespace Qt::StringLiterals;

/// Walks that the program has to survive, each with different steps.
class tst_monkey final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void programDoesWhatItsModelDoes_data() {
        QTest::addColumn<int>("seed");
        QTest::addColumn<int>("steps");
        // A walk of this length fails if there is anything that it does not reach.
        QTest::newRow("long") << 1 << 20000;
        QTest::newRow("another") << 2 << 2500;
        QTest::newRow("a third") << 3 << 2500;
    }

    void programDoesWhatItsModelDoes() {
        QFETCH(const int, seed);
        QFETCH(const int, steps);
        const Outcome outcome = walk(seed, steps);
        QVERIFY2(outcome.good, qUtf8Printable(outcome.output));
    }

    void sameSeedTakesTheSameWalk() {
        const Outcome first = walk(4, 500);
        const Outcome second = walk(4, 500);
        QVERIFY2(first.good, qUtf8Printable(first.output));
        QVERIFY(!first.digest.isEmpty());
        QCOMPARE(second.digest, first.digest);
    }

 private:
    struct Outcome {
        QString output;
        QString digest;
        bool good;
    };

    static Outcome walk(int seed, int steps) {
        QProcess monkey;
        // The monkey chooses its screens itself.
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(u"QT_QPA_PLATFORM"_s);
        monkey.setProcessEnvironment(environment);
        monkey.setProcessChannelMode(QProcess::MergedChannels);
        monkey.start(QStringLiteral(MONKEY),
                     {u"--seed"_s, QString::number(seed), u"--steps"_s, QString::number(steps)});
        const bool ended = monkey.waitForFinished(-1);
        const QString output = QString::fromUtf8(monkey.readAll());
        return {output, output.section(u"digest "_s, 1).trimmed(),
                ended && monkey.exitStatus() == QProcess::NormalExit && monkey.exitCode() == 0};
    }
};

ZORVAN_TEST(tst_monkey)
#include "tst_monkey.moc"
