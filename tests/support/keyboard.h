#pragma once

#include <QTest>
#include <QWidget>

namespace keyboard {

/// Presses a key that does nothing: from then on the focus is shown.
inline void use(QWidget &window) {
    QTest::keyClick(&window, Qt::Key_F24);
}

}  // namespace keyboard
