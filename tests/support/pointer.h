#pragma once

#include <QTest>
#include <QWidget>
#include <QWindow>

namespace pointer {

/// Moves the pointer to the middle of a control, as the mouse does; ends the test program if it
/// does not arrive.
inline void moveTo(const QWidget &control) {
    const QWidget &window = *control.window();
    const QPoint spot = control.mapTo(&window, control.rect().center());
    QTest::mouseMove(window.windowHandle(), spot - QPoint(1, 1));
    QTest::mouseMove(window.windowHandle(), spot);
    if (!QTest::qWaitFor([&] { return control.underMouse(); })) {
        qFatal("The pointer does not arrive at \"%s\"", qUtf8Printable(control.objectName()));
    }
}

}  // namespace pointer
