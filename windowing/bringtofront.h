#pragma once

class QWidget;

namespace platform {

/// Raises a window above all others and gives it the keyboard, even if it was minimised.
void bringToFront(QWidget &window);

}  // namespace platform
