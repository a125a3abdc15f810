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
    void aFreshWindowShowsTheFirstQuestion() {
        const auto quiz = quizdesk::open(u"3"_s);
        const QWidget *window = quiz->window();
        QCOMPARE(window->windowTitle(), u"Methods");
        QCOMPARE(desk::text(window, u"lblQuizName"_s), u"Methods");
        QCOMPARE(desk::text(window, u"lblProgressPercent"_s), u"1/10");
        QCOMPARE(quizdesk::maxLevel(window), 10.0);
        QCOMPARE(quizdesk::questionShown(window), golden::question(34).text);
        for (const QString &name : {u"lblTimeLeft"_s, u"lblTimeLeftLabel"_s, u"lblStatus"_s,
                                    u"btnNextQuestion"_s, u"imgQuestion"_s}) {
            QVERIFY2(!desk::isShown(window, name), qUtf8Printable(name));
        }
    }

    void loadingResetsTheRunButNotTheOrderTheScoreAndTheClock() {
        QuizRun &run = quizRun();
        quizdesk::answerQuestions(quizdesk::openTimed(u"1"_s)->window(), 3, 2);
        const auto *clock = run.quizTimer.get();
        QVERIFY(clock != nullptr);
        const QStringList order = run.questionOrder;
        const float score = run.scoreRatio;
        store::set(u"timedQuizzes"_s, u"no"_s);

        const auto quiz = quizdesk::open(u"0"_s);
        QCOMPARE(run.currentTestId, u"0");
        QCOMPARE(run.questionCount, 0);
        QCOMPARE(run.questionIndex, 0);
        QCOMPARE(run.correctCount, 0);
        QCOMPARE(run.progressRatio, 0.0F);
        QCOMPARE(run.questionOrder, order);
        QCOMPARE(run.scoreRatio, score);
        QCOMPARE(run.quizTimer.get(), clock);
        QVERIFY(run.quizTimer->isValid());
    }

    void aFailureOfThePlatformIsReportedAndTheRestIsSetUp() {
        quizRun().random = raisePlatformException;
        bool clockBeforeTheReport = true;
        alerts_->answer(u"OK"_s, [&] { clockBeforeTheReport = quizRun().quizTimer != nullptr; });
        StandardError error;
        const auto quiz = quizdesk::openTimed(u"1"_s);
        const QWidget *window = quiz->window();
        // The quiz window is not on screen yet.
        const ShownAlert report{u"Could not load the selected test."_s, {u"OK"_s}, {}};
        QCOMPARE(alerts_->shown(), QList{report});
        QCOMPARE(error.lines(), QStringList());

        QVERIFY(window->isVisible());
        QCOMPARE(window->windowTitle(), u"Terminology");
        QCOMPARE(desk::text(window, u"lblProgressPercent"_s), u"1/14");
        QCOMPARE(quizdesk::questionShown(window), quizdesk::layoutText(u"lblQuestion"_s));
        QVERIFY(!clockBeforeTheReport);
        QVERIFY(quizRun().quizTimer);
        QVERIFY(desk::isShown(window, u"lblTimeLeft"_s));
    }

    void anotherExceptionReachesTheEventLoop() {
        platform::openWindow(u"MainMenu"_s);
        QWidget *menu = desk::window(u"MainMenu"_s);
        quizRun().random = raiseAnotherException;
        StandardError error;
        desk::click(menu, u"btnQuiz1"_s);
        QCOMPARE(error.lines(), QStringList{u"Uncaught exception: the dice are gone"_s});
        QVERIFY(desk::windows(u"MainTest"_s).isEmpty());

        // The program goes on.
        quizRun().random = [] { return 0U; };
        desk::click(menu, u"btnQuiz1"_s);
        QCOMPARE(quizdesk::questionShown(desk::window(u"MainTest"_s)), u"What does PHP stand for?");
    }

    void anUnknownQuizShowsNothingInTheFirstAttempt() {
        const auto quiz = quizdesk::open(u"0"_s);
        const QWidget *window = quiz->window();
        QCOMPARE(desk::text(window, u"lblProgressPercent"_s), u"1/0");
        for (const QString &name : {u"lblQuizName"_s, u"lblQuestion"_s, u"lblAnswer1"_s}) {
            QCOMPARE(desk::text(window, name), quizdesk::layoutText(name));
        }
        // An answer only locks the buttons.
        quizdesk::answer(window, 1);
        QCOMPARE(quizdesk::answersEnabled(window), quizdesk::noAnswer);
        QVERIFY(!desk::isShown(window, u"lblStatus"_s));
        QVERIFY(!desk::isShown(window, u"btnNextQuestion"_s));
        QCOMPARE(quizRun().questionIndex, 0);
    }

    void anUnknownQuizLaterShowsTheLastAttemptsFirstQuestion() {
        quizdesk::open(u"5"_s)->close();
        const auto quiz = quizdesk::open(u"0"_s);
        QCOMPARE(quizdesk::questionShown(quiz->window()), golden::question(55).text);
        QCOMPARE(desk::text(quiz->window(), u"lblProgressPercent"_s), u"1/0");
        quizdesk::answer(quiz->window(), 1);
        QVERIFY(!quiz->window()->isVisible());
    }

    void aPlaceBeyondTheOrderLeavesTheQuestion() {
        const auto quiz = quizdesk::open(u"1"_s);
        quizdesk::answerRight(quiz->window());
        quizRun().questionOrder = QStringList{u"1"_s};
        StandardError error;
        quizdesk::goOn(quiz->window());
        QCOMPARE(error.lines(), QStringList());
        QCOMPARE(quizdesk::questionShown(quiz->window()), u"What does PHP stand for?");
        QCOMPARE(desk::text(quiz->window(), u"lblProgressPercent"_s), u"2/14");
    }
};

ZORVAN_TEST(tst_quizload)
#include "tst_quizload.moc"
