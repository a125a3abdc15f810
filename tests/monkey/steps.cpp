#include "monkey/steps.h"

#include <QAbstractButton>
#include <QApplication>

#include "monkey/dice.h"
#include "monkey/hands.h"
#include "monkey/intents.h"
#include "monkey/journal.h"
#include "monkey/keys.h"
#include "monkey/menus.h"
#include "monkey/seam.h"
#include "monkey/world.h"
#include "shell/appdelegate.h"

using namespace Qt::StringLiterals;

using words::nameOf;

namespace {

constexpr int mostWindows = 12;

QList<QWidget *> visibleControls(const QWidget &window) {
    QList<QWidget *> controls;
    for (QWidget *control : window.findChildren<QWidget *>()) {
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
        menus_.useOpen(*menu);
        return;
    }
    const int open = int(hands_.windows().size());
    if (open > mostWindows || (open > mostWindows / 2 && dice_.oneIn(4))) {
        closeOne();
        return;
    }
    if (const auto wayBack = hands_.windowsOf(u"MainLayout"_s);
        !wayBack.isEmpty() && dice_.oneIn(2)) {
        clickAButton(*wayBack.first());
        return;
    }
    if (!dice_.oneIn(8) && intents_.pursue()) {
        return;
    }
    const int choice = dice_.below(1000);
    if (choice < 380) {
        clickAnything();
    } else if (choice < 450) {
        clickAnywhere();
    } else if (choice < 690) {
        typeAnything();
    } else if (choice < 780) {
        menus_.openOne();
    } else if (choice < 830) {
        closeOne();
    } else if (choice < 870) {
        activateOne();
    } else if (choice < 910) {
        world_.letSecondsPass(1);
    } else if (choice < 915) {
        world_.letSecondsPass(dice_.below(600));
    } else if (choice < 930) {
        world_.changeDesktop();
    } else if (choice < 950) {
        useSettings();
    } else if (choice < 985) {
        world_.editStore();
    } else if (choice < 995) {
        openQuizOfStore(delegate);
    } else {
        intents_.meanToCloseEverything();
    }
}

void Steps::useSettings() {
    const QList<QWidget *> open = hands_.windowsOf(u"Settings"_s);
    if (open.isEmpty()) {
        hands_.type(Qt::CTRL | Qt::Key_Comma);
    } else {
        clickAButton(*dice_.pick(open));
    }
}

void Steps::clickAButton(QWidget &window) {
    const QList<QAbstractButton *> buttons =
        hands_.activated(window).findChildren<QAbstractButton *>();
    hands_.clickControl(*dice_.pick(buttons));
}

void Steps::openQuizOfStore(AppDelegate &delegate) {
    if (dice_.oneIn(2)) {
        world_.spoilChosenQuiz();
    }
    journal_.say(u"opens a quiz window on what the store holds"_s);
    seam_.model().openQuizOfStore();
    delegate.ShowMainTest();
}

void Steps::clickAnything() {
    const QWidget &window = hands_.activated(hands_.anyWindow());
    QList<QWidget *> controls = visibleControls(window);
    if (!dice_.oneIn(4)) {
        QList<QWidget *> buttons;
        for (QWidget *control : controls) {
            if (qobject_cast<QAbstractButton *>(control) != nullptr) {
                buttons << control;
            }
        }
        controls = buttons.isEmpty() ? controls : buttons;
    }
    if (!controls.isEmpty()) {
        hands_.clickControl(*dice_.pick(controls));
    }
}

void Steps::clickAnywhere() {
    QWidget &window = hands_.activated(hands_.anyWindow());
    const QPoint at(1 + dice_.below(window.width() - 1), 1 + dice_.below(window.height() - 1));
    journal_.say(u"clicks at %1, %2 of %3"_s.arg(at.x()).arg(at.y()).arg(nameOf(window)));
    Hands::click(window, at);
}

void Steps::typeAnything() {
    hands_.activated(hands_.anyWindow());
    const int kind = dice_.below(100);
    if (kind < 2) {
        hands_.type(Qt::CTRL | Qt::Key_Q);
    } else if (kind < 12) {
        hands_.type(dice_.pick(keys::idle));
    } else if (kind < 25) {
        hands_.type(dice_.pick(keys::shortcuts));
    } else if (kind < 30) {
        hands_.type(dice_.pick(keys::shortcuts), true);
    } else {
        hands_.type(QKeyCombination(dice_.pick(keys::plain)), dice_.oneIn(12));
    }
}

void Steps::closeOne() {
    QWidget &window = hands_.anyWindow();
    journal_.say(u"closes "_s + nameOf(window));
    hands_.close(window);
}

void Steps::activateOne() {
    QWidget &window = *dice_.pick(hands_.windows());
    journal_.say(u"brings %1 to the front"_s.arg(nameOf(window)));
    hands_.activated(window);
}
