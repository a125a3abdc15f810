#pragma once

#include <QKeySequence>
#include <QList>

class QAbstractButton;
class QWidget;

namespace platform {

/// Lets keys press `button` from anywhere in its window, while it is visible and enabled. A key
/// that is held down presses once.
void addKeys(QAbstractButton &button, const QList<QKeySequence> &keys);

/// Adds to every button below `root` the keys that its property "keys" lists, parted by blanks.
void connectKeys(const QWidget &root);

}  // namespace platform
