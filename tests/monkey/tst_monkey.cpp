#include <QProcess>
#include <QTest>

using namespace Qt::StringLiterals;

/// Walks that the program has to survive, each with different steps.
class tst_monkey final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void programDoesWhatItsModelDoes_data();
    void programDoesWhatItsModelDoes();
    void sameSeedTakesTheSameWalk();

 private:
    struct Outcome {
        QString output;
        QString digest;
        bool good;
    };
    static Outcome walk(int seed, int steps);
};

tst_monkey::Outcome tst_monkey::walk(int seed, int steps) {
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

void tst_monkey::programDoesWhatItsModelDoes_data() {
    QTest::addColumn<int>("seed");
    QTest::newRow("seed 1") << 1;
    QTest::newRow("seed 2") << 2;
    QTest::newRow("seed 3") << 3;
}

void tst_monkey::programDoesWhatItsModelDoes() {
    QFETCH(const int, seed);
    const Outcome outcome = walk(seed, 1500);
    QVERIFY2(outcome.good, qUtf8Printable(outcome.output));
}

void tst_monkey::sameSeedTakesTheSameWalk() {
    const Outcome first = walk(4, 500);
    const Outcome second = walk(4, 500);
    QVERIFY2(first.good, qUtf8Printable(first.output));
    QVERIFY(!first.digest.isEmpty());
    QCOMPARE(second.digest, first.digest);
}

QTEST_GUILESS_MAIN(tst_monkey)
#include "tst_monkey.moc"
