#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include <QList>
#include <QTimer>

namespace platform {

/// A timer that ticks at a fixed interval on the event loop until it is invalidated or freed.
/// Ticks that fall due during a TickHold are dropped, not made up for. A tick may free its own
/// timer.
class RepeatingTimer final {
 public:
    /// Starts a timer that runs `tick` for as long as `target` lives.
    static std::unique_ptr<RepeatingTimer> scheduledTimer(std::chrono::milliseconds interval,
                                                          QObject &target,
                                                          std::function<void()> tick);
    ~RepeatingTimer();
    RepeatingTimer(const RepeatingTimer &) = delete;
    RepeatingTimer &operator=(const RepeatingTimer &) = delete;

    /// Every valid timer of the process. Tests fire them to let time pass.
    static QList<RepeatingTimer *> running();

    /// Stops the timer for good.
    void invalidate();
    bool isValid() const;
    std::chrono::milliseconds interval() const;
    /// Delivers one tick, as the event loop does when one falls due.
    void fire();

 private:
    explicit RepeatingTimer(std::function<void()> tick);

    QTimer timer_;
    std::function<void()> tick_;
};

/// Keeps every RepeatingTimer from ticking while it lives, and then until control is back in the
/// event loop, so that no tick comes between the user's answer and its consequences.
class TickHold final {
 public:
    TickHold();
    ~TickHold();
    TickHold(const TickHold &) = delete;
    TickHold &operator=(const TickHold &) = delete;
};

}  // namespace platform
