#include <array>

#include <QApplication>
#include <QStyle>
#include <QWidget>

#include "monkey/dice.h"
#include "monkey/journal.h"
#include "monkey/seam.h"
#include "monkey/steps.h"
#include "support/clocks.h"
#include "support/drawing.h"
#include "support/store.h"

using namespace Qt::StringLiterals;

namespace {

/// Values that no quiz and no pass count has.
const std::array oddValues{u""_s, u"01"_s, u"1.0"_s, u"4"_s, u"8"_s, u"+3"_s, u"x"_s, u"pass"_s};

}  // namespace

void Steps::letSecondsPass(int seconds) {
    journal_.say(u"waits %1 s"_s.arg(seconds));
    const bool runs = seam_.model().clockRuns();
    for (int second = 0; second < seconds && seam_.model().clockRuns() == runs; ++second) {
        seam_.model().tick();
        clocks::passSecond();
    }
}

void Steps::changeDesktop() {
    if (dice_.oneIn(3)) {
        journal_.say(u"changes the desktop's colours"_s);
        QApplication::setPalette(dice_.oneIn(2) ? drawing::darkPalette()
                                                : QApplication::style()->standardPalette());
        return;
    }
    QWidget &window = anyWindow();
    const QSize size(200 + dice_.below(1000), 150 + dice_.below(900));
    journal_.say(
        u"resizes %1 to %2 x %3"_s.arg(nameOf(window)).arg(size.width()).arg(size.height()));
    window.resize(size);
}

void Steps::editStore() {
    const store::Contents contents = store::contents();
    const int kind = dice_.below(12);
    const QString quiz = u"quiz%1"_s.arg(1 + dice_.below(7));
    if (kind == 0) {
        journal_.say(u"has the store wiped"_s);
        store::wipe();
        seam_.model().editStore({});
    } else if (kind == 1) {
        overwrite(dice_.oneIn(2) || contents.isEmpty() ? quiz : dice_.pick(contents.keys()), {});
    } else if (kind < 4) {
        overwrite(quiz, dice_.pick(oddValues));
    } else if (kind < 6) {
        overwrite(quiz, QString::number(dice_.below(4)));
    } else if (kind < 9) {
        overwrite(u"timedQuizzes"_s, dice_.oneIn(4)   ? u"no"_s
                                     : dice_.oneIn(8) ? u"Yes"_s
                                                      : u"yes"_s);
    } else {
        spoilChosenQuiz();
    }
}

void Steps::spoilChosenQuiz() {
    overwrite(u"currentTest"_s, dice_.oneIn(3) ? QString() : dice_.pick(oddValues));
}

void Steps::overwrite(const QString &key, const QString &value) {
    journal_.say(u"has %1=%2 written by another copy of the program"_s.arg(
        key, value.isNull() ? u"(nothing)"_s : value));
    store::Contents contents = store::contents();
    if (value.isNull()) {
        contents.remove(key);
    } else {
        contents[key] = value;
    }
    store::fill(contents);
    seam_.model().editStore(contents);
}

void Steps::begin() {
    intent_ = Intent::Wander;
    forgetWindows();
    const int kind = dice_.below(4);
    if (kind == 0 || journal_.step() == 0) {
        store::wipe();
    } else if (kind == 1) {
        store::Contents contents = store::contents();
        contents.remove(u"timedQuizzes"_s);
        store::fill(contents);
    } else if (kind == 2) {
        for (int quiz = 1; quiz <= 7; ++quiz) {
            store::set(u"quiz%1"_s.arg(quiz), QString::number(dice_.below(4)));
        }
    }
}
