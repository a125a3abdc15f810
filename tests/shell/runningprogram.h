#pragma once

#include <memory>

#include "quizrun/quizrun.h"
#include "shell/appdelegate.h"
#include "support/alerts.h"
#include "support/desk.h"
#include "support/standarderror.h"
#include "support/store.h"
#include "windowing/application.h"

/// The program before its first window: its menu bar, a seeded store, and questions that come in
/// ascending order.
struct RunningProgram {
    RunningProgram() {
        store::fill(store::seeded());
        quizRun().random = [] { return 0U; };
        platform::Application::shared().loadMainLayout(*delegate);
    }

    /// Closes all windows; returns false if an alert did not come as expected.
    bool end() {
        delegate.reset();
        desk::clear();
        standardError.reset();
        return alerts->verify();
    }

    std::unique_ptr<Alerts> alerts = std::make_unique<Alerts>();
    std::unique_ptr<StandardError> standardError = std::make_unique<StandardError>();
    std::unique_ptr<AppDelegate> delegate = std::make_unique<AppDelegate>();
};
