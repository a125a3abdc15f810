#include "monkey/hands.h"

#include <QAbstractButton>
#include <QApplication>
#include <QTest>
#include <QWindow>

#include "controls/messagebox.h"
#include "monkey/dice.h"
#include "monkey/journal.h"
#include "monkey/seam.h"
#include "windowing/window.h"

using namespace Qt::StringLiterals;

QString Hands::nameOf(const QWidget &widget) {
    const auto *button = qobject_cast<const QAbstractButton *>(&widget);
    const QString text = button == nullptr ? widget.windowTitle() : button->text();
    return u"%1 \"%2\" %3"_s.arg(QLatin1StringView(widget.metaObject()->className()),
                                 widget.objectName(), text);
}

QList<QWidget *> Hands::windows() {
    QList<QWidget *> windows;
    for (const QWindow *handle : QGuiApplication::topLevelWindows()) {
        QWidget *widget = handle->isVisible() ? QWidget::find(handle->winId()) : nullptr;
        if (qobject_cast<platform::Window *>(widget) != nullptr ||
            qobject_cast<platform::MessageBox *>(widget) != nullptr) {
            windows << widget;
        }
    }
    return windows;
}

QList<QWidget *> Hands::windowsOf(const QString &layout) {
    QList<QWidget *> found = windows();
    found.removeIf([&layout](const QWidget *window) { return window->objectName() != layout; });
    return found;
}

QWidget &Hands::anyWindow() {
    QWidget *active = QApplication::activeWindow();
    const QList<QWidget *> all = windows();
    return active != nullptr && all.contains(active) && !dice_.oneIn(4) ? *active
                                                                        : *dice_.pick(all);
}

QWidget &Hands::activated(QWidget &window) {
    if (!window.isActiveWindow()) {
        window.activateWindow();
        QCoreApplication::processEvents();
    }
    return window;
}

void Hands::click(QWidget &window, const QPoint &at, bool twice) {
    if (twice) {
        QTest::mouseDClick(window.windowHandle(), Qt::LeftButton, {}, at);
    } else {
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, at);
    }
}

void Hands::clickAnywhere(QWidget &window) {
    const QPoint at{1 + dice_.below(window.width() - 1), 1 + dice_.below(window.height() - 1)};
    journal_.say(u"clicks at %1, %2 of %3"_s.arg(at.x()).arg(at.y()).arg(nameOf(window)));
    click(window, at);
}

void Hands::clickControl(QWidget &control) {
    const QRect place = control.visibleRegion().boundingRect();
    if (place.isEmpty()) {
        // Scrolled out of sight.
        return;
    }
    const QPoint at = dice_.oneIn(2) ? place.center()
                                     : place.topLeft() + QPoint{dice_.below(place.width()),
                                                                dice_.below(place.height())};
    const bool twice = dice_.oneIn(20);
    journal_.say(u"clicks %1%2 of %3"_s.arg(nameOf(control), twice ? u" twice"_s : QString(),
                                            nameOf(*control.window())));
    click(*control.window(), control.mapTo(control.window(), at), twice);
}

void Hands::type(QKeyCombination key, bool held) {
    journal_.say(u"types %1%2"_s.arg(QKeySequence(key).toString(), held ? u", held"_s : QString()));
    const char letter = QTest::keyToAscii(key.key());
    const QString text = letter == 0 ? QString() : QString(QLatin1Char(letter));
    if (key == QKeyCombination(Qt::Key_Escape)) {
        seam_.expect(Seam::Closing::Auxiliary);
    }
    press(key, text, false);
    if (held) {
        for (int repetition = 0; repetition < 3; ++repetition) {
            press(key, text, true);
        }
    }
    if (QWindow *last = QGuiApplication::focusWindow()) {
        QTest::simulateEvent(last, false, key.key(), key.keyboardModifiers(), text, false);
    }
    seam_.expect(Seam::Closing::Nothing);
}

void Hands::close(QWidget &window) {
    seam_.expect(Seam::Closing::Anything);
    window.close();
    seam_.expect(Seam::Closing::Nothing);
}

void Hands::press(QKeyCombination key, const QString &text, bool repetition) {
    // A held key goes on to the window that has come to the front.
    if (QWindow *window = QGuiApplication::focusWindow()) {
        QTest::simulateEvent(window, true, key.key(), key.keyboardModifiers(), text, repetition);
    }
}

void Hands::activateLikeAWindowManager() {
    used_.removeIf(
        [](const QPointer<QWidget> &window) { return window.isNull() || !window->isVisible(); });
    QWidget *active = QApplication::activeWindow();
    const QList<QWidget *> open = windows();
    if ((active == nullptr || !active->isVisible()) && !open.isEmpty()) {
        active = used_.isEmpty() ? open.last() : used_.last().data();
        if (active->windowHandle() == QGuiApplication::focusWindow()) {
            // The window got the keyboard while a menu was closing, and Qt missed that: the
            // keyboard has to go elsewhere first.
            QWindow elsewhere;
            elsewhere.show();
            QCoreApplication::processEvents();
        }
        activated(*active);
    }
    used_.removeAll(active);
    used_ << active;
}
