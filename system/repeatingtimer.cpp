#include "system/repeatingtimer.h"

#include <utility>

#include <QCoreApplication>

#include "system/guard.h"

namespace platform {

namespace {

int &holds() {
    static int holds = 0;
    return holds;
}

QList<RepeatingTimer *> &timers() {
    // Never freed: a timer may be destroyed as late as the static objects that own it.
    // NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): this file's alone
    static auto &timers = *new QList<RepeatingTimer *>;
    return timers;
}

}  // namespace

TickHold::TickHold() {
    ++holds();
}

TickHold::~TickHold() {
    QMetaObject::invokeMethod(
        qApp, [] { --holds(); }, Qt::QueuedConnection);
}

std::unique_ptr<RepeatingTimer> RepeatingTimer::scheduledTimer(std::chrono::milliseconds interval,
                                                               QObject &target,
                                                               std::function<void()> tick) {
    std::unique_ptr<RepeatingTimer> timer(new RepeatingTimer(std::move(tick)));
    timer->timer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer->timer_, &QTimer::timeout, &target,
                     [self = timer.get()] { self->fire(); });
    timer->timer_.start(interval);
    return timer;
}

RepeatingTimer::RepeatingTimer(std::function<void()> tick) : tick_(std::move(tick)) {
    timers() << this;
}

RepeatingTimer::~RepeatingTimer() {
    timers().removeOne(this);
}

QList<RepeatingTimer *> RepeatingTimer::running() {
    QList<RepeatingTimer *> running = timers();
    running.removeIf([](const RepeatingTimer *timer) { return !timer->isValid(); });
    return running;
}

void RepeatingTimer::invalidate() {
    timer_.stop();
}

bool RepeatingTimer::isValid() const {
    return timer_.isActive();
}

std::chrono::milliseconds RepeatingTimer::interval() const {
    return timer_.intervalAsDuration();
}

void RepeatingTimer::fire() {
    if (!isValid() || holds() > 0) {
        return;
    }
    // A copy, because the tick may free this timer.
    runGuarded(std::function<void()>(tick_));
}

}  // namespace platform
