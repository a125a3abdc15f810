#include "quizrun/quizrun.h"

QuizRun &quizRun() {
    static QuizRun run;
    return run;
}
