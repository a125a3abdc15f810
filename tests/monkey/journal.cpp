#include "monkey/journal.h"

using namespace Qt::StringLiterals;

void Journal::say(const QString &words) {
    const QString line = u"%1: %2"_s.arg(step_).arg(words);
    lastSteps_ << line;
    if (lastSteps_.size() > 20) {
        lastSteps_.removeFirst();
    }
    if (verbose_) {
        std::fprintf(errors_.terminal(), "%s\n", qUtf8Printable(line));
        std::fflush(errors_.terminal());
    }
}

void Journal::want(bool holds, const QString &found, const QString &wanted) {
    if (!holds) {
        fail(found, wanted);
    }
}

void Journal::fail(const QString &found, const QString &wanted) {
    std::fprintf(errors_.terminal(),
                 "The last steps:\n%s\n\nNow:\n%s\n\nStep %d of seed %u: found %s\nWanted: %s\n"
                 "To see it again: %s --seed %u --steps %d --verbose\n",
                 qUtf8Printable(lastSteps_.join(u'\n')), qUtf8Printable(state_()), step_, seed_,
                 qUtf8Printable(found), qUtf8Printable(wanted), "tests/monkey/monkey", seed_,
                 step_);
    std::fflush(errors_.terminal());
    std::_Exit(1);
}
