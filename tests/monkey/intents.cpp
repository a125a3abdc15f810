#include "monkey/intents.h"

#include <array>

#include "monkey/dice.h"
#include "monkey/hands.h"
#include "monkey/journal.h"
#include "monkey/seam.h"
#include "monkey/world.h"
#include "support/desk.h"

using namespace Qt::StringLiterals;

void Intents::meanToCloseEverything() {
    journal_.say(u"means to close everything"_s);
    intent_ = Intent::CloseAll;
}

void Intents::quizAppears() {
    constexpr std::array intents{Intent::Pass,   Intent::Pass,        Intent::Pass,
                                 Intent::Fail,   Intent::LetTimePass, Intent::Juggle,
                                 Intent::Wander, Intent::Wander};
    if (intent_ != Intent::Juggle) {
        intent_ = dice_.pick(intents);
    }
}

bool Intents::pursue() {
    if (intent_ == Intent::Wander) {
        return false;
    }
    if (intent_ == Intent::CloseAll) {
        return closeNext();
    }
    if (intent_ == Intent::Juggle && dice_.oneIn(10)) {
        const int open = seam_.model().countOpen(u"MainTest"_s);
        if (open < 4) {
            hands_.type(Qt::CTRL | Qt::Key(Qt::Key_1 + dice_.below(7)));
            return true;
        }
        world_.letSecondsPass(1 + dice_.below(30));
        return true;
    }
    QWidget *quiz = quizToUse();
    if (quiz == nullptr || dice_.oneIn(300)) {
        intent_ = Intent::Wander;
        return false;
    }
    if (intent_ == Intent::LetTimePass) {
        if (!seam_.model().clockRuns()) {
            intent_ = Intent::Pass;
        }
        world_.letSecondsPass(20 + dice_.below(200));
        return true;
    }
    answerOrGoOn(hands_.activated(*quiz));
    return true;
}

bool Intents::closeNext() {
    QWidget &window = hands_.anyWindow();
    if (window.objectName() == u"MainLayout" && dice_.oneIn(2)) {
        intent_ = Intent::Wander;
        return false;
    }
    hands_.close(window);
    return true;
}

QWidget *Intents::quizToUse() {
    const QList<QWidget *> quizzes = hands_.windowsOf(u"MainTest"_s);
    if (quizzes.isEmpty()) {
        return nullptr;
    }
    return intent_ == Intent::Juggle ? dice_.pick(quizzes) : quizzes.last();
}

void Intents::answerOrGoOn(QWidget &quiz) {
    QWidget &next = desk::control(&quiz, u"btnNextQuestion"_s);
    if (next.isVisible()) {
        dice_.oneIn(2) ? hands_.type(Qt::Key_Return) : hands_.clickControl(next);
        return;
    }
    if (!desk::control(&quiz, u"btnAnswer1"_s).isEnabled()) {
        hands_.close(quiz);
        return;
    }
    const model::Run &run = seam_.model().run();
    const int right = run.correctAnswerNumber;
    // A quiz of no questions ends with its first answer.
    const bool passes = run.questionCount == 0 ? dice_.oneIn(2) : intent_ != Intent::Fail;
    const int answer = right == 0 ? 1 : passes != dice_.oneIn(12) ? right : right == 1 ? 2 : 1;
    if (dice_.oneIn(3)) {
        hands_.type(QKeyCombination(Qt::Key(Qt::Key_A + answer - 1)));
    } else {
        hands_.clickControl(desk::control(
            &quiz, (dice_.oneIn(2) ? u"btnAnswer%1"_s : u"rowAnswer%1"_s).arg(answer)));
    }
}
