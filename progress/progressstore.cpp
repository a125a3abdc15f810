#include "progress/progressstore.h"

#include <algorithm>

#include "system/preferences.h"

using namespace Qt::StringLiterals;

using platform::Preferences;

namespace progressstore {

QString passCountKey(QStringView quizId) {
    return u"quiz"_s.append(quizId);
}

void seed() {
    const QString none = u"0"_s;
    Preferences &defaults = Preferences::standardUserDefaults();
    const Preferences::Batch batch(defaults);
    defaults.setValueForKey(none, currentTest);
    for (const content::Quiz &quiz : content::quizzes) {
        defaults.setValueForKey(none, passCountKey(quiz.id));
    }
    defaults.setValueForKey(none, currentStatus);
    defaults.setValueForKey(u"false"_s, firstRun);
}

std::optional<int> passCount(QStringView quizId) {
    if (content::quizWithId(quizId) == nullptr) {
        return std::nullopt;
    }
    const auto text = Preferences::standardUserDefaults().valueForKey(passCountKey(quizId));
    for (int count = 0; count <= passesToMaster; ++count) {
        if (text == QString::number(count)) {
            return count;
        }
    }
    return std::nullopt;
}

void recordPass(QStringView quizId) {
    const auto count = passCount(quizId);
    if (count && *count < passesToMaster) {
        Preferences::standardUserDefaults().setValueForKey(QString::number(*count + 1),
                                                           passCountKey(quizId));
    }
}

std::array<float, content::quizzes.size()> passLevels() {
    std::array<float, content::quizzes.size()> levels{};
    std::ranges::transform(content::quizzes, levels.begin(), [](const content::Quiz &quiz) {
        return static_cast<float>(passCount(quiz.id).value_or(0));
    });
    return levels;
}

}  // namespace progressstore
