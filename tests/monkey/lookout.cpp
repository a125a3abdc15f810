#include "monkey/lookout.h"

#include <algorithm>

#include <QApplication>
#include <QMenu>
#include <QMessageBox>
#include <QWindow>

#include "monkey/hands.h"
#include "monkey/journal.h"
#include "monkey/liveprogram.h"
#include "support/clocks.h"

using namespace Qt::StringLiterals;

using words::nameOf;

namespace {

/// Whether Tab reaches it.
bool takesFocus(const QWidget &widget) {
    return widget.isVisible() && widget.isEnabled() &&
           (widget.focusPolicy() & Qt::TabFocus) != Qt::NoFocus;
}

bool isAlert(const QWidget &window) {
    return qobject_cast<const QMessageBox *>(&window) != nullptr && window.isModal();
}

}  // namespace

QString Lookout::state() const {
    QStringList state;
    for (const QWidget *window : hands_.windows()) {
        state << nameOf(*window);
    }
    const QRect place = QApplication::activeWindow() == nullptr
                            ? QRect()
                            : QApplication::activeWindow()->geometry();
    state << u"%1 x %2"_s.arg(place.width()).arg(place.height());
    const store::Contents contents = store::contents();
    for (auto entry = contents.begin(); entry != contents.end(); ++entry) {
        state << entry.key() + u'=' + entry.value();
    }
    const QuizRun &run = quizRun();
    state << u"question %1 of %2, %3 right, %4:%5 left, clocks: %6"_s.arg(run.questionIndex)
                 .arg(run.questionCount)
                 .arg(run.correctCount)
                 .arg(run.minutesLeft)
                 .arg(run.secondsLeft)
                 .arg(clocks::running().size());
    return state.join(u'\n');
}

void Lookout::check(const LiveProgram &program) const {
    checkWindows(program);
    checkFocus();
}

void Lookout::checkNothingIsLeft(const QList<QPointer<QObject>> &objects) const {
    QStringList left;
    for (const QPointer<QObject> &object : objects) {
        if (!object.isNull()) {
            left << QString::fromLatin1(object->metaObject()->className());
        }
    }
    journal_.want(left.isEmpty(),
                  u"%1 objects outlive the program: %2 ..."_s.arg(left.size())
                      .arg(left.mid(0, 5).join(u", "_s)),
                  u"none"_s);
    journal_.want(clocks::running().isEmpty(), u"a clock outlives the program"_s, u"none"_s);
}

void Lookout::checkWindows(const LiveProgram &program) const {
    const LiveControllers::Controllers controllers = program.controllers().all();
    QSet<const QWidget *> owned;
    for (platform::WindowController *controller : controllers) {
        if (controller->window() != nullptr) {
            owned << controller->window();
        }
    }
    int wayBack = 0;
    int others = 0;
    int alive = 0;
    for (const QWidget *widget : QApplication::topLevelWidgets()) {
        const bool isWindow = qobject_cast<const platform::Window *>(widget) != nullptr;
        const bool isWayBack = isWindow && widget->objectName() == u"MainLayout";
        alive += isWindow && !isWayBack ? 1 : 0;
        if (!widget->isVisible()) {
            journal_.want(qobject_cast<const QMessageBox *>(widget) == nullptr,
                          u"a closed alert or About box lives"_s, u"it is freed"_s);
            continue;
        }
        wayBack += isWayBack ? 1 : 0;
        others += isWindow && !isWayBack ? 1 : 0;
        journal_.want(
            isWayBack || owned.contains(widget) || qobject_cast<const QMenu *>(widget) != nullptr ||
                (qobject_cast<const QMessageBox *>(widget) != nullptr && !isAlert(*widget)) ||
                widget->inherits("QTipLabel"),
            u"%1 is on screen by itself"_s.arg(nameOf(*widget)),
            u"windows of live controllers, menus, tool tips and the About box"_s);
    }
    journal_.want(alive == owned.size(), u"%1 windows live"_s.arg(alive),
                  u"%1, as many as controllers hold"_s.arg(owned.size()));
    journal_.want(wayBack == (others == 0 ? 1 : 0),
                  u"%1 ways back beside %2 open windows"_s.arg(wayBack).arg(others),
                  u"one where no other window is open, and none otherwise"_s);
    const LiveControllers::Controllers used = program.controllers().used();
    journal_.want(used.size() == controllers.size(),
                  u"%1 controllers live"_s.arg(controllers.size()),
                  u"%1: those on screen and those that are held"_s.arg(used.size()));
}

void Lookout::checkFocus() const {
    if (QApplication::activePopupWidget() != nullptr) {
        return;
    }
    const QWidget *active = QApplication::activeWindow();
    const QWindow *front = QGuiApplication::focusWindow();
    journal_.want(active != nullptr && active->isVisible(),
                  u"no window is active, though the keys go to %1"_s.arg(
                      front == nullptr ? u"none"_s : front->objectName()),
                  u"one that is"_s);
    const auto controls = active->findChildren<QWidget *>();
    if (std::ranges::none_of(controls, [&](const QWidget *one) {
            return one->window() == active && takesFocus(*one);
        })) {
        return;
    }
    const QWidget *focus = QApplication::focusWidget();
    journal_.want(
        focus != nullptr && focus->window() == active && focus->isVisible() && focus->isEnabled(),
        u"in %1 the focus is on %2"_s.arg(nameOf(*active),
                                          focus == nullptr ? u"nothing"_s : nameOf(*focus)),
        u"one of its visible enabled controls"_s);
}
