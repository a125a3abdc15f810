#pragma once

#include "windowing/outlets.h"
#include "windowing/windowcontroller.h"

/// The results window: what the store says about the attempt that has just ended.
class QuizComplete final : public platform::WindowController {
    Q_OBJECT

 public:
    using WindowController::WindowController;

    platform::TextOutlet lblQuizName{*this, "lblQuizName"};
    platform::TextOutlet lblTheStatus{*this, "lblTheStatus"};
    platform::ImageOutlet theImage1{*this, "theImage1"};
    platform::ImageOutlet theImage2{*this, "theImage2"};
    platform::ImageOutlet theImage3{*this, "theImage3"};
    platform::BannerOutlet stage{*this, "stage"};

    Q_INVOKABLE void goHome();

    /// Fills the window and opens the main menu.
    void GetTestResults();
    /// Sets the marks and the sentence for a pass count of 0 to 3; any other changes nothing.
    void SetCheckMarks(int passCount);

 protected:
    void windowDidLoad() override;
};
