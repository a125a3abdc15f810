#include <stdexcept>

#include <QTest>
#include <QTimer>

#include "support/alerts.h"
#include "support/standarderror.h"
#include "support/testmain.h"
#include "system/repeatingtimer.h"
#include "windowing/alert.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

using platform::RepeatingTimer;

namespace {

class Target final : public QObject {
 public:
    /// The type of the timer whose tick is being delivered.
    std::optional<Qt::TimerType> tickingType() const {
        const auto *timer = qobject_cast<const QTimer *>(sender());
        return timer == nullptr ? std::nullopt : std::optional(timer->timerType());
    }
};

}  // namespace

class tst_repeatingtimer final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void init() { ticks_ = 0; }

    void eventLoopTicksUntilInvalidated() {
        const auto timer = start(0ms);
        QVERIFY(timer->isValid());
        QCOMPARE(ticks_, 0);
        QVERIFY(ticksInTheEventLoop());
        QVERIFY(ticksInTheEventLoop());
        timer->invalidate();
        QVERIFY(!timer->isValid());
        QVERIFY(!ticksInTheEventLoop());
    }

    void freedTimerTicksNoMore() {
        start(0ms).reset();
        QVERIFY(!ticksInTheEventLoop());
    }

    void timerStopsWithItsTarget() {
        auto target = std::make_unique<QObject>();
        const auto timer = RepeatingTimer::scheduledTimer(0ms, *target, [this] { ++ticks_; });
        target.reset();
        QVERIFY(!ticksInTheEventLoop());
    }

    // A coarse one may be late by a twentieth of its interval.
    void timerIsPrecise() {
        std::optional<Qt::TimerType> type;
        const auto timer =
            RepeatingTimer::scheduledTimer(0ms, target_, [&] { type = target_.tickingType(); });
        QCoreApplication::processEvents();
        QCOMPARE(type, Qt::PreciseTimer);
    }

    void fireDeliversOneTickOfAValidTimer() {
        const auto timer = start(1h);
        timer->fire();
        timer->fire();
        QCOMPARE(ticks_, 2);
        QVERIFY(timer->isValid());
        timer->invalidate();
        timer->fire();
        QCOMPARE(ticks_, 2);
    }

    void runningTimersAreThoseThatTick() {
        const auto second = start(1s);
        auto hour = start(1h);
        QCOMPARE(RepeatingTimer::running(), (QList<RepeatingTimer *>{second.get(), hour.get()}));
        QCOMPARE(second->interval(), std::chrono::milliseconds(1s));
        QCOMPARE(hour->interval(), std::chrono::milliseconds(1h));
        second->invalidate();
        QCOMPARE(RepeatingTimer::running(), QList<RepeatingTimer *>{hour.get()});
        hour.reset();
        QCOMPARE(RepeatingTimer::running(), QList<RepeatingTimer *>());
    }

    void noTickFromAnAlertUntilWhatIsDoneAboutItsAnswer() {
        // Due in every turn of the event loop, also in the one in which a button is pressed.
        const auto timer = start(0ms);
        Alerts alerts;
        alerts.answer(u"Yes"_s);
        alerts.answer(u"OK"_s);
        std::optional<int> before;
        std::optional<int> after;
        QTimer::singleShot(0, &target_, [&] {
            before = ticks_;
            platform::Alert(u"Sure?"_s, {u"Yes"_s}).runModal(nullptr);
            timer->fire();
            platform::Alert(u"Done"_s, {u"OK"_s}).runModal(nullptr);
            timer->fire();
            after = ticks_;
        });
        QVERIFY(QTest::qWaitFor([&] { return after.has_value(); }));
        QVERIFY(alerts.verify());
        QCOMPARE(after, before);
        // The timer goes on once the event loop has its turn.
        QVERIFY(QTest::qWaitFor([&] { return ticks_ > after; }));
    }

    void tickMayFreeItsOwnTimer() {
        std::unique_ptr<RepeatingTimer> timer;
        timer = RepeatingTimer::scheduledTimer(0ms, target_, [this, &timer] {
            timer.reset();
            // What the callback has captured lives until it returns.
            ++ticks_;
        });
        QVERIFY(ticksInTheEventLoop());
        QVERIFY(!ticksInTheEventLoop());
        QCOMPARE(ticks_, 1);
    }

    void exceptionInATickIsLoggedAndTheClockGoesOn() {
        const auto timer = RepeatingTimer::scheduledTimer(
            1h, target_, [] { throw std::runtime_error("tick\nfailed"); });
        StandardError standardError;
        timer->fire();
        timer->fire();
        QVERIFY(timer->isValid());
        QCOMPARE(standardError.lines(), QStringList(2, u"Uncaught exception: tick failed"_s));
    }

 private:
    std::unique_ptr<RepeatingTimer> start(std::chrono::milliseconds interval) {
        return RepeatingTimer::scheduledTimer(interval, target_, [this] { ++ticks_; });
    }

    bool ticksInTheEventLoop() {
        const int before = ticks_;
        QCoreApplication::processEvents();
        return ticks_ > before;
    }

    Target target_;
    int ticks_ = 0;
};

ZORVAN_TEST(tst_repeatingtimer)
#include "tst_repeatingtimer.moc"
