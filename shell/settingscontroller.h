#pragma once

#include "windowing/outlets.h"
#include "windowing/windowcontroller.h"

/// The settings window: timed or untimed quizzes, and the clearing of all progress.
class SettingsController final : public platform::WindowController {
    Q_OBJECT

 public:
    using WindowController::WindowController;

    platform::RadioOutlet noRadio{*this, "noRadio"};
    platform::RadioOutlet yesRadio{*this, "yesRadio"};

    Q_INVOKABLE void yesTimeSelected();
    Q_INVOKABLE void noTimeSelected();
    Q_INVOKABLE void resetProgress();

    void clearProgress();

 protected:
    void windowDidLoad() override;
};
