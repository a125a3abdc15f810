#include "look/focus.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

namespace platform::look {

namespace {

/// The application's property. Qt's own attribute for this changes with each move of the focus, in
/// a way that differs from one version to the next.
constexpr auto isShown = "focusIsShown";

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

bool showsFocus(const QWidget *widget) {
    return widget != nullptr && widget->hasFocus() && qApp->property(isShown).toBool();
}

bool FocusVisibility::eventFilter(QObject *, QEvent *event) {
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
        default:
            break;
    }
    return false;
}

void FocusVisibility::setShown(bool shown) {
    const bool before = qApp->property(isShown).toBool();
    if (before == shown) {
        return;
    }
    qApp->setProperty(isShown, shown);
    for (QWidget *window : QApplication::topLevelWidgets()) {
        window->update();
    }
}

}  // namespace platform::look
