#pragma once

#include "windowing/windowcontroller.h"

class Help final : public platform::WindowController {
    Q_OBJECT

 public:
    using WindowController::WindowController;

    Q_INVOKABLE void closeHelp() { close(); }
};
