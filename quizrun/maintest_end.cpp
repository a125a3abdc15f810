#include "progress/progressstore.h"
#include "progress/quizcomplete.h"
#include "quizrun/maintest.h"
#include "quizrun/quizrun.h"
#include "system/preferences.h"
#include "windowing/alert.h"

using namespace Qt::StringLiterals;

using platform::Alert;
using platform::Preferences;

namespace {
/// A score must be greater than this to pass.
constexpr double passMark = 0.799;

void recordOutcome(bool passed) {
    const QString &id = quizRun().currentTestId;
    Preferences &defaults = Preferences::standardUserDefaults();
    const Preferences::Batch batch(defaults);
    if (passed) {
        defaults.setValueForKey(u"pass"_s, progressstore::currentStatus);
        progressstore::recordPass(id);
    } else {
        defaults.setValueForKey(u"fail"_s, progressstore::currentStatus);
    }
    // An id that was absent stays absent.
    if (!id.isNull()) {
        defaults.setValueForKey(id, progressstore::currentTest);
    }
}

}  // namespace

void MainTest::GameOver() {
    QuizRun &run = quizRun();
    run.quizTimer.reset();

    // Without questions the score is infinite or not a number, and is compared as such.
    const float score =
        static_cast<float>(run.correctCount) / static_cast<float>(run.questionCount);
    recordOutcome(double(score) > passMark);
    showResults();
}

void MainTest::showResults() {
    quizComplete = platform::makeController<QuizComplete>(u"QuizComplete"_s);
    quizComplete->showWindow();
    close();
}

bool MainTest::windowShouldClose() {
    const int answer = Alert(
                           u"This will end your current progress on this test, would you still "
                           "like to close this window?"_s,
                           {.defaultButton = u"Yes"_s, .alternateButton = u"No"_s})
                           .runModal(window());
    if (answer != Alert::DefaultReturn) {
        return false;
    }
    close();
    if (quizRun().quizTimer) {
        // The run keeps the stopped clock.
        quizRun().quizTimer->invalidate();
    }
    return true;
}
