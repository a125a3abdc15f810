#include "windowing/window.h"

#include <algorithm>

#include <QAbstractButton>
#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLayout>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>

#include "controls/scrollarea.h"
#include "controls/section.h"
#include "look/layoutproperties.h"
#include "look/metrics.h"
#include "system/guard.h"
#include "windowing/bringtofront.h"

namespace platform {

namespace {

/// Scrolls to the focused control and, as far as there is room, to the top of its section, which
/// says what it is about.
void scrollTo(QScrollArea &area, QWidget *focus) {
    QWidget *content = area.widget();
    // With the mouse it is seen already, and must not move before the button is released.
    if (!content->isAncestorOf(focus) || QApplication::mouseButtons() != Qt::NoButton) {
        return;
    }
    for (const QWidget *parent = focus; parent != content; parent = parent->parentWidget()) {
        if (qobject_cast<const Section *>(parent) != nullptr) {
            const QPoint top = parent->mapTo(content, QPoint(0, 0));
            area.ensureVisible(top.x(), top.y());
        }
    }
    area.ensureWidgetVisible(focus);
}

}  // namespace

Window::Window(WindowDelegate &delegate) : delegate_(delegate) {}

QList<QPointer<Window>> Window::onScreen() {
    QList<QPointer<Window>> windows;
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (auto *window = qobject_cast<Window *>(widget);
            window != nullptr && window->isVisible()) {
            windows << window;
        }
    }
    std::ranges::sort(windows, {}, [](const Window *window) { return window->opened_; });
    return windows;
}

void Window::closeUnasked() {
    unasked_ = true;
    close();
    unasked_ = false;
}

bool Window::mayClose() {
    bool mayClose = false;
    runGuarded([&] { mayClose = delegate_.windowShouldClose(); });
    return mayClose;
}

Window *Window::inFront() {
    const auto turn = [](const Window *window) {
        return window->isMinimized() ? -1 : window->turn_;
    };
    const QList<QPointer<Window>> windows = onScreen();
    const auto front = std::ranges::max_element(windows, {}, turn);
    return front == windows.end() ? nullptr : *front;
}

void Window::comeForward() {
    if (hasBeenActive() && !isActiveWindow()) {
        bringToFront(*this);
    }
}

void Window::fitToScreen() {
    // A window that was shown before scrolls already.
    if (scrollArea() == nullptr && isLargerThan(roomOnScreen())) {
        letContentScroll();
        resize(scrolledSize());
    }
}

void Window::fitToContent() {
    const QSize before = size();
    const bool untouched = before == fitted_;
    const bool keepsSize = isMaximized() || isFullScreen();
    layout()->invalidate();
    if (scrollArea() == nullptr && isLargerThan(keepsSize ? before : roomOnScreen())) {
        letContentScroll();
    }
    if (keepsSize) {
        return;
    }
    if (scrollArea() != nullptr) {
        resize(scrolledSize());
    } else {
        adjustSize();
    }
    fitted_ = size();
    if (!untouched) {
        resize(fitted_.expandedTo(before));
    }
}

QScrollArea *Window::scrollArea() const {
    return qobject_cast<QScrollArea *>(centralWidget());
}

QSize Window::neededSize() const {
    const QScrollArea *area = scrollArea();
    if (area == nullptr) {
        return sizeHint();
    }
    layout()->invalidate();
    return sizeHint() - area->sizeHint() + area->widget()->sizeHint();
}

QSize Window::roomOnScreen() const {
    const QSize frame = (look::unit(*this) * QSizeF(2, 4)).toSize();
    return screen()->availableSize() - frame;
}

bool Window::isLargerThan(const QSize &room) const {
    const QSize needed = neededSize();
    return needed.width() > room.width() || needed.height() > room.height();
}

QSize Window::scrolledSize() const {
    const QScrollArea &area = *scrollArea();
    const QSize bars(area.verticalScrollBar()->sizeHint().width(),
                     area.horizontalScrollBar()->sizeHint().height());
    const QSize room = roomOnScreen();
    return isLargerThan(room) ? (neededSize() + bars).boundedTo(room) : neededSize();
}

void Window::letContentScroll() {
    const QPointer<QWidget> focused = focusWidget();
    auto *area = new ScrollArea;
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidgetResizable(true);
    area->setWidget(takeCentralWidget());
    setCentralWidget(area);
    for (QScrollBar *bar : {area->verticalScrollBar(), area->horizontalScrollBar()}) {
        bar->setAccessibleName(windowTitle());
    }
    // By itself the area does this only if Tab moves the focus.
    connect(qApp, &QApplication::focusChanged, area, [area](QWidget *, QWidget *focus) {
        // The focus is null if the focused control was freed, and the area may be gone by then.
        if (focus != nullptr) {
            scrollTo(*area, focus);
        }
    });
    if (focused != nullptr) {
        // The focus was lost in the move.
        focused->setFocus();
    }
}

void Window::showEvent(QShowEvent *event) {
    QMainWindow::showEvent(event);
    if (!event->spontaneous()) {
        fitted_ = size();
        takeTurn();
        opened_ = opened_ == 0 ? turn_ : opened_;
    }
}

void Window::takeTurn() {
    static int turns = 0;
    turn_ = ++turns;
}

void Window::changeEvent(QEvent *event) {
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
        hasBeenActive_ = true;
        takeTurn();
    }
    QMainWindow::changeEvent(event);
}

void Window::resizeEvent(QResizeEvent *event) {
    QMainWindow::resizeEvent(event);
    // A tiling window manager ignores how small a window can be.
    if (scrollArea() == nullptr && size().expandedTo(minimumSize()) != size()) {
        letContentScroll();
    }
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
    if (event->key() == Qt::Key_Escape && property(layoutproperties::escapeCloses).toBool()) {
        close();
        return;
    }
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        // Not a button with keys of its own: one Return too many must not press it.
        if (auto *button = qobject_cast<QAbstractButton *>(focusWidget());
            button != nullptr && !button->property(layoutproperties::shortcuts).isValid()) {
            button->click();
            return;
        }
    }
    QMainWindow::keyPressEvent(event);
}

}  // namespace platform
