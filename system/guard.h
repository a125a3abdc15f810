#pragma once

#include <functional>

namespace platform {

/// Runs code that the event loop calls. An exception that escapes is logged on one line and goes
/// no further: Qt's own frames are not built to be unwound.
void runGuarded(const std::function<void()> &body);

}  // namespace platform
