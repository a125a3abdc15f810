#pragma once

#include <QList>
#include <QString>
#include <QStringView>

#include "windowing/window.h"

class QAction;

/// The windows on screen, as a learner sees and uses them.
namespace desk {

/// The open windows of that layout, in no particular order.
QList<platform::Window *> windows(const QString &layout);
/// The one open window of that layout; null, with a line in the test's output, if there is none
/// or more than one.
platform::Window *window(const QString &layout);

/// The control of that name; ends the test program if there is none.
template <class Control = QWidget>
Control &control(const QWidget *window, QStringView name);

/// The text of the label of that name.
QString text(const QWidget *window, const QString &name);
/// Whether the control of that name is shown, or would be if its window were.
bool isShown(const QWidget *window, const QString &name);
/// Where a control is in a widget around it.
QRect placeIn(const QWidget &around, const QWidget &control);
/// Presses the button of that name with the mouse.
void click(const QWidget *window, const QString &name);

/// Closes all windows without asking, frees what they held and forgets the attempt.
void clear();
/// Frees the controllers that are no longer held.
void freeUnused();

}  // namespace desk

template <class Control>
Control &desk::control(const QWidget *window, QStringView name) {
    auto *found = window == nullptr ? nullptr : window->findChild<Control *>(name.toString());
    if (found == nullptr) {
        qFatal("No control \"%s\"", name.toUtf8().constData());
    }
    return *found;
}
