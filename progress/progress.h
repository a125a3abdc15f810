#pragma once

#include "windowing/outlets.h"
#include "windowing/windowcontroller.h"

/// The progress window: how far the learner has come with quizzes 1 to 6, in percent.
class progress final : public platform::WindowController {
    Q_OBJECT

 public:
    using WindowController::WindowController;

    platform::TextOutlet lblQuiz1Progress{*this, "lblQuiz1Progress"};
    platform::TextOutlet lblQuiz2Progress{*this, "lblQuiz2Progress"};
    platform::TextOutlet lblQuiz3Progress{*this, "lblQuiz3Progress"};
    platform::TextOutlet lblQuiz4Progress{*this, "lblQuiz4Progress"};
    platform::TextOutlet lblQuiz5Progress{*this, "lblQuiz5Progress"};
    platform::TextOutlet lblQuiz6Progress{*this, "lblQuiz6Progress"};

    platform::LevelOutlet progressbarQuiz1{*this, "progressbarQuiz1"};
    platform::LevelOutlet progressbarQuiz2{*this, "progressbarQuiz2"};
    platform::LevelOutlet progressbarQuiz3{*this, "progressbarQuiz3"};
    platform::LevelOutlet progressbarQuiz4{*this, "progressbarQuiz4"};
    platform::LevelOutlet progressbarQuiz5{*this, "progressbarQuiz5"};
    platform::LevelOutlet progressbarQuiz6{*this, "progressbarQuiz6"};

    void SetProgressBars();

 protected:
    void windowDidLoad() override;
};
