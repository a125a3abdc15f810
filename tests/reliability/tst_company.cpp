#include <QTest>

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
        configuration.write(seeded);
        Recording one(passes, {u"1"_s, u"3"_s, u"5"_s});
        Recording other(passes, {u"2"_s, u"4"_s, u"6"_s, u"7"_s});
        for (Recording *recording : {&one, &other}) {
            QVERIFY(recording->waitForEnd());
            QCOMPARE(recording->done().size(), 3 * passes);
        }
        // Both write the last quiz.
        const QByteArrayList lastQuiz{"currentTest=0"};
        QCOMPARE(with(lastQuiz, configuration.content()),
                 with(one.done() + other.done() + lastQuiz, seeded));
        QCOMPARE(configuration.filesBesideTheStore(), QByteArrayList());
    }
};

ZORVAN_TEST(tst_company)
#include "tst_company.moc"
