#include "platform/window.h"

#include <QAbstractButton>
#include <QCloseEvent>
#include <QKeyEvent>

#include "platform/eventloop.h"

namespace platform {

Window::Window(WindowDelegate &delegate) : delegate_(delegate) {}

void Window::closeUnasked() {
    unasked_ = true;
    close();
    unasked_ = false;
}

bool Window::mayClose() {
    bool mayClose = false;
    callFromEventLoop([&] { mayClose = delegate_.windowShouldClose(); });
    return mayClose;
}

void Window::showEvent(QShowEvent *event) {
    QMainWindow::showEvent(event);
    // Otherwise a style may hide the focus until Tab is pressed.
    setAttribute(Qt::WA_KeyboardFocusChange);
}

void Window::closeEvent(QCloseEvent *event) {
    event->setAccepted(unasked_ || mayClose());
    if (event->isAccepted()) {
        delegate_.windowDidClose();
    }
}

void Window::keyPressEvent(QKeyEvent *event) {
    if (event->isAutoRepeat()) {
        return;
    }
    if (event->key() == Qt::Key_Escape && property("escapeCloses").toBool()) {
        close();
        return;
    }
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        // A button with keys of its own is spared: a Return too many must not press it.
        if (auto *button = qobject_cast<QAbstractButton *>(focusWidget());
            button != nullptr && !button->property("keys").isValid()) {
            button->click();
            return;
        }
    }
    QMainWindow::keyPressEvent(event);
}

}  // namespace platform
