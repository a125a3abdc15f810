#pragma once

#include <QList>

namespace platform {
class RepeatingTimer;
}

/// The clocks of the process, and time that passes without being waited for.
namespace clocks {

/// The program's timers that tick once a second.
QList<platform::RepeatingTimer *> running();
/// A second goes by: each of them ticks.
void passSecond();

}  // namespace clocks
