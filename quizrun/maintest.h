#pragma once

#include <memory>

#include "content/questionnumbers.h"
#include "windowing/outlets.h"
#include "windowing/windowcontroller.h"

class QuizComplete;

/// The quiz window: one attempt at the quiz that the store names, from its first question to its
/// grade.
class MainTest final : public platform::WindowController {
    Q_OBJECT

 public:
    explicit MainTest(const QString &layoutName);
    ~MainTest() override;

    platform::TextOutlet lblQuizName{*this, "lblQuizName"};
    platform::TextOutlet lblProgressPercent{*this, "lblProgressPercent"};
    platform::TextOutlet lblQuestion{*this, "lblQuestion"};
    platform::TextOutlet lblCorrectPercent{*this, "lblCorrectPercent"};
    platform::TextOutlet lblStatus{*this, "lblStatus"};
    platform::TextOutlet lblAnswer1{*this, "lblAnswer1"};
    platform::TextOutlet lblAnswer2{*this, "lblAnswer2"};
    platform::TextOutlet lblAnswer3{*this, "lblAnswer3"};
    platform::TextOutlet lblTimeLeftLabel{*this, "lblTimeLeftLabel"};
    platform::TextOutlet lblTimeLeft{*this, "lblTimeLeft"};
    platform::ButtonOutlet btnAnswer1{*this, "btnAnswer1"};
    platform::ButtonOutlet btnAnswer2{*this, "btnAnswer2"};
    platform::ButtonOutlet btnAnswer3{*this, "btnAnswer3"};
    platform::RowOutlet rowAnswer1{*this, "rowAnswer1"};
    platform::RowOutlet rowAnswer2{*this, "rowAnswer2"};
    platform::RowOutlet rowAnswer3{*this, "rowAnswer3"};
    platform::ButtonOutlet btnNextQuestion{*this, "btnNextQuestion"};
    platform::LevelOutlet progressbarMain{*this, "progressbarMain"};
    platform::ImageOutlet imgQuestion{*this, "imgQuestion"};
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

    // A screen reader reads out the control that gets the focus and the group that it is in: the
    // question with the first answer, the verdict with the button for the next question.
    void readQuestionOut();
    void readVerdictOut(const QString &verdict);
    const platform::ButtonOutlet &rightAnswer() const;

    void timeIsUp();
    void showResults();
};
