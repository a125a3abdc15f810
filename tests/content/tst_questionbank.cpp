#include <stdexcept>

#include <QTest>

#include "content/questionbank.h"
#include "support/golden.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

using content::ThirdButton;

class tst_questionbank final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void everyQuestionIsTheGoldenOne() {
        QCOMPARE(golden::questions().size(), 77);
        for (const golden::Question &expected : golden::questions()) {
            const content::Question &question = content::question(expected.number);
            QCOMPARE(question.number, expected.number);
            QCOMPARE(question.text.toString(), expected.text);
            const QStringList answers{question.answers[0].toString(),
                                      question.answers[1].toString(),
                                      question.answers[2].toString()};
            QCOMPARE(answers, expected.answers);
            QCOMPARE(question.rightAnswer, expected.right);
            QCOMPARE(question.thirdButton == ThirdButton::Off, expected.thirdButtonOff);
        }
    }

    void signsThatAreEasilyLostAreKept_data() {
        QTest::addColumn<int>("number");
        QTest::addColumn<int>("answer");
        QTest::addColumn<QString>("text");
        QTest::newRow("trailing blank") << 6 << 2 << u"include('time.inc'); "_s;
        QTest::newRow("typographic quotes")
            << 6 << 3 << u"include_newfile(\u201ctime.inc\u201d);"_s;
        QTest::newRow("no-break spaces") << 16 << 2 << u"$a\u00a0\u00a0Variable;"_s;
        QTest::newRow("trailing blank of a question")
            << 36 << 0 << u"What is the correct way to open the file 'time.txt' as readable? "_s;
        QTest::newRow("blank before a line break")
            << 29 << 0
            << u"What will be displayed in the browser?\n$foo= 'widget's';\necho $foo; \n?>"_s;
        QTest::newRow("typographic apostrophe")
            << 48 << 0
            << u"The include command takes a file name and simply inserts that file\u2019s "
               u"contents "
               "into the script/document that issued the include command?"_s;
        QTest::newRow("ellipsis of question 63") << 63 << 1 << u"<?php \u2026 ?>"_s;
        QTest::newRow("ellipsis of question 64") << 64 << 3 << u"<php\u2026/php>"_s;
        QTest::newRow("three full stops") << 64 << 2 << u"<?...?>"_s;
        QTest::newRow("ellipsis of question 68") << 68 << 2 << u"/* \u2026 */"_s;
        QTest::newRow("en dash") << 72 << 2 << u"$a = $a \u2013 $b;"_s;
    }

    void signsThatAreEasilyLostAreKept() {
        QFETCH(int, number);
        QFETCH(int, answer);
        QFETCH(QString, text);
        const content::Question &question = content::question(number);
        const QStringList texts{question.text.toString(), question.answers[0].toString(),
                                question.answers[1].toString(), question.answers[2].toString()};
        QCOMPARE(texts.at(answer), text);
    }

    void rightAnswersAreSpreadAsMeant() {
        QMap<int, int> spread;
        for (int number = 1; number <= 77; ++number) {
            spread[content::question(number).rightAnswer] += 1;
        }
        const QMap<int, int> meant{{1, 34}, {2, 30}, {3, 13}};
        QCOMPARE(spread, meant);
    }

    void theRightAnswerIsNeverAnEmptyOne() {
        for (int number = 1; number <= 77; ++number) {
            const content::Question &question = content::question(number);
            const auto right = static_cast<std::size_t>(question.rightAnswer - 1);
            QVERIFY2(!question.answers.at(right).isEmpty(), qPrintable(QString::number(number)));
        }
    }

    void thirdButtonIsOffForYesNoAndTrueFalseOnly() {
        int trueFalse = 0;
        int yesNo = 0;
        int asItIs = 0;
        for (int number = 1; number <= 77; ++number) {
            const content::Question &question = content::question(number);
            if (question.thirdButton == ThirdButton::AsItIs) {
                asItIs += 1;
                continue;
            }
            QVERIFY(question.answers[2].isEmpty());
            trueFalse += question.answers[0] == u"True" && question.answers[1] == u"False" ? 1 : 0;
            yesNo += question.answers[0] == u"Yes" && question.answers[1] == u"No" ? 1 : 0;
        }
        QCOMPARE(trueFalse, 35);
        QCOMPARE(yesNo, 2);
        QCOMPARE(asItIs, 40);
    }

    void helloWorldQuestionsOfferTwoAnswersAndLeaveTheThirdButton() {
        for (const int number : {55, 56}) {
            const content::Question &question = content::question(number);
            QCOMPARE(question.answers[0], u"Hello World");
            QCOMPARE(question.answers[1], u"Nothing");
            QCOMPARE(question.answers[2], u"");
            QVERIFY(question.thirdButton == ThirdButton::AsItIs);
        }
    }

    void anUnknownNumberRaises_data() {
        QTest::addColumn<int>("number");
        QTest::newRow("before the first") << 0;
        QTest::newRow("behind the last") << 78;
        QTest::newRow("negative") << -1;
    }

    void anUnknownNumberRaises() {
        QFETCH(int, number);
        QVERIFY_THROWS_EXCEPTION(std::out_of_range, content::question(number));
    }
};

ZORVAN_TEST(tst_questionbank)
#include "tst_questionbank.moc"
