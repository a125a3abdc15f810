#pragma once

#include "windowing/windowcontroller.h"

/// The help window.
class Help final : public platform::WindowController {
    Q_OBJECT

 public:
    using WindowController::WindowController;

    Q_INVOKABLE void closeHelp() { close(); }
};
