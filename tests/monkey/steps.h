#pragma once

#include "monkey/hands.h"

class AppDelegate;
namespace platform {
class MessageBox;
}

/// The steps of a walk: what the learner does, and what happens around the program.
class Steps final : public Hands {
 public:
    using Hands::Hands;

    /// Gets ready for another session.
    void begin();
    void take(AppDelegate &delegate);
    /// No control does this, but whatever quiz the store names has to be taken as it comes.
    void openQuizOfStore(AppDelegate &delegate);
    /// Answers an alert in one of the ways that a learner has.
    void answer(platform::MessageBox &box);
    /// To be called when a quiz window appears.
    void quizAppears();

 private:
    /// What the learner is up to for a while: steps at random alone would seldom end a quiz.
    enum class Intent { Wander, Pass, Fail, LetTimePass, Juggle, CloseAll };

    void clickAnything();
    void typeAnything();
    void useSettings();
    void clickAButton(QWidget &window);
    void closeOne();
    void activateOne();

    /// Takes a step towards what is intended, unless there is nothing to do.
    bool pursueIntent();
    bool closeNext();
    void answerOrGoOn(QWidget &quiz);

    /// Presses a button and returns the text of the one that this way of answering means.
    QString answerIn(const QString &way, platform::MessageBox &box);
    void tryBehind(const platform::MessageBox &box);

    /// Stops when the time of a quiz is up.
    void letSecondsPass(int seconds);
    void changeDesktop();
    void editStore();
    /// Has the store name a quiz that there is not, or none.
    void spoilChosenQuiz();
    void overwrite(const QString &key, const QString &value);

    Intent intent_ = Intent::Wander;
};
