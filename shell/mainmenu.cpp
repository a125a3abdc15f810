#include "shell/mainmenu.h"

#include <array>

#include "progress/progress.h"
#include "progress/progressstore.h"
#include "quizrun/maintest.h"
#include "shell/settingscontroller.h"
#include "system/exception.h"
#include "system/format.h"
#include "system/preferences.h"
#include "windowing/alert.h"

using namespace Qt::StringLiterals;

using platform::Alert;
using platform::makeController;
using platform::Preferences;

MainMenu::MainMenu(const QString &layoutName) : WindowController(layoutName) {}

MainMenu::~MainMenu() = default;

void MainMenu::windowDidLoad() {
    WindowController::windowDidLoad();
    FirstRunCheck();
    SetProgressBars();
}

void MainMenu::FirstRunCheck() {
    if (Preferences::standardUserDefaults().objectForKey(progressstore::firstRun)) {
        return;
    }
    // Seeded before the greeting, so that the store is complete even if the program ends during it.
    progressstore::seed();
    Alert(
        u"Welcome to Zorvan, this is the main progress screen where you can select quizzes to "
        "take and track your progress."_s,
        {.defaultButton = u"OK"_s})
        .runModal(window());
}

void MainMenu::SetProgressBars() {
    const std::array indicators{&progressbarQuiz1, &progressbarQuiz2, &progressbarQuiz3,
                                &progressbarQuiz4, &progressbarQuiz5, &progressbarQuiz6,
                                &progressbarQuiz7};
    const auto levels = progressstore::passLevels();
    float sum = 0;
    for (std::size_t i = 0; i < levels.size(); ++i) {
        indicators.at(i)->setDoubleValue(levels[i]);
        sum += levels[i];
    }
    progressbarMain.setDoubleValue(sum);
}

void MainMenu::AssignTest(int quizNumber) {
    try {
        Preferences::standardUserDefaults().setValueForKey(
            platform::stringWithFormat("%i", quizNumber), progressstore::currentTest);
        theTestScreen = makeController<MainTest>(u"MainTest"_s);
        theTestScreen->showWindow();
    } catch (const platform::Exception &) {
        Alert(u"Error loading the current quiz"_s, {.defaultButton = u"OK"_s}).runModal(window());
    }
}

void MainMenu::showPreferences() {
    settingsController = makeController<SettingsController>(u"Settings"_s);
    settingsController->showWindow();
}

void MainMenu::showProgress() {
    progressController = makeController<progress>(u"progress"_s);
    progressController->showWindow();
}
