#include <QTest>

#include "support/clocks.h"
#include "support/quizdesk.h"
#include "support/testmain.h"
#include "support/windowtest.h"
#include "windowing/controllers.h"

using namespace Qt::StringLiterals;

namespace {

QString timeShown(const MainTest &quiz) {
    return desk::text(quiz.window(), u"lblTimeLeft"_s);
}

QString timeLeft() {
    return u"%1:%2"_s.arg(quizRun().minutesLeft).arg(quizRun().secondsLeft);
}

}  // namespace

class tst_quizclock final : public WindowTest {
    Q_OBJECT

 private Q_SLOTS:
    void everyQuizStartsWithItsTime() {
        struct Row {
            QString quizId;
            QString time;
        };
        const QList<Row> rows{{u"1"_s, u"3:33"_s}, {u"2"_s, u"4:49"_s}, {u"3"_s, u"2:32"_s},
                              {u"4"_s, u"2:47"_s}, {u"5"_s, u"1:46"_s}, {u"6"_s, u"4:4"_s},
                              {u"7"_s, u"7:37"_s}};
        for (const Row &row : rows) {
            const auto quiz = quizdesk::openTimed(row.quizId);
            QCOMPARE(timeLeft(), row.time);
            QVERIFY(desk::isShown(quiz->window(), u"lblTimeLeft"_s));
            QVERIFY(desk::isShown(quiz->window(), u"lblTimeLeftLabel"_s));
            // It is shown from the first tick on.
            QCOMPARE(timeShown(*quiz), quizdesk::layoutText(u"lblTimeLeft"_s));
            QCOMPARE(clocks::running().size(), 1);
        }
    }

    void theClockCountsDownAndEndsTheQuizTwoTicksAfterZero() {
        const auto quiz = quizdesk::openTimed(u"6"_s);
        for (int left = 243; left >= 0; --left) {
            clocks::passSecond();
            QCOMPARE(timeShown(*quiz),
                     u"%1:%2"_s.arg(left / 60).arg(left % 60, 2, 10, QChar(u'0')));
        }
        clocks::passSecond();
        QCOMPARE(timeShown(*quiz), u"0:00");
        QVERIFY(quiz->window()->isVisible());
        alerts_->answer(u"OK"_s);
        clocks::passSecond();
        QVERIFY(!quiz->window()->isVisible());
    }

    void onlyYesMakesAQuizTimed() {
        for (const QString &timed : {u"no"_s, u""_s, u"Yes"_s, u"\"yes \""_s, u"true"_s, u"1"_s}) {
            store::set(u"timedQuizzes"_s, timed);
            const auto quiz = quizdesk::open(u"1"_s);
            QVERIFY2(!desk::isShown(quiz->window(), u"lblTimeLeft"_s), qUtf8Printable(timed));
            QVERIFY2(clocks::running().isEmpty(), qUtf8Printable(timed));
        }
    }

    void timeIsUpOnceItIsNegative() {
        struct Row {
            int minutes;
            int seconds;
            bool isUp;
        };
        for (const auto &[minutes, seconds, isUp] :
             {Row{-1, 59, true}, Row{0, -1, true}, Row{0, 0, false}, Row{1, -1, false}}) {
            const auto quiz = quizdesk::openTimed(u"1"_s);
            quizRun().minutesLeft = minutes;
            quizRun().secondsLeft = seconds;
            if (isUp) {
                alerts_->answer(u"OK"_s);
            }
            quiz->timerFired();
            QCOMPARE(quiz->window()->isVisible(), !isUp);
        }
    }

    void timeThatIsUpFailsTheQuizWhateverTheScore() {
        const auto quiz = quizdesk::openTimed(u"1"_s);
        quizdesk::answerQuestions(quiz->window(), 13, 13);
        // In front of the quiz.
        platform::openWindow(u"MainMenu"_s);
        quizRun().minutesLeft = -1;
        store::forgetWrites();
        bool looked = false;
        alerts_->answer(u"OK"_s, [&] {
            looked = true;
            QVERIFY(!quizRun().quizTimer);
            QVERIFY(quiz->window()->isVisible());
            QVERIFY(desk::windows(u"QuizComplete"_s).isEmpty());
            QCOMPARE(store::writes(), QList<store::Write>());
        });
        clocks::passSecond();
        QVERIFY(looked);
        const ShownAlert report{u"The time is up for this test."_s, {u"OK"_s}, u"MainTest"_s};
        QCOMPARE(alerts_->shown(), QList{report});
        QCOMPARE(store::writes(), (QList<store::Write>{{u"currentStatus"_s, u"fail"_s}}));
        QVERIFY(!quiz->window()->isVisible());
        QCOMPARE(desk::text(desk::window(u"QuizComplete"_s), u"lblTheStatus"_s),
                 u"Unfortunately you did not pass the quiz this time. Please try again.");
    }

    void anUnknownQuizFailsAtTheSecondTick() {
        const auto quiz = quizdesk::openTimed(u"0"_s);
        QCOMPARE(timeLeft(), u"0:0");
        clocks::passSecond();
        QCOMPARE(timeShown(*quiz), quizdesk::layoutText(u"lblTimeLeft"_s));
        QVERIFY(quiz->window()->isVisible());
        alerts_->answer(u"OK"_s);
        clocks::passSecond();
        QVERIFY(!quiz->window()->isVisible());
    }
};

ZORVAN_TEST(tst_quizclock)
#include "tst_quizclock.moc"
