#pragma once

#include <QKeySequence>
#include <QList>

class QAbstractButton;
class QWidget;

namespace platform {

/// Lets keys press `button` from anywhere in its window, while it is visible and enabled. A key
/// that is held down presses once.
void addShortcuts(QAbstractButton &button, const QList<QKeySequence> &keys);

/// Adds to every button below `root` the keys that its property "shortcuts" lists, separated by
/// spaces.
void connectShortcuts(const QWidget &root);

}  // namespace platform
