#include "progress/quizcomplete.h"

#include <array>

#include "content/catalogue.h"
#include "look/image.h"
#include "progress/progressstore.h"
#include "system/exception.h"
#include "system/log.h"
#include "system/preferences.h"
#include "windowing/controllers.h"

using namespace Qt::StringLiterals;

using platform::Preferences;

void QuizComplete::windowDidLoad() {
    WindowController::windowDidLoad();
    try {
        GetTestResults();
    } catch (const platform::Exception &) {
        // Whatever was filled in stays, and the learner is told nothing.
    }
}

void QuizComplete::GetTestResults() {
    const auto currentTest =
        Preferences::standardUserDefaults().valueForKey(progressstore::currentTest);
    platform::log(currentTest.value_or(u"(null)"_s));
    if (const content::Quiz *quiz = content::quizWithId(currentTest.value_or(QString()))) {
        lblQuizName.setStringValue(quiz->name.toString());
        if (const auto passCount = progressstore::passCount(quiz->id)) {
            SetCheckMarks(*passCount);
        }
    }
    platform::openWindow(u"MainMenu"_s);
}

void QuizComplete::SetCheckMarks(int passCount) {
    const bool passed =
        Preferences::standardUserDefaults().valueForKey(progressstore::currentStatus) == u"pass";
    if (passCount < 0 || passCount > progressstore::passesToMaster) {
        return;
    }

    const std::array marks{&theImage1, &theImage2, &theImage3};
    for (int mark = 1; mark <= 3; ++mark) {
        const bool earned = mark <= passCount;
        const platform::ImageOutlet &image = *marks.at(static_cast<std::size_t>(mark - 1));
        image.setImage(
            platform::look::imageNamed(earned ? u"checkmark.png"_s : u"blankcheckmark.png"_s));
        image.setAccessibleName(
            (earned ? u"Pass mark %1: earned"_s : u"Pass mark %1: missing"_s).arg(mark));
    }

    using Tone = platform::Banner::Tone;
    stage.setTone(!passed                                     ? Tone::Neutral
                  : passCount < progressstore::passesToMaster ? Tone::Positive
                                                              : Tone::Festive);

    static const std::array passedSentences{
        u"Congratulations you have passed this quiz."_s,
        u"Congratulations you have passed this quiz. Only two more passes needed to have this "
        "quiz mastered."_s,
        u"Congratulations you have passed this quiz. Only one more pass needed to have this "
        "quiz mastered."_s,
        u"Congratulations you MASTERED this quiz."_s,
    };
    lblTheStatus.setStringValue(
        passed ? passedSentences.at(static_cast<std::size_t>(passCount))
               : u"Unfortunately you did not pass the quiz this time. Please try again."_s);
}

void QuizComplete::goHome() {
    // The main menu has been open since this window was filled.
    platform::log(u"Going Home"_s);
}
