#include <QTest>

#include "support/quizdesk.h"
#include "support/testmain.h"
#include "support/windowtest.h"

using namespace Qt::StringLiterals;

using platform::RowState;

class tst_questionflow final : public WindowTest {
    Q_OBJECT

 private Q_SLOTS:
    void firstAnswerRightSaysCorrectAndHundredWithABlank() {
        const auto quiz = quizdesk::open(u"1"_s);
        quizdesk::answer(quiz->window(), 2);
        QCOMPARE(desk::text(quiz->window(), u"lblStatus"_s), u"correct");
        QVERIFY(desk::isShown(quiz->window(), u"lblStatus"_s));
        QCOMPARE(desk::text(quiz->window(), u"lblCorrectPercent"_s), u"100 %");
        QCOMPARE(quizRun().correctCount, 1);
        QCOMPARE(quizRun().questionIndex, 1);
    }

    void firstAnswerWrongSaysWrongAndNoneWithoutABlank() {
        const auto quiz = quizdesk::open(u"1"_s);
        quizdesk::answer(quiz->window(), 1);
        QCOMPARE(desk::text(quiz->window(), u"lblStatus"_s), u"wrong");
        QVERIFY(desk::isShown(quiz->window(), u"lblStatus"_s));
        QCOMPARE(desk::text(quiz->window(), u"lblCorrectPercent"_s), u"0%");
        QCOMPARE(quizRun().correctCount, 0);
        QCOMPARE(quizRun().questionIndex, 1);
    }

    void scoreIsRoundedAndPutAsTheLastAnswerHasIt_data() {
        QTest::addColumn<QString>("answers");
        QTest::addColumn<QString>("score");
        QTest::newRow("2 of 3, last wrong") << u"rrw"_s << u"67%"_s;
        QTest::newRow("2 of 3, last right") << u"rwr"_s << u"67 %"_s;
        QTest::newRow("1 of 3, last wrong") << u"rww"_s << u"33%"_s;
        QTest::newRow("1 of 2, last right") << u"wr"_s << u"50 %"_s;
        QTest::newRow("1 of 8, last wrong") << u"rwwwwwww"_s << u"12%"_s;
        QTest::newRow("1 of 8, last right") << u"wwwwwwwr"_s << u"12 %"_s;
        QTest::newRow("3 of 8, last wrong") << u"rrrwwwww"_s << u"38%"_s;
        QTest::newRow("5 of 8, last right") << u"wwwrrrrr"_s << u"62 %"_s;
        QTest::newRow("7 of 8, last right") << u"wrrrrrrr"_s << u"88 %"_s;
    }

    void scoreIsRoundedAndPutAsTheLastAnswerHasIt() {
        QFETCH(QString, answers);
        QFETCH(QString, score);
        const auto quiz = quizdesk::open(u"1"_s);
        for (qsizetype i = 0; i < answers.size(); ++i) {
            if (i > 0) {
                quizdesk::goOn(quiz->window());
            }
            answers.at(i) == u'r' ? quizdesk::answerRight(quiz->window())
                                  : quizdesk::answerWrong(quiz->window());
        }
        QCOMPARE(desk::text(quiz->window(), u"lblCorrectPercent"_s), score);
    }

    void anAnswerLocksTheButtonsAndShowsTheWayOn() {
        const auto quiz = quizdesk::open(u"1"_s);
        const QWidget *window = quiz->window();
        QVERIFY(!desk::isShown(window, u"btnNextQuestion"_s));
        QVERIFY(!desk::isShown(window, u"lblStatus"_s));
        QCOMPARE(quizdesk::answersEnabled(window), quizdesk::threeAnswers);

        quizdesk::answer(window, 1);
        QVERIFY(desk::isShown(window, u"btnNextQuestion"_s));
        QCOMPARE(quizdesk::answersEnabled(window), quizdesk::noAnswer);
        QCOMPARE(desk::text(window, u"lblProgressPercent"_s), u"1/14");
        QCOMPARE(quizdesk::level(window), 0.0);

        // The right answer comes too late.
        quizdesk::answer(window, 2);
        QCOMPARE(desk::text(window, u"lblStatus"_s), u"wrong");
        QCOMPARE(quizRun().questionIndex, 1);
    }

    void anAnswerMarksEveryRow_data() {
        QTest::addColumn<int>("rightAnswer");
        QTest::addColumn<int>("chosen");
        QTest::addColumn<QList<RowState>>("states");
        constexpr auto right = RowState::Right;
        constexpr auto wrong = RowState::Wrong;
        constexpr auto other = RowState::Other;
        QTest::newRow("1 for 1") << 1 << 1 << QList{right, other, other};
        QTest::newRow("2 for 1") << 1 << 2 << QList{right, wrong, other};
        QTest::newRow("3 for 1") << 1 << 3 << QList{right, other, wrong};
        QTest::newRow("1 for 2") << 2 << 1 << QList{wrong, right, other};
        QTest::newRow("2 for 2") << 2 << 2 << QList{other, right, other};
        QTest::newRow("3 for 2") << 2 << 3 << QList{other, right, wrong};
        QTest::newRow("1 for 3") << 3 << 1 << QList{wrong, other, right};
        QTest::newRow("2 for 3") << 3 << 2 << QList{other, wrong, right};
        QTest::newRow("3 for 3") << 3 << 3 << QList{other, other, right};
    }

    void anAnswerMarksEveryRow() {
        QFETCH(const int, rightAnswer);
        QFETCH(const int, chosen);
        const QList<RowState> open(3, RowState::Open);
        const auto quiz = quizdesk::open(u"1"_s);
        QCOMPARE(quizdesk::states(quiz->window()), open);
        quizRun().correctAnswerNumber = rightAnswer;
        quizdesk::answer(quiz->window(), chosen);
        QTEST(quizdesk::states(quiz->window()), "states");
        quizdesk::goOn(quiz->window());
        QCOMPARE(quizdesk::states(quiz->window()), open);
    }

    void bothVerdictsAreWhite_data() {
        QTest::addColumn<int>("choice");
        QTest::newRow("right") << 2;
        QTest::newRow("wrong") << 1;
    }

    void bothVerdictsAreWhite() {
        QFETCH(int, choice);
        const auto quiz = quizdesk::open(u"1"_s);
        quizdesk::answer(quiz->window(), choice);
        const auto &status = desk::control<platform::TextLabel>(quiz->window(), u"lblStatus"_s);
        QCOMPARE(status.textColor(), QColor(255, 255, 255));
        quiz->lblStatus.setTextColor(Qt::red);
        quizdesk::goOn(quiz->window());
        QCOMPARE(status.textColor(), QColor(255, 255, 255));
    }

    void goingOnUndoesWhatTheAnswerDid() {
        const auto quiz = quizdesk::open(u"1"_s);
        const QWidget *window = quiz->window();
        quizdesk::answer(window, 2);
        quizdesk::goOn(window);
        QCOMPARE(quizdesk::questionShown(window), u"How would you write 'Hello World' in PHP?");
        QCOMPARE(quizdesk::alphaValues(window), (QList<double>{1.0, 1.0, 1.0}));
        QVERIFY(!desk::isShown(window, u"lblStatus"_s));
        QVERIFY(!desk::isShown(window, u"btnNextQuestion"_s));
        QCOMPARE(quizdesk::answersEnabled(window), quizdesk::threeAnswers);
        QCOMPARE(desk::text(window, u"lblCorrectPercent"_s), u"100 %");
    }

    void goingOnNeverEndsTheQuiz() {
        const auto quiz = quizdesk::open(u"5"_s);
        store::forgetWrites();
        quizRun().questionIndex = 7;
        quiz->goNextQuestion();
        QVERIFY(quiz->window()->isVisible());
        QVERIFY(desk::windows(u"QuizComplete"_s).isEmpty());
        QCOMPARE(store::writes(), QList<store::Write>());
    }

    void anAnswerWithoutAQuestionOnlyLocksTheButtons_data() {
        QTest::addColumn<int>("correctAnswerNumber");
        QTest::newRow("none") << 0;
        QTest::newRow("beyond the third") << 4;
        QTest::newRow("negative") << -1;
    }

    void anAnswerWithoutAQuestionOnlyLocksTheButtons() {
        QFETCH(int, correctAnswerNumber);
        const auto quiz = quizdesk::open(u"1"_s);
        const QWidget *window = quiz->window();
        quizRun().correctAnswerNumber = correctAnswerNumber;
        quizdesk::answer(window, 3);
        QCOMPARE(quizdesk::answersEnabled(window), quizdesk::noAnswer);
        QCOMPARE(quizdesk::alphaValues(window), (QList<double>{1.0, 1.0, 1.0}));
        QCOMPARE(quizdesk::states(window), QList<RowState>(3, RowState::Open));
        QVERIFY(!desk::isShown(window, u"lblStatus"_s));
        QVERIFY(!desk::isShown(window, u"btnNextQuestion"_s));
        QCOMPARE(quizRun().questionIndex, 0);
        QCOMPARE(desk::text(window, u"lblCorrectPercent"_s),
                 quizdesk::layoutText(u"lblCorrectPercent"_s));
    }

    void theLastAnswerEndsTheQuizAtOnce_data() {
        QTest::addColumn<bool>("right");
        QTest::newRow("right") << true;
        QTest::newRow("wrong") << false;
    }

    void theLastAnswerEndsTheQuizAtOnce() {
        QFETCH(bool, right);
        const auto quiz = quizdesk::open(u"5"_s);
        const QWidget *window = quiz->window();
        quizdesk::answerQuestions(window, 6, 6);
        quizdesk::goOn(window);
        QVERIFY(window->isVisible());
        QVERIFY(desk::windows(u"QuizComplete"_s).isEmpty());
        QCOMPARE(store::value(u"currentStatus"_s), u"0");

        right ? quizdesk::answerRight(window) : quizdesk::answerWrong(window);
        QVERIFY(!window->isVisible());
        QCOMPARE(desk::windows(u"QuizComplete"_s).size(), 1);
        QCOMPARE(store::value(u"currentStatus"_s), u"pass");
        QVERIFY(desk::isShown(window, u"btnNextQuestion"_s));
    }

    void theLastEntriesShowQuestion74_data() {
        QTest::addColumn<int>("place");
        QTest::newRow("74") << 12;
        QTest::newRow("75") << 13;
        QTest::newRow("76") << 14;
        QTest::newRow("77") << 15;
    }

    void theLastEntriesShowQuestion74() {
        QFETCH(int, place);
        const auto quiz = quizdesk::open(u"6"_s);
        const QWidget *window = quiz->window();
        quizdesk::answerQuestions(window, place, 0);
        quizdesk::goOn(window);
        QCOMPARE(quizRun().questionOrder.at(place), QString::fromLatin1(QTest::currentDataTag()));
        QCOMPARE(quizdesk::questionShown(window), u"What does the logical operator && stand for?");
        QCOMPARE(desk::text(window, u"lblAnswer1"_s), u"OR");
        QCOMPARE(desk::text(window, u"lblAnswer2"_s), u"NOT");
        QCOMPARE(desk::text(window, u"lblAnswer3"_s), u"AND");
        QCOMPARE(quizdesk::answersEnabled(window), quizdesk::threeAnswers);
        quizdesk::answer(window, 3);
        QCOMPARE(desk::text(window, u"lblStatus"_s), u"correct");
    }

    void theImageIsNeverShown() {
        const auto quiz = quizdesk::open(u"1"_s);
        const QWidget *window = quiz->window();
        QVERIFY(!desk::isShown(window, u"imgQuestion"_s));
        quizdesk::answerRight(window);
        QVERIFY(!desk::isShown(window, u"imgQuestion"_s));
        quiz->imgQuestion.setHidden(false);
        quizdesk::goOn(window);
        QVERIFY(!desk::isShown(window, u"imgQuestion"_s));
    }
};

ZORVAN_TEST(tst_questionflow)
#include "tst_questionflow.moc"
