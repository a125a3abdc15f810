#include <QTest>

#include "content/questionnumbers.h"
#include "support/quizdesk.h"
#include "support/testmain.h"
#include "support/windowtest.h"

using namespace Qt::StringLiterals;

using platform::RowState;

class tst_questionflow final : public WindowTest {
    Q_OBJECT

 private Q_SLOTS:
    void eachQuestionIsPutOnScreenByItsOwnOperation() {
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

    void anAnswerGivesAVerdictAndTheScoreSoFar() {
        struct Row {
            QString answers;
            QString verdict;
            QString score;
        };
        // A blank stands before the percent sign if the last answer is right.
        const QList<Row> rows{
            {u"r"_s, u"correct"_s, u"100 %"_s},       {u"w"_s, u"wrong"_s, u"0%"_s},
            {u"rwr"_s, u"correct"_s, u"67 %"_s},      {u"rrw"_s, u"wrong"_s, u"67%"_s},
            {u"wwwwwwwr"_s, u"correct"_s, u"12 %"_s}, {u"rrrwwwww"_s, u"wrong"_s, u"38%"_s},
        };
        for (const Row &row : rows) {
            const auto quiz = quizdesk::open(u"1"_s);
            for (qsizetype i = 0; i < row.answers.size(); ++i) {
                if (i > 0) {
                    quizdesk::goOn(quiz->window());
                }
                row.answers.at(i) == u'r' ? quizdesk::answerRight(quiz->window())
                                          : quizdesk::answerWrong(quiz->window());
            }
            QCOMPARE(desk::text(quiz->window(), u"lblStatus"_s), row.verdict);
            QCOMPARE(desk::text(quiz->window(), u"lblCorrectPercent"_s), row.score);
        }
    }

    void anAnswerLocksTheButtonsUntilTheNextQuestion() {
        const auto quiz = quizdesk::open(u"1"_s);
        const QWidget *window = quiz->window();
        quizdesk::answerWrong(window);
        QCOMPARE(quizdesk::answersEnabled(window), quizdesk::noAnswer);
        QCOMPARE(quizdesk::alphaValues(window), (QList<double>{0.5, 1.0, 0.5}));
        QVERIFY(desk::isShown(window, u"lblStatus"_s));
        QVERIFY(desk::isShown(window, u"btnNextQuestion"_s));
        QCOMPARE(desk::text(window, u"lblProgressPercent"_s), u"1/14");
        QCOMPARE(quizdesk::level(window), 0.0);

        quizdesk::goOn(window);
        QCOMPARE(quizdesk::questionShown(window), u"How would you write 'Hello World' in PHP?");
        QCOMPARE(quizdesk::answersEnabled(window), quizdesk::threeAnswers);
        QCOMPARE(quizdesk::alphaValues(window), (QList<double>{1.0, 1.0, 1.0}));
        QVERIFY(!desk::isShown(window, u"lblStatus"_s));
        QVERIFY(!desk::isShown(window, u"btnNextQuestion"_s));
        QCOMPARE(desk::text(window, u"lblProgressPercent"_s), u"2/14");
        QCOMPARE(quizdesk::level(window), 1.0);
    }

    void anAnswerMarksTheRightOneAndTheChosenOneUntilTheNextQuestion() {
        for (const int right : {1, 2, 3}) {
            for (const int chosen : {1, 2, 3}) {
                const auto quiz = quizdesk::open(u"1"_s);
                quizRun().correctAnswerNumber = right;
                quizdesk::answer(quiz->window(), chosen);
                QList<RowState> states(3, RowState::Other);
                states[chosen - 1] = RowState::Wrong;
                states[right - 1] = RowState::Right;
                QCOMPARE(quizdesk::states(quiz->window()), states);
                QStringList descriptions(3);
                descriptions[right - 1] = u"the right answer"_s;
                QCOMPARE(quizdesk::answerDescriptions(quiz->window()), descriptions);

                quizdesk::goOn(quiz->window());
                QCOMPARE(quizdesk::states(quiz->window()), QList<RowState>(3, RowState::Open));
                QCOMPARE(quizdesk::answerDescriptions(quiz->window()),
                         (QStringList{u"Question 2 of 14"_s, QString(), QString()}));
            }
        }
    }

    // The program never shows it.
    void goingOnHidesTheImage() {
        const auto quiz = quizdesk::open(u"1"_s);
        QVERIFY(!desk::isShown(quiz->window(), u"imgQuestion"_s));
        quizdesk::answerRight(quiz->window());
        quiz->imgQuestion.setHidden(false);
        quizdesk::goOn(quiz->window());
        QVERIFY(!desk::isShown(quiz->window(), u"imgQuestion"_s));
    }
};

ZORVAN_TEST(tst_questionflow)
#include "tst_questionflow.moc"
