#pragma once

#include <functional>

class QWidget;

namespace platform::look {

/// Gives a window its text sizes and its spacing, as its layout asks by property, and makes every
/// button large enough to hit. The same however often it is called.
void polish(QWidget &window);

/// Polishes a window now, and again whenever its font, its style or the resolution of its screen
/// has changed. Each time after the first, `polishedAgain` is called.
void keepPolished(QWidget &window, std::function<void()> polishedAgain = {});

}  // namespace platform::look
