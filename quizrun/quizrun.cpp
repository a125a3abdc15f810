#include "quizrun/quizrun.h"

void QuizRun::reset() {
    correctAnswerNumber = 0;
    progressRatio = 0;
    questionIndex = 0;
    correctCount = 0;
    currentTestId = QString();
    spareLong = 0;
    spareInt = 0;
    questionCount = 0;
}

QuizRun &quizRun() {
    static QuizRun run;
    return run;
}
