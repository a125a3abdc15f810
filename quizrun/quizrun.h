#pragma once

#include <memory>

#include <QString>
#include <QStringList>

#include "content/shuffle.h"
#include "system/repeatingtimer.h"

/// One attempt at one quiz. There is only one in the process: quiz windows share it.
struct QuizRun {
    /// The question numbers of this attempt in asking order; kept until the next attempt.
    QStringList questionOrder;
    /// Right answers divided by questions answered.
    float scoreRatio = 0;
    /// The time left on the clock; negative once it is up.
    int minutesLeft = 0;
    int secondsLeft = 0;
    /// The right answer to the question on screen, 1, 2 or 3; 0 before the first question.
    int correctAnswerNumber = 0;
    /// The number of the question on screen divided by the number of questions; 0 at the first.
    float progressRatio = 0;
    /// The index of the question on screen, or of the next one once it is answered.
    int questionIndex = 0;
    /// How many questions were answered right.
    int correctCount = 0;
    /// Null until the window has read it from the store, and if the store has none.
    QString currentTestId;
    /// Reset with each attempt; nothing reads them.
    long long spareLong = 0;
    int spareInt = 0;
    /// The only reference to the clock: replacing or clearing it stops the clock.
    std::unique_ptr<platform::RepeatingTimer> quizTimer;
    /// How many questions this attempt asks.
    int questionCount = 0;

    /// The source of random numbers for the shuffle.
    content::RandomSource random = content::systemRandom;

    /// Prepares for a new attempt. The order of the questions, the score ratio and the clock stay
    /// until something replaces them: a quiz with an unknown id asks the previous one's questions.
    void reset();
};

QuizRun &quizRun();
