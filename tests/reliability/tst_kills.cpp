#include <QRandomGenerator>
#include <QTest>
#include <QThread>

#include "configuration.h"
#include "recording.h"
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
        configuration.write(seeded);
        QByteArray announced = seeded;

        qsizetype writes = 0;
        int inAWrite = 0;
        for (int kill = 1; kill <= kills; ++kill) {
            const QByteArray where =
                "kill " + QByteArray::number(kill) + ", seed " + QByteArray::number(seed) + ": ";
            Recording recording(1000, {u"1"_s, u"2"_s, u"3"_s, u"4"_s});
            // At any point of any write, also in the first one after the previous kill.
            QVERIFY2(recording.waitForLines(random.bounded(1, 12)), where);
            QThread::usleep(random.bounded(6000U));
            QVERIFY2(recording.kill(), where);

            announced = with(recording.done(), announced);
            // The unfinished write may be in the file or not.
            const QByteArray withDue = with(recording.due(), announced);
            writes += recording.done().size();
            inAWrite += recording.due().isEmpty() ? 0 : 1;
            if (configuration.content() == withDue) {
                announced = withDue;
            }
            QVERIFY2(configuration.content() == announced,
                     where + configuration.content() + "but announced\n" + announced);
            // The leftovers of one write only, whatever the number of kills.
            const QByteArrayList others = configuration.filesBesideTheStore();
            QVERIFY2(others.size() <= 1, where + others.join(", "));
        }
        qInfo("%d kills, %d of them within a write; all %d announced writes are there", kills,
              inAWrite, static_cast<int>(writes));
        QVERIFY(inAWrite > kills / 2);
    }
};

ZORVAN_TEST(tst_kills)
#include "tst_kills.moc"
