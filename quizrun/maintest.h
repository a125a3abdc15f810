#pragma once

#include <memory>

#include "content/questionnumbers.h"
#include "platform/outlets.h"
#include "platform/windowcontroller.h"

class QuizComplete;

/// The quiz window: one attempt at the quiz that the store names, from its first question to its
/// grade.
class MainTest final : public platform::WindowController {
    Q_OBJECT

 public:
    explicit MainTest(const QString &layoutName);
    ~MainTest() override;

    platform::TextField lblQuizName{*this, "lblQuizName"};
    platform::TextField lblProgressPercent{*this, "lblProgressPercent"};
    platform::TextField lblQuestion{*this, "lblQuestion"};
    platform::TextField lblCorrectPercent{*this, "lblCorrectPercent"};
    platform::TextField lblStatus{*this, "lblStatus"};
    platform::TextField lblAnswer1{*this, "lblAnswer1"};
    platform::TextField lblAnswer2{*this, "lblAnswer2"};
    platform::TextField lblAnswer3{*this, "lblAnswer3"};
    platform::TextField lblTimeLeftLabel{*this, "lblTimeLeftLabel"};
    platform::TextField lblTimeLeft{*this, "lblTimeLeft"};
    platform::Button btnAnswer1{*this, "btnAnswer1"};
    platform::Button btnAnswer2{*this, "btnAnswer2"};
    platform::Button btnAnswer3{*this, "btnAnswer3"};
    platform::Row rowAnswer1{*this, "rowAnswer1"};
    platform::Row rowAnswer2{*this, "rowAnswer2"};
    platform::Row rowAnswer3{*this, "rowAnswer3"};
    platform::Button btnNextQuestion{*this, "btnNextQuestion"};
    platform::LevelOutlet progressbarMain{*this, "progressbarMain"};
    platform::ImageView imgQuestion{*this, "imgQuestion"};
    std::shared_ptr<QuizComplete> quizComplete;

    Q_INVOKABLE void Answer1Selected();
    Q_INVOKABLE void Answer2Selected();
    Q_INVOKABLE void Answer3Selected();
    Q_INVOKABLE void goNextQuestion();

    void LoadCurrentTest();
    void CreateRandomNumbers();
    void SetupQuestion();
    void CorrectAnswer();
    void WrongAnswer();

    void SetTimer();
    void timerFired();

    void GameOver();
    bool windowShouldClose() override;

    // Question1() to Question77() put that question on screen.
#define DECLARE_QUESTION(number) void Question##number();
    FOR_EACH_QUESTION_NUMBER(DECLARE_QUESTION)
#undef DECLARE_QUESTION

 protected:
    void windowDidLoad() override;

 private:
    void putOnScreen(int questionNumber);
    void answerSelected(int answer);
    void markAnswers(int right, int chosen);
    void showVerdict(const QString &verdict);
    void countAnswer(const char *scoreFormat);
    void goOnOrEnd(const QString &verdict);

    // A screen reader says what the focus moves to and what that stands in: the question with the
    // first answer, the verdict with the button that goes on.
    void readQuestionOut();
    void readVerdictOut(const QString &verdict);
    const platform::Button &rightAnswer() const;

    void timeIsUp();
    void showResults();
};
