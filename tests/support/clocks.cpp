#include "support/clocks.h"

#include "system/repeatingtimer.h"

using platform::RepeatingTimer;

namespace clocks {

QList<RepeatingTimer *> running() {
    QList<RepeatingTimer *> running = RepeatingTimer::running();
    running.removeIf(
        [](const RepeatingTimer *timer) { return timer->interval() != std::chrono::seconds(1); });
    return running;
}

void passSecond() {
    for (RepeatingTimer *clock : running()) {
        // The tick of one clock may free another.
        if (RepeatingTimer::running().contains(clock)) {
            clock->fire();
        }
    }
}

}  // namespace clocks
