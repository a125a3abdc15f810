#include "support/desk.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QTest>

#include "quizrun/quizrun.h"

using platform::Window;

namespace desk {

QList<Window *> windows(const QString &layout) {
    QList<Window *> found;
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        auto *window = qobject_cast<Window *>(widget);
        if (window != nullptr && window->isVisible() && window->objectName() == layout) {
            found << window;
        }
    }
    return found;
}

Window *window(const QString &layout) {
    const QList<Window *> found = windows(layout);
    if (found.size() != 1) {
        qWarning("%d windows \"%s\" are open", int(found.size()), qUtf8Printable(layout));
        return nullptr;
    }
    return found.first();
}

QString text(const QWidget *window, const QString &name) {
    return control<QLabel>(window, name).text();
}

bool isShown(const QWidget *window, const QString &name) {
    return control(window, name).isVisibleTo(window);
}

QRect placeIn(const QWidget &around, const QWidget &control) {
    return {control.mapTo(&around, QPoint()), control.size()};
}

void click(const QWidget *window, const QString &name) {
    QTest::mouseClick(&control<QAbstractButton>(window, name), Qt::LeftButton);
}

void clear() {
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (auto *window = qobject_cast<Window *>(widget)) {
            window->closeUnasked();
        }
    }
    quizRun() = QuizRun();
    QCoreApplication::processEvents();
    freeUnused();
}

void freeUnused() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

}  // namespace desk
