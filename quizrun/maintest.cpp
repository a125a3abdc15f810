#include "quizrun/maintest.h"

#include <array>

#include "content/catalogue.h"
#include "content/questionbank.h"
#include "progress/progressstore.h"
#include "progress/quizcomplete.h"
#include "quizrun/quizrun.h"
#include "system/exception.h"
#include "system/format.h"
#include "system/list.h"
#include "system/preferences.h"
#include "windowing/alert.h"

using namespace Qt::StringLiterals;

using platform::Preferences;
using platform::stringWithFormat;

MainTest::MainTest(const QString &layoutName) : WindowController(layoutName) {}

MainTest::~MainTest() = default;

void MainTest::windowDidLoad() {
    WindowController::windowDidLoad();
    lblTimeLeftLabel.setHidden(true);
    lblTimeLeft.setHidden(true);
    lblStatus.setHidden(true);
    btnNextQuestion.setHidden(true);
    imgQuestion.setHidden(true);
    progressbarMain.setDoubleValue(0);

    QuizRun &run = quizRun();
    run.reset();

    Preferences &defaults = Preferences::standardUserDefaults();
    try {
        run.currentTestId = defaults.valueForKey(progressstore::currentTest).value_or(QString());
        LoadCurrentTest();
    } catch (const platform::Exception &) {
        platform::Alert(u"Could not load the selected test."_s, {.defaultButton = u"OK"_s})
            .runModal(window());
    }

    if (defaults.valueForKey(progressstore::timedQuizzes) == u"yes") {
        SetTimer();
    }
    btnNextQuestion.setKeyEquivalent(u"\r"_s);
    window()->setWindowTitle(lblQuizName.stringValue());
    readQuestionOut();
}

void MainTest::LoadCurrentTest() {
    QuizRun &run = quizRun();
    if (const content::Quiz *quiz = content::quizWithId(run.currentTestId)) {
        lblQuizName.setStringValue(quiz->name.toString());
        run.questionCount = quiz->questionCount;
    }
    progressbarMain.setMaxValue(run.questionCount);
    lblProgressPercent.setStringValue(stringWithFormat("1/%i", run.questionCount));
    CreateRandomNumbers();
    SetupQuestion();
}

void MainTest::CreateRandomNumbers() {
    QuizRun &run = quizRun();
    if (const content::Quiz *quiz = content::quizWithId(run.currentTestId)) {
        run.questionOrder = quiz->questionNumbers();
        content::shuffle(run.questionOrder, run.random);
    }
}

void MainTest::SetupQuestion() {
    try {
        const QString entry =
            platform::objectAtIndex(quizRun().questionOrder, quizRun().questionIndex);
#define ASK_IF_ENTRY_IS(number)                               \
    if (entry == QStringLiteral(#number) && (number) <= 74) { \
        Question##number();                                   \
    }
        FOR_EACH_QUESTION_NUMBER(ASK_IF_ENTRY_IS)
#undef ASK_IF_ENTRY_IS
        // The last three are never shown: 74 is shown in their place.
        for (const QStringView unshown : {u"75", u"76", u"77"}) {
            if (entry == unshown) {
                Question74();
            }
        }
    } catch (const platform::Exception &) {
        // The previous question stays on screen.
    }
}

#define DEFINE_QUESTION(number)         \
    void MainTest::Question##number() { \
        putOnScreen(number);            \
    }
FOR_EACH_QUESTION_NUMBER(DEFINE_QUESTION)
#undef DEFINE_QUESTION

void MainTest::putOnScreen(int questionNumber) {
    const content::Question &question = content::question(questionNumber);
    lblQuestion.setStringValue(question.text.toString());
    lblAnswer1.setStringValue(question.answers[0].toString());
    lblAnswer2.setStringValue(question.answers[1].toString());
    lblAnswer3.setStringValue(question.answers[2].toString());
    if (question.thirdButton == content::ThirdButton::Off) {
        btnAnswer3.setEnabled(false);
    }
    quizRun().correctAnswerNumber = question.rightAnswer;
}

void MainTest::Answer1Selected() {
    answerSelected(1);
}

void MainTest::Answer2Selected() {
    answerSelected(2);
}

void MainTest::Answer3Selected() {
    answerSelected(3);
}

void MainTest::answerSelected(int answer) {
    btnAnswer1.setEnabled(false);
    btnAnswer2.setEnabled(false);
    btnAnswer3.setEnabled(false);

    const int right = quizRun().correctAnswerNumber;
    if (right < 1 || right > 3) {
        return;
    }
    lblAnswer1.setAlphaValue(right == 1 ? 1.0 : 0.5);
    lblAnswer2.setAlphaValue(right == 2 ? 1.0 : 0.5);
    lblAnswer3.setAlphaValue(right == 3 ? 1.0 : 0.5);
    markAnswers(right, answer);
    if (right == answer) {
        CorrectAnswer();
    } else {
        WrongAnswer();
    }
}

void MainTest::markAnswers(int right, int chosen) {
    using platform::RowState;
    int answer = 1;
    for (const platform::RowOutlet *row : {&rowAnswer1, &rowAnswer2, &rowAnswer3}) {
        row->setState(answer == right    ? RowState::Right
                      : answer == chosen ? RowState::Wrong
                                         : RowState::Other);
        ++answer;
    }
}

void MainTest::CorrectAnswer() {
    showVerdict(u"correct"_s);
    quizRun().correctCount += 1;
    countAnswer("%.0f %%");
    goOnOrEnd(u"correct"_s);
}

void MainTest::WrongAnswer() {
    showVerdict(u"wrong"_s);
    countAnswer("%.0f%%");
    goOnOrEnd(u"wrong, the right answer is "_s + rightAnswer().accessibleName());
}

void MainTest::showVerdict(const QString &verdict) {
    lblStatus.setTextColor(Qt::white);
    lblStatus.setHidden(false);
    lblStatus.setStringValue(verdict);
}

void MainTest::countAnswer(const char *scoreFormat) {
    QuizRun &run = quizRun();
    run.scoreRatio =
        static_cast<float>(run.correctCount) / static_cast<float>(run.questionIndex + 1);
    lblCorrectPercent.setStringValue(stringWithFormat(scoreFormat, double(run.scoreRatio * 100)));
    run.questionIndex += 1;
}

void MainTest::goOnOrEnd(const QString &verdict) {
    const bool isOver = quizRun().questionIndex + 1 > quizRun().questionCount;
    if (isOver) {
        // The verdict has to be heard before the results.
        readVerdictOut(verdict);
        GameOver();
    }
    btnNextQuestion.setHidden(false);
    if (!isOver) {
        readVerdictOut(verdict);
    }
}

void MainTest::goNextQuestion() {
    QuizRun &run = quizRun();
    lblAnswer1.setAlphaValue(1.0);
    lblAnswer2.setAlphaValue(1.0);
    lblAnswer3.setAlphaValue(1.0);
    lblStatus.setTextColor(Qt::white);
    lblStatus.setHidden(true);
    btnNextQuestion.setHidden(true);
    btnAnswer1.setEnabled(true);
    btnAnswer2.setEnabled(true);
    btnAnswer3.setEnabled(true);
    for (const platform::RowOutlet *row : {&rowAnswer1, &rowAnswer2, &rowAnswer3}) {
        row->setState(platform::RowState::Open);
    }
    imgQuestion.setHidden(true);
    lblProgressPercent.setStringValue(
        stringWithFormat("%i/%i", run.questionIndex + 1, run.questionCount));
    run.progressRatio =
        static_cast<float>(run.questionIndex + 1) / static_cast<float>(run.questionCount);
    progressbarMain.setDoubleValue(run.questionIndex);
    SetupQuestion();
    readQuestionOut();
}

void MainTest::readQuestionOut() {
    const QString position =
        u"Question %1 of %2"_s.arg(quizRun().questionIndex + 1).arg(quizRun().questionCount);
    lblProgressPercent.setAccessibleName(position);
    btnAnswer1.setAccessibleDescription(position);
    btnAnswer2.setAccessibleDescription(QString());
    btnAnswer3.setAccessibleDescription(QString());
    btnAnswer1.setFocus();
}

void MainTest::readVerdictOut(const QString &verdict) {
    btnAnswer1.setAccessibleDescription(QString());
    rightAnswer().setAccessibleDescription(u"the right answer"_s);
    const QString withScore = u"%1, score %2"_s.arg(verdict, lblCorrectPercent.stringValue());
    if constexpr (!platform::ButtonOutlet::announces) {
        btnNextQuestion.setAccessibleDescription(withScore);
    }
    btnNextQuestion.setFocus();
    // Only after the focus has moved: what is read out then would cut the announcement short.
    btnNextQuestion.announce(withScore);
}

const platform::ButtonOutlet &MainTest::rightAnswer() const {
    const std::array answers{&btnAnswer1, &btnAnswer2, &btnAnswer3};
    return *answers.at(static_cast<std::size_t>(quizRun().correctAnswerNumber - 1));
}
