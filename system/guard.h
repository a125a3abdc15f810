#pragma once

#include <functional>

namespace platform {

/// Runs what the event loop has called for. An exception that escapes is logged as one line and
/// goes no further: the toolkit's own frames are not built to be unwound.
void runGuarded(const std::function<void()> &body);

}  // namespace platform
