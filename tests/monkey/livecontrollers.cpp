#include "monkey/livecontrollers.h"

#include <QCoreApplication>
#include <QEvent>

#include "progress/progress.h"
#include "progress/quizcomplete.h"
#include "quizrun/maintest.h"
#include "shell/appdelegate.h"
#include "shell/controllertable.h"
#include "shell/help.h"
#include "shell/mainmenu.h"
#include "shell/settingscontroller.h"
#include "windowing/controllers.h"

using platform::WindowController;

namespace {

/// Adds the controller, and those that its properties hold.
void add(LiveControllers::Controllers &controllers, WindowController *controller) {
    if (controller == nullptr || controllers.contains(controller)) {
        return;
    }
    controllers << controller;
    if (const auto *menu = qobject_cast<const MainMenu *>(controller)) {
        add(controllers, menu->theTestScreen.get());
        add(controllers, menu->settingsController.get());
        add(controllers, menu->progressController.get());
    } else if (const auto *quiz = qobject_cast<const MainTest *>(controller)) {
        add(controllers, quiz->quizComplete.get());
    }
}

}  // namespace

LiveControllers::LiveControllers(AppDelegate &delegate) : delegate_(delegate) {
    QCoreApplication::instance()->installEventFilter(this);
    for (auto &[name, make] : platform::controllers()) {
        make = [this, make = make] {
            const std::shared_ptr<WindowController> controller = make();
            meet(controller.get());
            return controller;
        };
    }
}

LiveControllers::~LiveControllers() {
    fillControllerTable();
}

LiveControllers::Controllers LiveControllers::all() const {
    Controllers all;
    for (const QPointer<WindowController> &controller : met_) {
        if (!controller.isNull()) {
            all << controller;
        }
    }
    return all;
}

LiveControllers::Controllers LiveControllers::used() const {
    Controllers used = heldByTheDelegate();
    for (WindowController *controller : all()) {
        if (controller->window() != nullptr && controller->window()->isVisible()) {
            add(used, controller);
        }
    }
    return used;
}

bool LiveControllers::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::Show && qobject_cast<platform::Window *>(watched) != nullptr) {
        Controllers held = heldByTheDelegate();
        for (WindowController *controller : all()) {
            add(held, controller);
        }
        for (WindowController *controller : std::as_const(held)) {
            meet(controller);
        }
    }
    return false;
}

LiveControllers::Controllers LiveControllers::heldByTheDelegate() const {
    Controllers held;
    add(held, delegate_.theMainMenu.get());
    add(held, delegate_.theSettings.get());
    add(held, delegate_.theMainTest.get());
    add(held, delegate_.theHelp.get());
    return held;
}

void LiveControllers::meet(WindowController *controller) {
    if (!met_.contains(controller)) {
        met_.removeAll(nullptr);
        met_ << controller;
    }
}
