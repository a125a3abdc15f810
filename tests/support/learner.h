#pragma once

#include <array>

#include <QAbstractButton>
#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QWindow>

#include "support/desk.h"

/// What a learner does with a window, independent of the names of its controls.
namespace learner {

/// The button with that action; ends the test program if there is none.
inline QAbstractButton &button(const QWidget *window, const QString &action) {
    if (window != nullptr) {
        for (QAbstractButton *button : window->findChildren<QAbstractButton *>()) {
            if (button->property("action").toString() == action) {
                return *button;
            }
        }
    }
    qFatal("No button asks for \"%s\"", qUtf8Printable(action));
}

inline void press(const QWidget *window, const QString &action) {
    QTest::mouseClick(&button(window, action), Qt::LeftButton);
}

/// The item of the window's menu bar with that action; ends the test program if there is none.
inline QAction &menuItem(const platform::Window *window, const QString &action) {
    if (window != nullptr) {
        for (const QAction *menu : window->menuBar()->actions()) {
            for (QAction *item : menu->menu()->actions()) {
                if (item->property("action").toString() == action) {
                    return *item;
                }
            }
        }
    }
    qFatal("No menu item asks for \"%s\"", qUtf8Printable(action));
}

inline void pick(const platform::Window *window, const QString &action) {
    menuItem(window, action).trigger();
}

/// Presses a key with that window in front.
inline void type(platform::Window *window, QKeyCombination key) {
    window->activateWindow();
    if (!QTest::qWaitForWindowActive(window)) {
        qFatal("\"%s\" does not come to the front", qUtf8Printable(window->objectName()));
    }
    QTest::keyClick(window->windowHandle(), key.key(), key.keyboardModifiers());
}

/// Answers all questions of quiz 5 correctly. They have to come in ascending order.
inline void passStructure(const platform::Window *quiz) {
    constexpr std::array rightAnswers{1, 2, 1, 3, 3, 1, 1};
    for (std::size_t i = 0; i < rightAnswers.size(); ++i) {
        desk::click(quiz, QStringLiteral("btnAnswer%1").arg(rightAnswers.at(i)));
        if (i + 1 < rightAnswers.size()) {
            desk::click(quiz, QStringLiteral("btnNextQuestion"));
        }
    }
}

}  // namespace learner
