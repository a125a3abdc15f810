#include <QTest>

#include "progress/quizcomplete.h"
#include "support/clocks.h"
#include "support/quizdesk.h"
#include "support/testmain.h"
#include "support/windowtest.h"
#include "windowing/controllers.h"

using namespace Qt::StringLiterals;

namespace {

void passSeconds(int seconds) {
    for (int second = 0; second < seconds; ++second) {
        clocks::passSecond();
    }
}

QString timeShown(const MainTest &quiz) {
    return desk::text(quiz.window(), u"lblTimeLeft"_s);
}

}  // namespace

class tst_quizclock final : public WindowTest {
    Q_OBJECT

 private Q_SLOTS:
    void cleanup() {
        WindowTest::cleanup();
        QVERIFY(clocks::running().isEmpty());
    }

    void everyQuizStartsWithItsTime_data() {
        QTest::addColumn<int>("minutes");
        QTest::addColumn<int>("seconds");
        QTest::newRow("1") << 3 << 33;
        QTest::newRow("2") << 4 << 49;
        QTest::newRow("3") << 2 << 32;
        QTest::newRow("4") << 2 << 47;
        QTest::newRow("5") << 1 << 46;
        QTest::newRow("6") << 4 << 4;
        QTest::newRow("7") << 7 << 37;
    }

    void everyQuizStartsWithItsTime() {
        QFETCH(int, minutes);
        QFETCH(int, seconds);
        const auto quiz = quizdesk::openTimed(QString::fromLatin1(QTest::currentDataTag()));
        QCOMPARE(quizRun().minutesLeft, minutes);
        QCOMPARE(quizRun().secondsLeft, seconds);
        QVERIFY(desk::isShown(quiz->window(), u"lblTimeLeft"_s));
        QVERIFY(desk::isShown(quiz->window(), u"lblTimeLeftLabel"_s));
        QCOMPARE(timeShown(*quiz), quizdesk::layoutText(u"lblTimeLeft"_s));
        QVERIFY(quizRun().quizTimer && quizRun().quizTimer->isValid());
        QCOMPARE(clocks::running().size(), 1);
    }

    void aQuizCountsDownAndEndsTwoTicksAfterZero_data() {
        QTest::addColumn<int>("start");
        QTest::addColumn<QString>("afterOneTick");
        QTest::newRow("1") << 213 << u"3:32"_s;
        QTest::newRow("6") << 244 << u"4:03"_s;
    }

    void aQuizCountsDownAndEndsTwoTicksAfterZero() {
        QFETCH(int, start);
        QFETCH(QString, afterOneTick);
        const auto quiz = quizdesk::openTimed(QString::fromLatin1(QTest::currentDataTag()));
        for (int left = start - 1; left >= 0; --left) {
            quizRun().quizTimer->fire();
            QCOMPARE(timeShown(*quiz),
                     u"%1:%2"_s.arg(left / 60).arg(left % 60, 2, 10, QChar(u'0')));
            if (left == start - 1) {
                QCOMPARE(timeShown(*quiz), afterOneTick);
            }
        }
        quizRun().quizTimer->fire();
        QCOMPARE(timeShown(*quiz), u"0:00");
        QCOMPARE(quizRun().minutesLeft, -1);
        QCOMPARE(quizRun().secondsLeft, 59);
        QVERIFY(quiz->window()->isVisible());
        QVERIFY(alerts_->shown().isEmpty());

        alerts_->answer(u"OK"_s);
        quizRun().quizTimer->fire();
        QCOMPARE(alerts_->messages(), QStringList{u"The time is up for this test."_s});
        QVERIFY(!quiz->window()->isVisible());
    }

    void minutesStandAsTheyAre() {
        const auto quiz = quizdesk::openTimed(u"1"_s);
        quizRun().minutesLeft = 12;
        quizRun().secondsLeft = 10;
        clocks::passSecond();
        QCOMPARE(timeShown(*quiz), u"12:09");
    }

    void onlyYesMakesAQuizTimed_data() {
        QTest::addColumn<QString>("timedQuizzes");
        QTest::newRow("absent") << QString();
        QTest::newRow("no") << u"no"_s;
        QTest::newRow("empty") << u""_s;
        QTest::newRow("capital") << u"Yes"_s;
        QTest::newRow("capitals") << u"YES"_s;
        QTest::newRow("blank") << u"\"yes \""_s;
        QTest::newRow("true") << u"true"_s;
        QTest::newRow("1") << u"1"_s;
    }

    void onlyYesMakesAQuizTimed() {
        QFETCH(QString, timedQuizzes);
        if (!timedQuizzes.isNull()) {
            store::set(u"timedQuizzes"_s, timedQuizzes);
        }
        const auto quiz = quizdesk::open(u"1"_s);
        QVERIFY(!desk::isShown(quiz->window(), u"lblTimeLeft"_s));
        QVERIFY(!desk::isShown(quiz->window(), u"lblTimeLeftLabel"_s));
        QVERIFY(!quizRun().quizTimer);
        QVERIFY(clocks::running().isEmpty());
    }

    void theClockRunsOnTheEventLoop() {
        const auto quiz = quizdesk::openTimed(u"1"_s);
        QCOMPARE(clocks::running().size(), 1);
        clocks::passSecond();
        QCOMPARE(timeShown(*quiz), u"3:32");
        clocks::passSecond();
        QCOMPARE(timeShown(*quiz), u"3:31");

        // What the learner does meanwhile makes no difference.
        quizdesk::answerRight(quiz->window());
        clocks::passSecond();
        quizdesk::goOn(quiz->window());
        clocks::passSecond();
        QCOMPARE(timeShown(*quiz), u"3:29");
    }

    void noSecondPassesWhileAnAlertIsUp() {
        const auto quiz = quizdesk::openTimed(u"1"_s);
        clocks::passSecond();
        alerts_->answer(u"No"_s, [&] {
            passSeconds(2);
            quizRun().quizTimer->fire();
        });
        quiz->window()->close();
        QCOMPARE(timeShown(*quiz), u"3:32");
        QCOMPARE(clocks::running().size(), 1);
        QCoreApplication::processEvents();
        clocks::passSecond();
        QCOMPARE(timeShown(*quiz), u"3:31");
    }

    void timeIsUpOnceTheTimeIsNegative_data() {
        QTest::addColumn<int>("minutes");
        QTest::addColumn<int>("seconds");
        QTest::addColumn<bool>("isUp");
        QTest::newRow("minutes negative") << -1 << 59 << true;
        QTest::newRow("minutes negative, no seconds") << -1 << 0 << true;
        QTest::newRow("no minutes, seconds negative") << 0 << -1 << true;
        QTest::newRow("nothing left") << 0 << 0 << false;
        QTest::newRow("a second left") << 0 << 1 << false;
        QTest::newRow("a minute left") << 1 << 0 << false;
    }

    void timeIsUpOnceTheTimeIsNegative() {
        QFETCH(int, minutes);
        QFETCH(int, seconds);
        QFETCH(bool, isUp);
        const auto quiz = quizdesk::openTimed(u"1"_s);
        quizRun().minutesLeft = minutes;
        quizRun().secondsLeft = seconds;
        if (isUp) {
            alerts_->answer(u"OK"_s);
        }
        quiz->timerFired();
        QCOMPARE(quiz->window()->isVisible(), !isUp);
        QCOMPARE(quizRun().quizTimer == nullptr, isUp);
    }

    void timeIsUpWhateverTheScore() {
        store::set(u"quiz1"_s, u"1"_s);
        const auto quiz = quizdesk::openTimed(u"1"_s);
        quizdesk::answerQuestions(quiz->window(), 13, 13);
        // In front of the quiz.
        platform::openWindow(u"MainMenu"_s);
        alerts_->answer(u"OK"_s);
        failByTime(*quiz);
        const ShownAlert expected{u"The time is up for this test."_s, {u"OK"_s}, u"MainTest"_s};
        QCOMPARE(alerts_->shown(), QList{expected});
        QCOMPARE(store::value(u"quiz1"_s), u"1");
    }

    void theClockHasGoneBeforeTimeIsUpIsSaid() {
        const auto quiz = quizdesk::openTimed(u"1"_s);
        bool looked = false;
        alerts_->answer(u"OK"_s, [&] {
            looked = true;
            QVERIFY(!quizRun().quizTimer);
            QVERIFY(clocks::running().isEmpty());
            QVERIFY(quiz->window()->isVisible());
            QVERIFY(desk::windows(u"QuizComplete"_s).isEmpty());
            QCOMPARE(store::value(u"currentStatus"_s), u"pass");
        });
        failByTime(*quiz);
        QVERIFY(looked);
    }

    void escapeAcknowledgesThatTimeIsUp() {
        const auto quiz = quizdesk::openTimed(u"1"_s);
        alerts_->press(Qt::Key_Escape);
        failByTime(*quiz);
    }

    void anUnknownQuizFailsAtTheSecondTick() {
        const auto quiz = quizdesk::openTimed(u"0"_s);
        QCOMPARE(quizRun().minutesLeft, 0);
        QCOMPARE(quizRun().secondsLeft, 0);
        clocks::passSecond();
        QCOMPARE(timeShown(*quiz), quizdesk::layoutText(u"lblTimeLeft"_s));
        QCOMPARE(quizRun().minutesLeft, -1);
        QVERIFY(quiz->window()->isVisible());

        alerts_->answer(u"OK"_s);
        store::forgetWrites();
        clocks::passSecond();
        QCOMPARE(alerts_->messages(), QStringList{u"The time is up for this test."_s});
        QCOMPARE(store::writes(), (QList<store::Write>{{u"currentStatus"_s, u"fail"_s}}));
        QVERIFY(!quiz->window()->isVisible());
    }

    void theEndOfTheQuizStopsTheClock() {
        const auto quiz = quizdesk::openTimed(u"5"_s);
        quizdesk::answerQuestions(quiz->window(), 6, 6);
        QCOMPARE(clocks::running().size(), 1);
        quizdesk::goOn(quiz->window());
        quizdesk::answerRight(quiz->window());
        QVERIFY(!quizRun().quizTimer);
        QVERIFY(clocks::running().isEmpty());
        QCOMPARE(store::value(u"currentStatus"_s), u"pass");
    }

 private:
    void failByTime(const MainTest &quiz) {
        quizRun().minutesLeft = 0;
        quizRun().secondsLeft = 0;
        // Left over from an earlier attempt.
        store::set(u"currentStatus"_s, u"pass"_s);
        store::forgetWrites();
        passSeconds(2);
        QVERIFY(!quiz.window()->isVisible());
        QVERIFY(!quizRun().quizTimer);
        QVERIFY(quiz.quizComplete &&
                quiz.quizComplete->window() == desk::window(u"QuizComplete"_s));
        QCOMPARE(store::writes(), (QList<store::Write>{{u"currentStatus"_s, u"fail"_s}}));
        QCOMPARE(desk::text(desk::window(u"QuizComplete"_s), u"lblTheStatus"_s),
                 u"Unfortunately you did not pass the quiz this time. Please try again.");
    }
};

ZORVAN_TEST(tst_quizclock)
#include "tst_quizclock.moc"
