#include "monkey/steps.h"

#include <QAbstractButton>
#include <QApplication>

#include "monkey/dice.h"
#include "monkey/journal.h"
#include "monkey/keys.h"
#include "monkey/seam.h"
#include "shell/appdelegate.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int mostWindows = 12;

/// Those of that class that can be seen and used.
template <class Control>
QList<QWidget *> controlsOf(const QWidget &window) {
    QList<QWidget *> controls;
    for (Control *control : window.findChildren<Control *>()) {
        if (control->window() == &window && control->isVisible() && control->isEnabled() &&
            !control->visibleRegion().isEmpty()) {
            controls << control;
        }
    }
    return controls;
}

}  // namespace

void Steps::take(AppDelegate &delegate) {
    if (QWidget *menu = QApplication::activePopupWidget(); menu != nullptr && !dice_.oneIn(4)) {
        useOpenMenu(*menu);
        return;
    }
    const int open = int(windows().size());
    if (open > mostWindows || (open > mostWindows / 2 && dice_.oneIn(4))) {
        closeOne();
        return;
    }
    if (const auto wayBack = windowsOf(u"MainLayout"_s); !wayBack.isEmpty() && dice_.oneIn(2)) {
        clickAButton(*wayBack.first());
        return;
    }
    if (!dice_.oneIn(8) && pursueIntent()) {
        return;
    }
    const int choice = dice_.below(1000);
    if (choice < 380) {
        clickAnything();
    } else if (choice < 450) {
        clickAnywhere(activated(anyWindow()));
    } else if (choice < 690) {
        typeAnything();
    } else if (choice < 780) {
        openMenu();
    } else if (choice < 830) {
        closeOne();
    } else if (choice < 870) {
        activateOne();
    } else if (choice < 910) {
        letSecondsPass(1);
    } else if (choice < 915) {
        letSecondsPass(dice_.below(600));
    } else if (choice < 930) {
        changeDesktop();
    } else if (choice < 950) {
        useSettings();
    } else if (choice < 985) {
        editStore();
    } else if (choice < 995) {
        openQuizOfStore(delegate);
    } else {
        journal_.say(u"means to close everything"_s);
        intent_ = Intent::CloseAll;
    }
}

void Steps::useSettings() {
    const QList<QWidget *> open = windowsOf(u"Settings"_s);
    if (open.isEmpty()) {
        type(Qt::CTRL | Qt::Key_Comma);
    } else {
        clickAButton(*dice_.pick(open));
    }
}

void Steps::clickAButton(QWidget &window) {
    const QList<QAbstractButton *> buttons = activated(window).findChildren<QAbstractButton *>();
    clickControl(*dice_.pick(buttons));
}

void Steps::openQuizOfStore(AppDelegate &delegate) {
    if (dice_.oneIn(2)) {
        spoilChosenQuiz();
    }
    journal_.say(u"opens a quiz window on what the store holds"_s);
    seam_.model().openQuiz();
    delegate.ShowMainTest();
}

void Steps::clickAnything() {
    const QWidget &window = activated(anyWindow());
    QList<QWidget *> controls;
    if (!dice_.oneIn(4)) {
        controls = controlsOf<QAbstractButton>(window);
    }
    if (controls.isEmpty()) {
        controls = controlsOf<QWidget>(window);
    }
    if (!controls.isEmpty()) {
        clickControl(*dice_.pick(controls));
    }
}

void Steps::typeAnything() {
    activated(anyWindow());
    const int kind = dice_.below(100);
    if (kind < 2) {
        type(Qt::CTRL | Qt::Key_Q);
    } else if (kind < 12) {
        type(dice_.pick(keys::idle));
    } else if (kind < 25) {
        type(dice_.pick(keys::shortcuts));
    } else if (kind < 30) {
        type(dice_.pick(keys::shortcuts), true);
    } else {
        type(QKeyCombination(dice_.pick(keys::plain)), dice_.oneIn(12));
    }
}

void Steps::closeOne() {
    QWidget &window = anyWindow();
    journal_.say(u"closes "_s + nameOf(window));
    close(window);
}

void Steps::activateOne() {
    QWidget &window = *dice_.pick(windows());
    journal_.say(u"brings %1 to the front"_s.arg(nameOf(window)));
    activated(window);
}
