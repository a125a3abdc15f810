#include "windowing/bringtofront.h"

#include <chrono>
#include <memory>

#include <QApplication>
#include <QTimer>
#include <QWidget>
#include <QWindow>

namespace platform {

void bringToFront(QWidget &window) {
    static QMetaObject::Connection pending;
    QObject::disconnect(pending);
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.raise();
    const auto ask = [&window](const QWindow *focused) {
        window.activateWindow();
        if (focused != nullptr) {
            // A request gets lost now and then and is then repeated. Once one has been heard, it is
            // not: the user may have turned to another window.
            constexpr std::chrono::milliseconds untilItIsHeard(300);
            const auto heard = std::make_shared<bool>(false);
            const auto listening = QObject::connect(
                qApp, &QGuiApplication::focusWindowChanged, &window,
                [heard, &window](const QWindow *now) {
                    *heard = *heard || (now != nullptr && now == window.windowHandle());
                });
            QTimer::singleShot(untilItIsHeard, &window, [heard, listening, focused, &window] {
                QObject::disconnect(listening);
                if (!*heard && QGuiApplication::focusWindow() == focused) {
                    window.activateWindow();
                }
            });
        }
    };
    const auto isPopup = [](const QWindow *focused) { return focused->type() == Qt::Popup; };
    const QWindow *before = QGuiApplication::focusWindow();
    if (before == nullptr || !isPopup(before)) {
        ask(before);
    }
    if (before == nullptr || isPopup(before)) {
        // Wayland ignores requests for the keyboard while a menu closes.
        pending = QObject::connect(qApp, &QGuiApplication::focusWindowChanged, &window,
                                   [ask, isPopup](const QWindow *now) {
                                       if (now != nullptr && !isPopup(now)) {
                                           QObject::disconnect(pending);
                                           ask(now);
                                       }
                                   });
    }
}

}  // namespace platform
