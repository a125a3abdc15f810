#include "shell/settingscontroller.h"

#include "progress/progressstore.h"
#include "system/preferences.h"
#include "windowing/alert.h"

using namespace Qt::StringLiterals;

using platform::Alert;
using platform::Preferences;

void SettingsController::windowDidLoad() {
    WindowController::windowDidLoad();
    const auto timed = Preferences::standardUserDefaults().valueForKey(progressstore::timedQuizzes);
    if (timed == u"yes") {
        noRadio.setState(0);
        yesRadio.setState(1);
        yesRadio.setFocus();
    } else {
        noRadio.setState(1);
        yesRadio.setState(0);
        noRadio.setFocus();
    }
}

void SettingsController::yesTimeSelected() {
    Preferences::standardUserDefaults().setValueForKey(u"yes"_s, progressstore::timedQuizzes);
}

void SettingsController::noTimeSelected() {
    Preferences::standardUserDefaults().setValueForKey(u"no"_s, progressstore::timedQuizzes);
}

void SettingsController::resetProgress() {
    const int answer =
        Alert(u"This will reset all progress. Are you sure you want to clear your progress?"_s,
              {.defaultButton = u"Yes"_s, .alternateButton = u"No"_s})
            .runModal(window());
    if (answer == Alert::DefaultReturn) {
        clearProgress();
    }
}

void SettingsController::clearProgress() {
    progressstore::seed();
    // Open windows keep showing the old counts until they are filled again.
    Alert(u"All progress on quizzes has been reset"_s, {.defaultButton = u"OK"_s})
        .runModal(window());
}
