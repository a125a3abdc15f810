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
    /// Right answers by questions answered.
    float scoreRatio = 0;
    int minutesLeft = 0;
    int secondsLeft = 0;
    /// 1, 2 or 3; 0 before the first question.
    int correctAnswerNumber = 0;
    float progressRatio = 0;
    /// Counts the question on screen once it is answered.
    int questionIndex = 0;
    int correctCount = 0;
    /// Empty until the window has read it from the store.
    QString currentTestId;
    /// Reset with each attempt; nothing reads them.
    long long spareLong = 0;
    int spareInt = 0;
    /// The only reference to the clock: replacing or clearing it stops the clock.
    std::unique_ptr<platform::RepeatingTimer> quizTimer;
    int questionCount = 0;

    /// What the shuffle draws from.
    content::RandomSource random = content::systemRandom;
};

QuizRun &quizRun();
