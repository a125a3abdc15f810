#include "shell/appdelegate.h"

#include "progress/progress.h"
#include "progress/progressstore.h"
#include "quizrun/maintest.h"
#include "shell/help.h"
#include "shell/mainmenu.h"
#include "shell/settingscontroller.h"
#include "system/exception.h"
#include "system/format.h"
#include "system/log.h"
#include "system/preferences.h"
#include "windowing/alert.h"

using namespace Qt::StringLiterals;

using platform::makeController;

AppDelegate::AppDelegate() = default;

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching() {
    ShowMainMenu();
    platform::log(u"Finished Starting"_s);
}

void AppDelegate::ShowMainMenu() {
    theMainMenu = makeController<MainMenu>(u"MainMenu"_s);
    theMainMenu->showWindow();
}

void AppDelegate::goPreferences() {
    theSettings = makeController<SettingsController>(u"Settings"_s);
    theSettings->showWindow();
}

void AppDelegate::AssignTest(int quizNumber) {
    try {
        platform::Preferences::standardUserDefaults().setValueForKey(
            platform::stringWithFormat("%i", quizNumber), progressstore::currentTest);
        theMainTest = makeController<MainTest>(u"MainTest"_s);
        // This closes the new main menu, which was never shown: the one on screen stays.
        theMainMenu = makeController<MainMenu>(u"MainMenu"_s);
        theMainMenu->close();
        theMainTest->showWindow();
    } catch (const platform::Exception &) {
        platform::Alert(u"Error loading the current quiz"_s, {.defaultButton = u"OK"_s})
            .runModal(nullptr);
    }
}

void AppDelegate::ShowMainTest() {
    theMainTest = makeController<MainTest>(u"MainTest"_s);
    theMainTest->showWindow();
}

void AppDelegate::ShowHelp() {
    theHelp = makeController<Help>(u"Help"_s);
    theHelp->showWindow();
}
