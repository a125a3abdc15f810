#pragma once

class QWidget;

namespace platform {

/// Gives a window the keyboard, above all others, also where it was minimised.
void bringToFront(QWidget &window);

}  // namespace platform
