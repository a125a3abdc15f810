#include <stdexcept>

#include <QTest>

#include "support/alerts.h"
#include "support/standarderror.h"
#include "support/testmain.h"
#include "system/repeatingtimer.h"
#include "windowing/alert.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

using platform::RepeatingTimer;

class tst_repeatingtimer final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void eventLoopTicksUntilInvalidated() {
        QObject target;
        int ticks = 0;
        const auto timer = RepeatingTimer::scheduledTimer(0ms, target, [&] { ++ticks; });
        QVERIFY(timer->isValid());
        QCOMPARE(ticks, 0);
        QCoreApplication::processEvents();
        QVERIFY(ticks > 0);
        const int before = ticks;
        QCoreApplication::processEvents();
        QVERIFY(ticks > before);

        timer->invalidate();
        QVERIFY(!timer->isValid());
        const int last = ticks;
        QCoreApplication::processEvents();
        QCOMPARE(ticks, last);
    }

    void freedTimerTicksNoMore() {
        QObject target;
        int ticks = 0;
        RepeatingTimer::scheduledTimer(0ms, target, [&] { ++ticks; }).reset();
        QCoreApplication::processEvents();
        QCOMPARE(ticks, 0);
    }

    void timerStopsWithItsTarget() {
        auto target = std::make_unique<QObject>();
        int ticks = 0;
        const auto timer = RepeatingTimer::scheduledTimer(0ms, *target, [&] { ++ticks; });
        target.reset();
        QCoreApplication::processEvents();
        QCOMPARE(ticks, 0);
    }

    void replacedTimerTicksNoMore() {
        QObject target;
        int first = 0;
        int second = 0;
        auto timer = RepeatingTimer::scheduledTimer(0ms, target, [&] { ++first; });
        timer = RepeatingTimer::scheduledTimer(0ms, target, [&] { ++second; });
        QCoreApplication::processEvents();
        QCOMPARE(first, 0);
        QVERIFY(second > 0);
    }

    void fireDeliversOneTick() {
        QObject target;
        int ticks = 0;
        const auto timer =
            RepeatingTimer::scheduledTimer(std::chrono::hours(1), target, [&] { ++ticks; });
        timer->fire();
        QCOMPARE(ticks, 1);
        timer->fire();
        QCOMPARE(ticks, 2);
        QVERIFY(timer->isValid());
    }

    void invalidTimerDoesNotFire() {
        QObject target;
        int ticks = 0;
        const auto timer =
            RepeatingTimer::scheduledTimer(std::chrono::hours(1), target, [&] { ++ticks; });
        timer->invalidate();
        timer->fire();
        QCOMPARE(ticks, 0);
    }

    void runningTimersAreThoseThatTick() {
        QObject target;
        const auto second = RepeatingTimer::scheduledTimer(std::chrono::seconds(1), target, [] {});
        auto hour = RepeatingTimer::scheduledTimer(std::chrono::hours(1), target, [] {});
        QCOMPARE(RepeatingTimer::running(), (QList<RepeatingTimer *>{second.get(), hour.get()}));
        QVERIFY(second->interval() == std::chrono::seconds(1));
        QVERIFY(hour->interval() == std::chrono::hours(1));

        second->invalidate();
        QCOMPARE(RepeatingTimer::running(), QList<RepeatingTimer *>{hour.get()});
        hour.reset();
        QCOMPARE(RepeatingTimer::running(), QList<RepeatingTimer *>());
    }

    void noTickWhileAnAlertIsUp() {
        QObject target;
        int ticks = 0;
        const auto timer = RepeatingTimer::scheduledTimer(0ms, target, [&] { ++ticks; });
        Alerts alerts;
        int before = -1;
        int after = -1;
        alerts.answer(u"OK"_s, [&] {
            before = ticks;
            QCoreApplication::processEvents();
            timer->fire();
            after = ticks;
        });
        platform::Alert(u"Wait"_s, {u"OK"_s}).runModal(nullptr);
        QVERIFY(alerts.verify());
        QCOMPARE(after, before);

        // The timer goes on once the event loop has its turn.
        QVERIFY(timer->isValid());
        QVERIFY(QTest::qWaitFor([&] { return ticks > after; }));
    }

    void noTickBetweenAnAnswerAndWhatIsDoneAboutIt() {
        QObject target;
        int ticks = 0;
        // Due in every turn of the event loop, also in the one in which the button is pressed.
        const auto timer = RepeatingTimer::scheduledTimer(0ms, target, [&] { ++ticks; });
        Alerts alerts;
        alerts.answer(u"Yes"_s);
        alerts.answer(u"OK"_s);
        int before = -1;
        int after = -1;
        QTimer::singleShot(0, &target, [&] {
            before = ticks;
            platform::Alert(u"Sure?"_s, {u"Yes"_s}).runModal(nullptr);
            timer->fire();
            platform::Alert(u"Done"_s, {u"OK"_s}).runModal(nullptr);
            timer->fire();
            after = ticks;
        });
        QVERIFY(QTest::qWaitFor([&] { return after >= 0; }));
        QVERIFY(alerts.verify());
        QCOMPARE(after, before);
        QVERIFY(QTest::qWaitFor([&] { return ticks > after; }));
    }

    void tickMayFreeItsOwnTimer() {
        QObject target;
        int ticks = 0;
        std::unique_ptr<RepeatingTimer> timer;
        timer = RepeatingTimer::scheduledTimer(0ms, target, [&ticks, &timer] {
            timer.reset();
            // What the callback has captured lives until it returns.
            ++ticks;
        });
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
        QVERIFY(!timer);
        QCOMPARE(ticks, 1);
    }

    void tickMayInvalidateItsOwnTimer() {
        QObject target;
        int ticks = 0;
        std::unique_ptr<RepeatingTimer> timer;
        timer = RepeatingTimer::scheduledTimer(0ms, target, [&] {
            ++ticks;
            timer->invalidate();
        });
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
        QCOMPARE(ticks, 1);
    }

    void exceptionInATickIsLoggedAndTheClockGoesOn() {
        QObject target;
        int ticks = 0;
        const auto timer = RepeatingTimer::scheduledTimer(std::chrono::hours(1), target, [&] {
            ++ticks;
            throw std::runtime_error("tick\nfailed");
        });
        StandardError standardError;
        timer->fire();
        QCOMPARE(standardError.lines().size(), 1);
        QVERIFY2(standardError.lines().constFirst().contains(u"tick failed"),
                 qUtf8Printable(standardError.lines().constFirst()));
        QVERIFY(timer->isValid());
        timer->fire();
        QCOMPARE(ticks, 2);
        QCOMPARE(standardError.lines().size(), 2);
    }
};

ZORVAN_TEST(tst_repeatingtimer)
#include "tst_repeatingtimer.moc"
