#pragma once

#include <QList>

namespace platform {
class RepeatingTimer;
}

/// The clocks of the process, and a way to let time pass without waiting.
namespace clocks {

/// The program's timers that tick once a second.
QList<platform::RepeatingTimer *> running();
/// Lets a second pass: each of these timers ticks.
void passSecond();

}  // namespace clocks
