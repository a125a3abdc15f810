#include <functional>

#include <QTest>
#include <QWindow>

#include "support/quizdesk.h"
#include "support/testmain.h"
#include "support/windowtest.h"
#include "windowing/application.h"
#include "windowing/controllers.h"

using namespace Qt::StringLiterals;

class tst_closeguard final : public WindowTest {
    Q_OBJECT

 private Q_SLOTS:
    void everyWayToCloseAsksOnce_data() {
        using Close = std::function<void(platform::Window &)>;
        QTest::addColumn<Close>("close");
        QTest::newRow("title bar") << Close([](auto &window) { window.windowHandle()->close(); });
        QTest::newRow("Close Window") << Close([](auto &window) {
            window.activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(&window));
            platform::Application::shared().closeWindow();
        });
        QTest::newRow("Qt") << Close([](auto &window) { window.close(); });
    }

    void everyWayToCloseAsksOnce() {
        QFETCH(std::function<void(platform::Window &)>, close);
        const auto quiz = quizdesk::open(u"1"_s);
        // In front of the quiz.
        platform::openWindow(u"MainMenu"_s);
        alerts_->answer(u"Yes"_s);
        close(*quiz->window());
        QVERIFY(!quiz->window()->isVisible());
        const ShownAlert expected{
            u"This will end your current progress on this test, would you still like to close "
            "this window?"_s,
            {u"Yes"_s, u"No"_s},
            u"MainTest"_s};
        QCOMPARE(alerts_->shown(), QList{expected});
    }

    void noKeepsTheWindowAndTheCountdown_data() {
        QTest::addColumn<bool>("byKey");
        QTest::newRow("No") << false;
        QTest::newRow("Escape") << true;
    }

    void noKeepsTheWindowAndTheCountdown() {
        QFETCH(bool, byKey);
        const auto quiz = quizdesk::openTimed(u"1"_s);
        const QWidget *window = quiz->window();
        quizdesk::answerQuestions(window, 2, 1);
        quizRun().quizTimer->fire();
        const auto *clock = quizRun().quizTimer.get();
        store::forgetWrites();
        byKey ? alerts_->press(Qt::Key_Escape) : alerts_->answer(u"No"_s);
        quiz->window()->close();

        QVERIFY(window->isVisible());
        QCOMPARE(quizRun().quizTimer.get(), clock);
        QVERIFY(quizRun().quizTimer->isValid());
        QCOMPARE(desk::text(window, u"lblTimeLeft"_s), u"3:32");
        QCoreApplication::processEvents();
        quizRun().quizTimer->fire();
        QCOMPARE(desk::text(window, u"lblTimeLeft"_s), u"3:31");
        QCOMPARE(quizRun().questionIndex, 2);
        QCOMPARE(quizRun().correctCount, 1);
        QCOMPARE(desk::text(window, u"lblStatus"_s), u"wrong");
        quizdesk::goOn(window);
        QCOMPARE(quizdesk::questionShown(window), golden::question(3).text);
        QCOMPARE(store::writes(), QList<store::Write>());
    }

    void yesClosesAndStopsTheCountdownWithoutAWrite_data() {
        QTest::addColumn<bool>("byKey");
        QTest::newRow("Yes") << false;
        QTest::newRow("Return") << true;
    }

    void yesClosesAndStopsTheCountdownWithoutAWrite() {
        QFETCH(bool, byKey);
        const auto quiz = quizdesk::openTimed(u"1"_s);
        quizRun().quizTimer->fire();
        const store::Contents before = store::contents();
        store::forgetWrites();
        byKey ? alerts_->press(Qt::Key_Return) : alerts_->answer(u"Yes"_s);
        quiz->window()->close();

        QVERIFY(!quiz->window()->isVisible());
        QVERIFY(quizRun().quizTimer);
        QVERIFY(!quizRun().quizTimer->isValid());
        quizRun().quizTimer->fire();
        QCOMPARE(desk::text(quiz->window(), u"lblTimeLeft"_s), u"3:32");
        QCOMPARE(store::writes(), QList<store::Write>());
        QCOMPARE(store::contents(), before);
        QVERIFY(!quiz->quizComplete);
        QVERIFY(desk::windows(u"QuizComplete"_s).isEmpty());
        QVERIFY(desk::windows(u"MainMenu"_s).isEmpty());
    }

    void yesInAnUntimedQuizLeavesNoClock() {
        const auto quiz = quizdesk::open(u"1"_s);
        alerts_->answer(u"Yes"_s);
        quiz->window()->close();
        QVERIFY(!quiz->window()->isVisible());
        QVERIFY(!quizRun().quizTimer);
    }

    void noTickIsDeliveredWhileTheLearnerIsAsked() {
        const auto quiz = quizdesk::openTimed(u"1"_s);
        quizRun().minutesLeft = 0;
        quizRun().secondsLeft = 1;
        alerts_->answer(u"No"_s, [] {
            for (int i = 0; i < 3; ++i) {
                quizRun().quizTimer->fire();
            }
        });
        quiz->window()->close();
        QVERIFY(quiz->window()->isVisible());
        QCOMPARE(quizRun().secondsLeft, 1);
        QCoreApplication::processEvents();
        quizRun().quizTimer->fire();
        QCOMPARE(desk::text(quiz->window(), u"lblTimeLeft"_s), u"0:00");
    }

    void aWindowThatTheProgramClosesDoesNotAsk() {
        const auto quiz = quizdesk::openTimed(u"1"_s);
        quiz->close();
        QVERIFY(!quiz->window()->isVisible());
        QVERIFY(alerts_->shown().isEmpty());
        QVERIFY(quizRun().quizTimer && quizRun().quizTimer->isValid());
    }

    void noCancelsTheQuit() {
        platform::openWindow(u"MainMenu"_s);
        const auto quiz = quizdesk::openTimed(u"1"_s);
        alerts_->answer(u"No"_s);
        QEvent quit(QEvent::Quit);
        QCoreApplication::sendEvent(qApp, &quit);
        QVERIFY(!quit.isAccepted());
        QVERIFY(quiz->window()->isVisible());
        QVERIFY(desk::window(u"MainMenu"_s)->isVisible());
        QVERIFY(quizRun().quizTimer->isValid());
    }
};

ZORVAN_TEST(tst_closeguard)
#include "tst_closeguard.moc"
