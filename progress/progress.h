#pragma once

#include "platform/outlets.h"
#include "platform/windowcontroller.h"

/// The progress window: how far quizzes 1 to 6 have come, in percent.
class progress final : public platform::WindowController {
    Q_OBJECT

 public:
    using WindowController::WindowController;

    platform::TextField lblQuiz1Progress{*this, "lblQuiz1Progress"};
    platform::TextField lblQuiz2Progress{*this, "lblQuiz2Progress"};
    platform::TextField lblQuiz3Progress{*this, "lblQuiz3Progress"};
    platform::TextField lblQuiz4Progress{*this, "lblQuiz4Progress"};
    platform::TextField lblQuiz5Progress{*this, "lblQuiz5Progress"};
    platform::TextField lblQuiz6Progress{*this, "lblQuiz6Progress"};

    void SetProgressBars();

 protected:
    void windowDidLoad() override;
};
