#include <algorithm>

#include <QFontDatabase>
#include <QTest>

#include "content/questionnumbers.h"
#include "support/optics.h"
#include "support/quizdesk.h"
#include "support/testmain.h"
#include "support/windowtest.h"

using namespace Qt::StringLiterals;

class tst_questiononscreen final : public WindowTest {
    Q_OBJECT

 private Q_SLOTS:
    void everyOperationPutsItsOwnQuestionOnScreen() {
        const auto quiz = quizdesk::open(u"1"_s);
        const QWidget *window = quiz->window();
        using Operation = void (MainTest::*)();
        const QList<Operation> operations{
#define OPERATION(number) &MainTest::Question##number,
            FOR_EACH_QUESTION_NUMBER(OPERATION)
#undef OPERATION
        };
        QCOMPARE(operations.size(), 77);
        for (const golden::Question &question : golden::questions()) {
            quiz->btnAnswer3.setEnabled(true);
            ((*quiz).*operations.at(question.number - 1))();
            QCOMPARE(quizdesk::questionShown(window), question.text);
            QCOMPARE(desk::text(window, u"lblAnswer1"_s), question.answers.at(0));
            QCOMPARE(desk::text(window, u"lblAnswer2"_s), question.answers.at(1));
            QCOMPARE(desk::text(window, u"lblAnswer3"_s), question.answers.at(2));
            QCOMPARE(quizdesk::answersEnabled(window),
                     question.thirdButtonOff ? quizdesk::twoAnswers : quizdesk::threeAnswers);
            QCOMPARE(quizRun().correctAnswerNumber, question.right);
        }
    }

    void aQuestionTouchesNothingElse() {
        const auto quiz = quizdesk::openTimed(u"1"_s);
        const QWidget *window = quiz->window();
        quizdesk::answer(window, 1);
        const auto *clock = quizRun().quizTimer.get();
        store::forgetWrites();

        quiz->Question3();
        QCOMPARE(quizdesk::questionShown(window),
                 u"What symbol must all variables in PHP start with?");
        QCOMPARE(quizdesk::alphaValues(window), (QList<double>{0.5, 1.0, 0.5}));
        QCOMPARE(quizdesk::answersEnabled(window), quizdesk::noAnswer);
        QCOMPARE(desk::text(window, u"lblStatus"_s), u"wrong");
        QVERIFY(desk::isShown(window, u"lblStatus"_s));
        QVERIFY(desk::isShown(window, u"btnNextQuestion"_s));
        QCOMPARE(desk::text(window, u"lblProgressPercent"_s), u"1/14");
        QCOMPARE(quizdesk::level(window), 0.0);
        QCOMPARE(quizRun().questionIndex, 1);
        QCOMPARE(quizRun().quizTimer.get(), clock);
        QCOMPARE(store::writes(), QList<store::Write>());

        quiz->imgQuestion.setHidden(false);
        quiz->Question4();
        QVERIFY(desk::isShown(window, u"imgQuestion"_s));
    }

    void trueFalseAfterThreeAnswersEmptiesTheThirdAndSwitchesItOff() {
        const auto quiz = quizdesk::open(u"1"_s);
        const QWidget *window = quiz->window();
        quizdesk::answerQuestions(window, 4, 4);
        QCOMPARE(desk::text(window, u"lblAnswer3"_s), u"ASP.net");
        quizdesk::goOn(window);
        QCOMPARE(desk::text(window, u"lblAnswer3"_s), u"");
        QCOMPARE(quizdesk::answersEnabled(window), quizdesk::twoAnswers);

        quizdesk::answerRight(window);
        quizdesk::goOn(window);
        QCOMPARE(desk::text(window, u"lblAnswer3"_s), u"include_newfile(\u201ctime.inc\u201d);");
        QCOMPARE(quizdesk::answersEnabled(window), quizdesk::threeAnswers);
    }

    void helloWorldQuestionsLeaveTheThirdButtonAsItIs_data() {
        QTest::addColumn<int>("number");
        QTest::newRow("55") << 55;
        QTest::newRow("56") << 56;
    }

    void helloWorldQuestionsLeaveTheThirdButtonAsItIs() {
        QFETCH(int, number);
        const auto quiz = quizdesk::open(u"5"_s);
        const QWidget *window = quiz->window();
        if (number == 56) {
            quizdesk::answerRight(window);
            quizdesk::goOn(window);
        }
        QCOMPARE(quizdesk::questionShown(window), golden::question(number).text);
        QCOMPARE(desk::text(window, u"lblAnswer3"_s), u"");
        QCOMPARE(quizdesk::answersEnabled(window), quizdesk::threeAnswers);

        quiz->Question57();
        QCOMPARE(quizdesk::answersEnabled(window), quizdesk::twoAnswers);
        number == 55 ? quiz->Question55() : quiz->Question56();
        QCOMPARE(quizdesk::answersEnabled(window), quizdesk::twoAnswers);
    }

    void theEmptyThirdAnswerIsWrong_data() {
        helloWorldQuestionsLeaveTheThirdButtonAsItIs_data();
    }

    void theEmptyThirdAnswerIsWrong() {
        QFETCH(int, number);
        const auto quiz = quizdesk::open(u"5"_s);
        const QWidget *window = quiz->window();
        if (number == 56) {
            quizdesk::answerRight(window);
            quizdesk::goOn(window);
        }
        quizdesk::answer(window, 3);
        QCOMPARE(desk::text(window, u"lblStatus"_s), u"wrong");
        QVERIFY(desk::isShown(window, u"lblStatus"_s));
    }

    void ofTwoEqualAnswersOnlyTheSecondIsRight_data() {
        QTest::addColumn<int>("choice");
        QTest::addColumn<QString>("verdict");
        QTest::newRow("first") << 1 << u"wrong"_s;
        QTest::newRow("second") << 2 << u"correct"_s;
    }

    void ofTwoEqualAnswersOnlyTheSecondIsRight() {
        QFETCH(int, choice);
        QFETCH(QString, verdict);
        const auto quiz = quizdesk::open(u"2"_s);
        const QWidget *window = quiz->window();
        quizdesk::answerQuestions(window, 14, 14);
        quizdesk::goOn(window);
        QCOMPARE(desk::text(window, u"lblAnswer1"_s), u"widget's");
        QCOMPARE(desk::text(window, u"lblAnswer2"_s), u"widget's");
        quizdesk::answer(window, choice);
        QCOMPARE(desk::text(window, u"lblStatus"_s), verdict);
    }

    void eachLineOfAQuestionStandsOnALineOfItsOwn_data() {
        QTest::addColumn<int>("number");
        QTest::addColumn<int>("lines");
        QTest::newRow("18") << 18 << 2;
        QTest::newRow("22") << 22 << 2;
        QTest::newRow("23") << 23 << 3;
        QTest::newRow("24") << 24 << 3;
        QTest::newRow("29") << 29 << 4;
        QTest::newRow("33") << 33 << 2;
        QTest::newRow("55") << 55 << 3;
        QTest::newRow("56") << 56 << 2;
        QTest::newRow("59") << 59 << 4;
        QTest::newRow("71") << 71 << 3;
        QTest::newRow("73") << 73 << 2;
        QTest::newRow("77") << 77 << 2;
        QTest::newRow("a question of one line") << 25 << 1;
    }

    void eachLineOfAQuestionStandsOnALineOfItsOwn() {
        QFETCH(int, number);
        QFETCH(int, lines);
        const auto quiz = quizdesk::open(u"1"_s);
        auto &label = desk::control<platform::TextLabel>(quiz->window(), u"lblQuestion"_s);
        label.setStringValue(golden::question(number).text);
        // Only the line breaks in the text itself count.
        label.setWordWrap(false);
        const QFont code = QFontDatabase::systemFont(QFontDatabase::FixedFont);
        QMap<int, bool> isCodeByLine;
        for (const optics::Text &text : optics::texts(label)) {
            isCodeByLine[text.place.top()] = text.font.family() == code.family();
        }
        QCOMPARE(isCodeByLine.size(), lines);
        // All but the first are code.
        QCOMPARE(isCodeByLine.first(), false);
        QCOMPARE(std::count(isCodeByLine.cbegin(), isCodeByLine.cend(), true), lines - 1);
    }

    void textsArePlain() {
        const auto quiz = quizdesk::open(u"1"_s);
        for (const char *name :
             {"lblQuizName", "lblProgressPercent", "lblQuestion", "lblAnswer1", "lblAnswer2",
              "lblAnswer3", "lblCorrectPercent", "lblStatus", "lblTimeLeft", "lblTimeLeftLabel"}) {
            const auto &label = desk::control<QLabel>(quiz->window(), QString::fromLatin1(name));
            QCOMPARE(label.textFormat(), Qt::PlainText);
        }
    }
};

ZORVAN_TEST(tst_questiononscreen)
#include "tst_questiononscreen.moc"
