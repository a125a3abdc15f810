#include <QTest>

#include "support/clocks.h"
#include "support/quizdesk.h"
#include "support/testmain.h"
#include "support/windowtest.h"
#include "windowing/controllers.h"

using namespace Qt::StringLiterals;

class tst_closeguard final : public WindowTest {
    Q_OBJECT

 private Q_SLOTS:
    void noKeepsTheWindowAndTheClock() {
        const auto quiz = quizdesk::openTimed(u"1"_s);
        const auto *clock = quizRun().quizTimer.get();
        QVERIFY(clock != nullptr);
        clocks::passSecond();
        // No tick comes while the learner is asked.
        alerts_->answer(u"No"_s, clocks::passSecond);
        quiz->window()->close();
        QVERIFY(quiz->window()->isVisible());
        QCOMPARE(quizRun().quizTimer.get(), clock);
        QCOMPARE(desk::text(quiz->window(), u"lblTimeLeft"_s), u"3:32");
        QCoreApplication::processEvents();
        clocks::passSecond();
        QCOMPARE(desk::text(quiz->window(), u"lblTimeLeft"_s), u"3:31");
    }

    void yesClosesAndStopsTheClockWithoutAWrite() {
        const auto quiz = quizdesk::openTimed(u"1"_s);
        // In front of the quiz.
        platform::openWindow(u"MainMenu"_s);
        store::forgetWrites();
        alerts_->answer(u"Yes"_s);
        quiz->window()->close();
        const ShownAlert question{
            u"This will end your current progress on this test, would you still like to close "
            "this window?"_s,
            {u"Yes"_s, u"No"_s},
            u"MainTest"_s};
        QCOMPARE(alerts_->shown(), QList{question});
        QVERIFY(!quiz->window()->isVisible());
        QVERIFY(desk::windows(u"QuizComplete"_s).isEmpty());
        QCOMPARE(store::writes(), QList<store::Write>());
        // The run keeps the stopped clock.
        QVERIFY(quizRun().quizTimer);
        QVERIFY(!quizRun().quizTimer->isValid());
    }

    void yesInAnUntimedQuizLeavesNoClock() {
        const auto quiz = quizdesk::open(u"1"_s);
        alerts_->answer(u"Yes"_s);
        quiz->window()->close();
        QVERIFY(!quiz->window()->isVisible());
        QVERIFY(!quizRun().quizTimer);
    }
};

ZORVAN_TEST(tst_closeguard)
#include "tst_closeguard.moc"
