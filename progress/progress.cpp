#include "progress/progress.h"

#include <array>

#include "progress/progressstore.h"
#include "system/format.h"

void progress::windowDidLoad() {
    WindowController::windowDidLoad();
    SetProgressBars();
}

void progress::SetProgressBars() {
    const auto levels = progressstore::passLevels();
    // The main test has no label here: only the main menu shows it.
    const std::array labels{&lblQuiz1Progress, &lblQuiz2Progress, &lblQuiz3Progress,
                            &lblQuiz4Progress, &lblQuiz5Progress, &lblQuiz6Progress};
    const std::array indicators{&progressbarQuiz1, &progressbarQuiz2, &progressbarQuiz3,
                                &progressbarQuiz4, &progressbarQuiz5, &progressbarQuiz6};
    for (std::size_t i = 0; i < labels.size(); ++i) {
        const float percent = levels[i] / progressstore::passesToMaster * 100;
        labels[i]->setStringValue(platform::stringWithFormat("%.0f%%", double(percent)));
        indicators[i]->setDoubleValue(levels[i]);
    }
}
