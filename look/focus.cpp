#include "look/focus.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

namespace platform::look {

namespace {

/// Whether the key does nothing by itself: it may belong to the desktop, or to a click.
bool isModifier(const QKeyEvent &press) {
    switch (press.key()) {
        case Qt::Key_Shift:
        case Qt::Key_Control:
        case Qt::Key_Alt:
        case Qt::Key_AltGr:
        case Qt::Key_Meta:
        case Qt::Key_Super_L:
        case Qt::Key_Super_R:
        case Qt::Key_CapsLock:
        case Qt::Key_NumLock:
            return true;
        default:
            return false;
    }
}

}  // namespace

bool showsFocus(const QWidget &widget) {
    return widget.hasFocus() && widget.window()->testAttribute(Qt::WA_KeyboardFocusChange);
}

bool FocusVisibility::eventFilter(QObject *watched, QEvent *event) {
    switch (event->type()) {
        // A key that triggers a shortcut is not seen as pressed.
        case QEvent::ShortcutOverride:
        case QEvent::KeyPress:
            if (!isModifier(static_cast<const QKeyEvent &>(*event))) {
                setShown(true);
            }
            break;
        case QEvent::MouseButtonPress:
        case QEvent::TabletPress:
        case QEvent::TouchBegin:
            setShown(false);
            break;
        case QEvent::Show:
            if (auto *widget = qobject_cast<QWidget *>(watched);
                widget != nullptr && widget->isWindow()) {
                widget->setAttribute(Qt::WA_KeyboardFocusChange, shown_);
            }
            break;
        default:
            break;
    }
    return false;
}

void FocusVisibility::setShown(bool shown) {
    if (shown_ == shown) {
        return;
    }
    shown_ = shown;
    for (QWidget *window : QApplication::topLevelWidgets()) {
        window->setAttribute(Qt::WA_KeyboardFocusChange, shown);
        window->update();
    }
}

}  // namespace platform::look
