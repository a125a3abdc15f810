#include <chrono>

#include "progress/progressstore.h"
#include "quizrun/maintest.h"
#include "quizrun/quizrun.h"
#include "system/format.h"
#include "system/preferences.h"
#include "windowing/alert.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int secondsPerQuestion = 15;
}

void MainTest::SetTimer() {
    QuizRun &run = quizRun();
    lblTimeLeft.setHidden(false);
    lblTimeLeftLabel.setHidden(false);
    const int allowance = run.questionCount * secondsPerQuestion;
    run.minutesLeft = allowance / 60;
    // 59 is intended, not 60: the clock starts with a little more than the allowance.
    run.secondsLeft = allowance % 59;
    run.quizTimer = platform::RepeatingTimer::scheduledTimer(std::chrono::seconds(1), *this,
                                                             [this] { timerFired(); });
}

void MainTest::timerFired() {
    QuizRun &run = quizRun();
    if (run.minutesLeft < 0 || (run.minutesLeft <= 0 && run.secondsLeft < 0)) {
        timeIsUp();
        return;
    }
    if (run.secondsLeft == 0) {
        run.minutesLeft -= 1;
        run.secondsLeft = 59;
        if (run.minutesLeft < 0) {
            return;
        }
    } else if (run.secondsLeft > 0) {
        run.secondsLeft -= 1;
    }
    lblTimeLeft.setStringValue(
        platform::stringWithFormat("%d:%02d", run.minutesLeft, run.secondsLeft));
}

void MainTest::timeIsUp() {
    quizRun().quizTimer.reset();
    platform::Alert(u"The time is up for this test."_s, {.defaultButton = u"OK"_s})
        .runModal(window(), platform::Alert::Cause::Event);
    platform::Preferences::standardUserDefaults().setValueForKey(u"fail"_s,
                                                                 progressstore::currentStatus);
    showResults();
}
