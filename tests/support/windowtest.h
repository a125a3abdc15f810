#pragma once

#include <memory>
#include <optional>

#include <QFont>
#include <QPalette>

#include "shell/appdelegate.h"
#include "support/alerts.h"
#include "support/desk.h"
#include "support/standarderror.h"
#include "support/store.h"

/// A test of windows. Every test function starts without a window, with a seeded store whose writes
/// are recorded, and with questions that come in ascending order. It fails if an alert did not come
/// as expected. What it replaces for the whole program is put back: layouts, controllers, palette,
/// font, style sheet.
class WindowTest : public QObject {
    Q_OBJECT

 protected Q_SLOTS:
    void init();
    void cleanup();

 protected:
    std::optional<Alerts> alerts_;

 private:
    const QPalette palette_;
    const QFont font_;
};

/// A test of the whole program, before its first window. What it writes to standard error is kept.
class ProgramTest : public WindowTest {
    Q_OBJECT

 protected Q_SLOTS:
    void init();
    void cleanup();

 protected:
    /// Adds a test row for each layout.
    static void layoutRows();
    /// Opens a window of that layout as a learner does; ends the test program if none opens. The
    /// way back, "MainLayout", needs every other window closed.
    platform::Window *openWindow(const QString &layout);
    /// The titles of the windows on screen, in the order in which they were opened.
    static QStringList openWindows();

    std::optional<StandardError> standardError_;
    std::unique_ptr<AppDelegate> delegate_;
};
