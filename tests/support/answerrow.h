#pragma once

#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>
#include <QWindow>

#include "controls/actionrow.h"
#include "controls/rowbutton.h"
#include "controls/statusicon.h"
#include "controls/textlabel.h"

/// A window with an answer's row and another control, which has the focus.
struct AnswerRow {
    QWidget window;
    platform::ActionRow row{&window};
    platform::RowButton button{QStringLiteral("A"), &row};
    platform::TextLabel text{&row};
    platform::StatusIcon icon{&row};
    QPushButton another{QStringLiteral("another"), &window};
    int clicks = 0;

    /// Shows the window, in front.
    explicit AnswerRow(bool badge = true) {
        button.setProperty("badge", badge);
        auto *inRow = new QHBoxLayout(&row);
        inRow->addWidget(&button);
        inRow->addWidget(&text, 1);
        inRow->addWidget(&icon);
        auto *inWindow = new QVBoxLayout(&window);
        inWindow->addWidget(&row);
        inWindow->addWidget(&another);
        text.setStringValue(QStringLiteral("an answer"));
        icon.setProperty("label", QString());
        QObject::connect(&button, &QAbstractButton::clicked, &window, [this] { ++clicks; });
        window.resize(400, 160);
        another.setFocus();
        window.show();
        window.activateWindow();
        if (!QTest::qWaitForWindowActive(&window)) {
            qFatal("The row's window is not active");
        }
    }

    /// Sends a key to the window as the keyboard does.
    void type(Qt::Key key) { QTest::keyClick(window.windowHandle(), key); }

    /// What the mouse does on the middle of a control.
    void mouse(QTest::MouseAction action, const QWidget &on,
               Qt::MouseButton with = Qt::LeftButton) {
        QTest::mouseEvent(action, window.windowHandle(), with, {},
                          on.mapTo(&window, on.rect().center()));
    }
    void click(const QWidget &on) { mouse(QTest::MouseClick, on); }
};
