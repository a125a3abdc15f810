#include "progress/progressstore.h"

#include "content/catalogue.h"
#include "system/preferences.h"

using namespace Qt::StringLiterals;

using platform::Preferences;

namespace progressstore {

QString passCount(QStringView quizId) {
    return u"quiz"_s.append(quizId);
}

void seed() {
    const QString none = u"0"_s;
    Preferences &defaults = Preferences::standardUserDefaults();
    defaults.setValueForKey(none, currentTest);
    for (const content::Quiz &quiz : content::quizzes) {
        defaults.setValueForKey(none, passCount(quiz.id));
    }
    defaults.setValueForKey(none, currentStatus);
    defaults.setValueForKey(u"false"_s, firstRun);
}

float passLevel(QStringView quizId) {
    const auto count = Preferences::standardUserDefaults().valueForKey(passCount(quizId));
    if (count == u"3") {
        return 3;
    }
    if (count == u"2") {
        return 2;
    }
    if (count == u"1") {
        return 1;
    }
    return 0;
}

}  // namespace progressstore
