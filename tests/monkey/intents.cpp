#include <array>

#include "monkey/dice.h"
#include "monkey/journal.h"
#include "monkey/seam.h"
#include "monkey/steps.h"
#include "support/desk.h"

using namespace Qt::StringLiterals;

void Steps::quizAppears() {
    constexpr std::array intents{Intent::Pass,   Intent::Pass,        Intent::Pass,
                                 Intent::Fail,   Intent::LetTimePass, Intent::Juggle,
                                 Intent::Wander, Intent::Wander};
    if (intent_ != Intent::Juggle) {
        intent_ = dice_.pick(intents);
    }
}

bool Steps::pursueIntent() {
    if (intent_ == Intent::Wander) {
        return false;
    }
    if (intent_ == Intent::CloseAll) {
        return closeNext();
    }
    if (intent_ == Intent::Juggle && dice_.oneIn(10)) {
        if (seam_.model().countOpen(u"MainTest"_s) < 4) {
            type(Qt::CTRL | Qt::Key(Qt::Key_1 + dice_.below(7)));
        } else {
            letSecondsPass(1 + dice_.below(30));
        }
        return true;
    }
    const QList<QWidget *> quizzes = windowsOf(u"MainTest"_s);
    QWidget *quiz = quizzes.isEmpty() || intent_ != Intent::Juggle
                        ? quizzes.value(quizzes.size() - 1)
                        : dice_.pick(quizzes);
    if (quiz == nullptr || dice_.oneIn(300)) {
        intent_ = Intent::Wander;
        return false;
    }
    if (intent_ == Intent::LetTimePass) {
        if (!seam_.model().clockRuns()) {
            intent_ = Intent::Pass;
        }
        letSecondsPass(20 + dice_.below(200));
        return true;
    }
    answerOrGoOn(activated(*quiz));
    return true;
}

bool Steps::closeNext() {
    QWidget &window = anyWindow();
    if (window.objectName() == u"MainLayout" && dice_.oneIn(2)) {
        intent_ = Intent::Wander;
        return false;
    }
    close(window);
    return true;
}

void Steps::answerOrGoOn(QWidget &quiz) {
    QWidget &next = desk::control(&quiz, u"btnNextQuestion"_s);
    if (next.isVisible()) {
        dice_.oneIn(2) ? type(Qt::Key_Return) : clickControl(next);
        return;
    }
    if (!desk::control(&quiz, u"btnAnswer1"_s).isEnabled()) {
        close(quiz);
        return;
    }
    const model::Run &run = seam_.model().run();
    const int right = run.correctAnswerNumber;
    // A quiz of no questions ends with its first answer.
    const bool passes = run.questionCount == 0 ? dice_.oneIn(2) : intent_ != Intent::Fail;
    const int answer = right == 0 ? 1 : passes != dice_.oneIn(12) ? right : right == 1 ? 2 : 1;
    if (dice_.oneIn(3)) {
        type(QKeyCombination(Qt::Key(Qt::Key_A + answer - 1)));
    } else {
        clickControl(desk::control(
            &quiz, (dice_.oneIn(2) ? u"btnAnswer%1"_s : u"rowAnswer%1"_s).arg(answer)));
    }
}
