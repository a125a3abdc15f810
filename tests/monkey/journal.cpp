#include "monkey/journal.h"

using namespace Qt::StringLiterals;

void Journal::say(const QString &words) {
    lastSteps_ << u"%1: %2"_s.arg(step_).arg(words);
    if (lastSteps_.size() > 20) {
        lastSteps_.removeFirst();
    }
    if (verbose_) {
        print(lastSteps_.last());
    }
}

void Journal::want(bool holds, const QString &otherwise) {
    if (holds) {
        return;
    }
    const QString repeat = u"tests/monkey/monkey --seed %1 --steps %2 --verbose"_s;
    print(u"The last steps:\n"_s + lastSteps_.join(u'\n'));
    print(u"\nWrong at step %1: "_s.arg(step_) + otherwise);
    print(u"To see it again: "_s + repeat.arg(seed_).arg(step_));
    std::_Exit(1);
}

void Journal::print(const QString &text) {
    std::fprintf(errors_.terminal(), "%s\n", qUtf8Printable(text));
    std::fflush(errors_.terminal());
}
