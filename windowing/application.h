#pragma once

#include <memory>

#include <QApplication>
#include <QPointer>
#include <QTimer>

#include "windowing/window.h"

class QMessageBox;

namespace platform {

class Menus;

/// The event loop, the one menu bar, and the way back when no window is left.
///
/// The main layout "MainLayout" holds the menu bar, whose items call the delegate of the program
/// or this application. Where the desktop has no menu bar of its own, every window shows it; and
/// when the last window has closed, the main layout's small window appears until another opens.
class Application final : public QApplication, public WindowDelegate {
    Q_OBJECT

 public:
    Application(int &argc, char **argv);
    ~Application() override;

    static Application &shared();

    /// Builds the main layout; its menu items call `delegate`, and this application for what the
    /// delegate lacks.
    void loadMainLayout(QObject &delegate);

    /// Closes the window in front.
    Q_INVOKABLE void closeWindow();
    /// Tells the program's version and what it runs on.
    Q_INVOKABLE void about();

    /// Called by whoever puts a window on screen, before it appears.
    void willShow(Window &window);
    /// Called by whoever owns a window, as it closes.
    void didClose();
    /// Called when a window that had the keyboard has gone: some window managers now and then give
    /// it to none of those that are left.
    void keepTheKeyboard();

 protected:
    bool event(QEvent *event) override;

 private:
    bool windowShouldClose() override { return true; }
    void windowDidClose() override { quit(); }
    void offerWayBack();
    static void activateAWindow();
    static bool everyWindowAgreesToClose();

    std::unique_ptr<Window> mainLayout_;
    std::unique_ptr<Menus> menus_;
    bool wayBackIsPolished_ = false;
    QPointer<QMessageBox> aboutBox_;
    QTimer keyboardKeeper_;
    bool quitting_ = false;
};

}  // namespace platform
