#include "progress/progress.h"

#include <array>

#include "content/catalogue.h"
#include "progress/progressstore.h"
#include "system/format.h"

void progress::windowDidLoad() {
    WindowController::windowDidLoad();
    SetProgressBars();
}

void progress::SetProgressBars() {
    std::array<float, content::quizzes.size()> levels{};
    for (std::size_t i = 0; i < levels.size(); ++i) {
        levels.at(i) = progressstore::passLevel(content::quizzes.at(i).id);
    }
    // The main test has no label here: the main menu alone shows it.
    const std::array labels{&lblQuiz1Progress, &lblQuiz2Progress, &lblQuiz3Progress,
                            &lblQuiz4Progress, &lblQuiz5Progress, &lblQuiz6Progress};
    for (std::size_t i = 0; i < labels.size(); ++i) {
        const float percent = levels[i] / 3 * 100;
        labels[i]->setStringValue(platform::stringWithFormat("%.0f%%", double(percent)));
    }
}
