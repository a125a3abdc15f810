#pragma once

#include <functional>

class QWidget;

namespace platform::look {

/// Sets the text sizes and the spacing that a window's layout asks for by property, and makes every
/// button large enough to hit. Calling it again has the same result.
void polish(QWidget &window);

/// Polishes a window now, and again whenever its font, its style or the resolution of its screen
/// changes. `polishedAgain` is called each time but the first.
void keepPolished(QWidget &window, std::function<void()> polishedAgain = {});

}  // namespace platform::look
