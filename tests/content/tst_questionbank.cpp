#include <stdexcept>

#include <QTest>

#include "content/questionbank.h"
#include "support/golden.h"
#include "support/testmain.h"

class tst_questionbank final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void everyQuestionIsTheGoldenOne() {
        QCOMPARE(golden::questions().size(), 77);
        for (const golden::Question &expected : golden::questions()) {
            const content::Question &question = content::question(expected.number);
            QCOMPARE(question.number, expected.number);
            QCOMPARE(question.text, expected.text);
            for (const std::size_t answer : {0U, 1U, 2U}) {
                QCOMPARE(question.answers.at(answer), expected.answers.at(qsizetype(answer)));
            }
            QVERIFY2(question.rightAnswer == expected.right, qUtf8Printable(expected.text));
            QVERIFY2((question.thirdButton == content::ThirdButton::Off) == expected.thirdButtonOff,
                     qUtf8Printable(expected.text));
        }
    }

    void anUnknownNumberRaises() {
        for (const int number : {-1, 0, 78}) {
            QVERIFY_THROWS_EXCEPTION(std::out_of_range, content::question(number));
        }
    }
};

ZORVAN_TEST(tst_questionbank)
#include "tst_questionbank.moc"
