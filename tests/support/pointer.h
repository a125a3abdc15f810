#pragma once

#include <algorithm>

#include <QApplication>
#include <QCursor>
#include <QScreen>
#include <QTest>
#include <QWidget>
#include <QWindow>

namespace pointer {

/// Moves the pointer to the middle of a control, as the mouse does; ends the test program if it
/// does not arrive.
inline void moveTo(const QWidget &control) {
    const QWidget &window = *control.window();
    const QPoint spot = control.mapTo(&window, control.rect().center());
    const auto arrives = [&] {
#ifdef Q_OS_WIN
        // Windows tells where its own pointer is, whatever a test pretends.
        QCursor::setPos(window.mapToGlobal(spot));
#endif
        QTest::mouseMove(window.windowHandle(), spot - QPoint(1, 1));
        QTest::mouseMove(window.windowHandle(), spot);
        return control.underMouse();
    };
    if (!QTest::qWaitFor(arrives)) {
        qFatal("The pointer does not arrive at \"%s\"", qUtf8Printable(control.objectName()));
    }
}

/// Takes the pointer off the windows that a test is about to open.
inline void putAside() {
#ifdef Q_OS_WIN
    QCursor::setPos(QGuiApplication::primaryScreen()->geometry().bottomRight());
    const auto hasLeft = [] {
        return std::ranges::none_of(QApplication::allWidgets(), &QWidget::underMouse);
    };
    if (!QTest::qWaitFor(hasLeft)) {
        qFatal("The pointer does not leave the windows");
    }
#endif
}

}  // namespace pointer
