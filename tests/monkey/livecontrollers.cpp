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
            std::shared_ptr<WindowController> controller = make();
            met_ << controller.get();
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
    Controllers shown = all();
    shown.removeIf([](const WindowController *controller) {
        return controller->window() == nullptr || !controller->window()->isVisible();
    });
    return withHeld(shown);
}

bool LiveControllers::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::Show && qobject_cast<platform::Window *>(watched) != nullptr) {
        const Controllers known = withHeld(all());
        met_ = {known.begin(), known.end()};
    }
    return false;
}

LiveControllers::Controllers LiveControllers::withHeld(const Controllers &some) const {
    Controllers controllers;
    add(controllers, delegate_.theMainMenu.get());
    add(controllers, delegate_.theSettings.get());
    add(controllers, delegate_.theMainTest.get());
    add(controllers, delegate_.theHelp.get());
    for (WindowController *controller : some) {
        add(controllers, controller);
    }
    return controllers;
}
