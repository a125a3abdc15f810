#include <chrono>
#include <stdexcept>

#include <QTest>

#include "support/quizdesk.h"
#include "support/standarderror.h"
#include "support/testmain.h"
#include "support/windowtest.h"
#include "system/exception.h"
#include "windowing/controllers.h"

using namespace Qt::StringLiterals;

namespace {

std::uint32_t raisePlatformException() {
    throw platform::Exception(u"no more random numbers"_s);
}

std::uint32_t raiseAnotherException() {
    throw std::runtime_error("the dice\nare gone");
}

}  // namespace

class tst_quizload final : public WindowTest {
    Q_OBJECT

 private Q_SLOTS:
    void aFreshWindowShowsTheFirstQuestionAndNoTime() {
        store::forgetWrites();
        const auto quiz = quizdesk::open(u"3"_s);
        const QWidget *window = quiz->window();
        QVERIFY(window->isVisible());
        QCOMPARE(desk::text(window, u"lblQuizName"_s), u"Methods");
        QCOMPARE(desk::text(window, u"lblProgressPercent"_s), u"1/10");
        QCOMPARE(quizdesk::questionShown(window), golden::question(34).text);
        QVERIFY(!desk::isShown(window, u"lblTimeLeft"_s));
        QVERIFY(!desk::isShown(window, u"lblTimeLeftLabel"_s));
        QVERIFY(!desk::isShown(window, u"lblStatus"_s));
        QVERIFY(!desk::isShown(window, u"btnNextQuestion"_s));
        QVERIFY(!desk::isShown(window, u"imgQuestion"_s));
        QCOMPARE(store::writes(), QList<store::Write>());
    }

    void loadingResetsTheRun() {
        QuizRun &run = quizRun();
        run.spareInt = 1;
        run.spareLong = 2;
        run.correctAnswerNumber = 3;
        run.correctCount = 4;
        run.questionCount = 5;
        run.questionIndex = 6;
        run.progressRatio = 0.5F;
        run.currentTestId = u"7"_s;
        const auto quiz = quizdesk::open(u"0"_s);
        QCOMPARE(run.spareInt, 0);
        QCOMPARE(run.spareLong, 0LL);
        QCOMPARE(run.correctAnswerNumber, 0);
        QCOMPARE(run.correctCount, 0);
        QCOMPARE(run.questionCount, 0);
        QCOMPARE(run.questionIndex, 0);
        QCOMPARE(run.progressRatio, 0.0F);
        QCOMPARE(run.currentTestId, u"0");
    }

    void loadingKeepsTheOrderTheScoreAndTheClock() {
        QuizRun &run = quizRun();
        run.questionOrder = QStringList{u"9"_s};
        run.scoreRatio = 0.25F;
        run.minutesLeft = 12;
        run.secondsLeft = 34;
        run.quizTimer =
            platform::RepeatingTimer::scheduledTimer(std::chrono::hours(1), *this, [] {});
        const auto *clock = run.quizTimer.get();
        const auto quiz = quizdesk::open(u"0"_s);
        QCOMPARE(run.questionOrder, QStringList{u"9"_s});
        QCOMPARE(run.scoreRatio, 0.25F);
        QCOMPARE(run.minutesLeft, 12);
        QCOMPARE(run.secondsLeft, 34);
        QCOMPARE(run.quizTimer.get(), clock);
        QVERIFY(run.quizTimer->isValid());
    }

    void aChosenQuizThatIsAbsentIsForgotten() {
        quizRun().currentTestId = u"7"_s;
        store::fill({{u"firstRun"_s, u"false"_s}});
        const auto quiz = platform::makeController<MainTest>(u"MainTest"_s);
        quiz->showWindow();
        QCOMPARE(quizRun().currentTestId, u"");
        QCOMPARE(quizRun().questionCount, 0);
        QCOMPARE(desk::text(quiz->window(), u"lblProgressPercent"_s), u"1/0");
    }

    void aFailureOfThePlatformIsReported() {
        quizRun().random = raisePlatformException;
        alerts_->answer(u"OK"_s);
        StandardError error;
        const auto quiz = quizdesk::open(u"1"_s);
        const QWidget *window = quiz->window();

        // The quiz window is not on screen yet.
        const ShownAlert expected{u"Could not load the selected test."_s, {u"OK"_s}, {}};
        QCOMPARE(alerts_->shown(), QList{expected});
        QCOMPARE(error.lines(), QStringList());

        QVERIFY(window->isVisible());
        QCOMPARE(desk::text(window, u"lblQuizName"_s), u"Terminology");
        QCOMPARE(desk::text(window, u"lblProgressPercent"_s), u"1/14");
        QCOMPARE(quizdesk::maxLevel(window), 14.0);
        QCOMPARE(quizdesk::questionShown(window), quizdesk::layoutText(u"lblQuestion"_s));
    }

    void theRestOfTheWindowIsSetUpAfterAFailure() {
        quizRun().random = raisePlatformException;
        bool clockBeforeTheAlertWent = true;
        alerts_->answer(u"OK"_s, [&] { clockBeforeTheAlertWent = quizRun().quizTimer != nullptr; });
        const auto quiz = quizdesk::openTimed(u"1"_s);
        QVERIFY(!clockBeforeTheAlertWent);
        QVERIFY(quizRun().quizTimer && quizRun().quizTimer->isValid());
        QCOMPARE(quizRun().minutesLeft, 3);
        QCOMPARE(quizRun().secondsLeft, 33);
        QVERIFY(desk::isShown(quiz->window(), u"lblTimeLeft"_s));

        quiz->window()->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(quiz->window()));
        quiz->btnNextQuestion.setHidden(false);
        QTest::keyClick(quiz->window(), Qt::Key_Return);
        QVERIFY(!desk::isShown(quiz->window(), u"btnNextQuestion"_s));
    }

    void anotherExceptionReachesTheEventLoop() {
        platform::openWindow(u"MainMenu"_s);
        QWidget *menu = desk::window(u"MainMenu"_s);
        quizRun().random = raiseAnotherException;
        {
            StandardError error;
            desk::click(menu, u"btnQuiz1"_s);
            QCOMPARE(error.lines(), QStringList{u"Uncaught exception: the dice are gone"_s});
        }
        QVERIFY(alerts_->shown().isEmpty());
        QVERIFY(desk::windows(u"MainTest"_s).isEmpty());

        // The program goes on.
        QVERIFY(menu->isVisible());
        quizRun().random = [] { return 0U; };
        desk::click(menu, u"btnQuiz1"_s);
        QCOMPARE(quizdesk::questionShown(desk::window(u"MainTest"_s)), u"What does PHP stand for?");
    }

    void anUnknownQuizInTheFirstAttemptShowsNothing() {
        const auto quiz = quizdesk::open(u"0"_s);
        const QWidget *window = quiz->window();
        QVERIFY(window->isVisible());
        QCOMPARE(desk::text(window, u"lblProgressPercent"_s), u"1/0");
        QCOMPARE(quizdesk::maxLevel(window), 0.0);
        for (const char *label : {"lblQuizName", "lblQuestion", "lblAnswer1", "lblAnswer2",
                                  "lblAnswer3", "lblCorrectPercent"}) {
            const QString name = QString::fromLatin1(label);
            QCOMPARE(desk::text(window, name), quizdesk::layoutText(name));
        }
        QCOMPARE(quizRun().questionOrder, QStringList());
        QCOMPARE(quizRun().correctAnswerNumber, 0);

        store::forgetWrites();
        quizdesk::answer(window, 1);
        QCOMPARE(quizdesk::answersEnabled(window), quizdesk::noAnswer);
        QVERIFY(!desk::isShown(window, u"lblStatus"_s));
        QVERIFY(!desk::isShown(window, u"btnNextQuestion"_s));
        QCOMPARE(quizRun().questionIndex, 0);
        QVERIFY(window->isVisible());
        QCOMPARE(store::writes(), QList<store::Write>());
        QVERIFY(alerts_->shown().isEmpty());

        alerts_->answer(u"Yes"_s);
        quiz->window()->close();
        QVERIFY(!window->isVisible());
    }

    void anUnknownQuizLaterShowsTheLastAttemptsFirstEntry() {
        quizdesk::open(u"5"_s)->close();
        const auto quiz = quizdesk::open(u"0"_s);
        const QWidget *window = quiz->window();
        QCOMPARE(quizdesk::questionShown(window), golden::question(55).text);
        QCOMPARE(quizRun().correctAnswerNumber, 1);
        QCOMPARE(desk::text(window, u"lblQuizName"_s), quizdesk::layoutText(u"lblQuizName"_s));
        QCOMPARE(desk::text(window, u"lblProgressPercent"_s), u"1/0");
        QVERIFY(alerts_->shown().isEmpty());

        quizdesk::answer(window, 1);
        QVERIFY(!window->isVisible());
        QCOMPARE(desk::windows(u"QuizComplete"_s).size(), 1);
    }

    void aPlaceBeyondTheOrderLeavesTheQuestion() {
        const auto quiz = quizdesk::open(u"1"_s);
        const QWidget *window = quiz->window();
        quizdesk::answerRight(window);
        quizRun().questionOrder = QStringList{u"1"_s};
        StandardError error;
        quizdesk::goOn(window);
        QCOMPARE(error.lines(), QStringList());
        QVERIFY(alerts_->shown().isEmpty());
        QCOMPARE(quizdesk::questionShown(window), u"What does PHP stand for?");
        QCOMPARE(desk::text(window, u"lblProgressPercent"_s), u"2/14");
        QCOMPARE(quizdesk::answersEnabled(window), quizdesk::threeAnswers);
        QCOMPARE(quizRun().correctAnswerNumber, 2);
    }

    void anEntryThatIsNoQuestionLeavesTheQuestion() {
        const auto quiz = quizdesk::open(u"1"_s);
        const QWidget *window = quiz->window();
        for (const QString &entry : {u"78"_s, u"0"_s, u"02"_s, u" 2"_s, u""_s}) {
            quizRun().questionOrder = QStringList{entry};
            quiz->SetupQuestion();
            QCOMPARE(quizdesk::questionShown(window), u"What does PHP stand for?");
            QCOMPARE(quizRun().correctAnswerNumber, 2);
        }
        QVERIFY(alerts_->shown().isEmpty());
    }
};

ZORVAN_TEST(tst_quizload)
#include "tst_quizload.moc"
