#include <cstdio>

#include "controls/levelindicator.h"
#include "quizrun/quizrun.h"
#include "resources/resources.h"
#include "shell/appdelegate.h"
#include "shell/controllertable.h"
#include "shell/mainmenu.h"
#include "support/alerts.h"
#include "support/desk.h"
#include "support/learner.h"
#include "windowing/application.h"

using namespace Qt::StringLiterals;

/// Starts the program with the store as it is, passes quiz 5, and writes to standard output which
/// alerts came and how often the quiz has been passed, according to the main menu.
int main(int argc, char **argv) {
    installResources();
    fillControllerTable();
    platform::Application application(argc, argv);
    quizRun().random = [] { return 0U; };
    AppDelegate delegate;
    application.loadMainLayout(delegate);
    // Dismisses every alert that comes.
    const Alerts alerts;

    delegate.applicationDidFinishLaunching();
    platform::Window *menu = desk::window(u"MainMenu"_s);
    learner::press(menu, u"goTest5"_s);
    learner::passStructure(desk::window(u"MainTest"_s));
    learner::press(menu, u"refreshProgress"_s);

    for (const ShownAlert &alert : alerts.shown()) {
        std::printf("alert: %s\n", qUtf8Printable(alert.message));
    }
    std::printf("passes of quiz 5: %.0f\n",
                desk::control<platform::LevelIndicator>(menu, u"progressbarQuiz5"_s).doubleValue());
    desk::clear();
    return 0;
}
