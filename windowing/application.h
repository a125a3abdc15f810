#pragma once

#include <memory>

#include <QApplication>
#include <QPointer>
#include <QTimer>

#include "windowing/window.h"

namespace platform {

class Menus;
class MessageBox;

/// The event loop, the one menu bar, and the way back when no window is left.
///
/// The main layout "MainLayout" holds the menu bar, whose items call the program's delegate or this
/// application. If the desktop has no menu bar of its own, every window shows this one, and when
/// the last window has closed, the main layout's small window appears until another opens.
class Application final : public QApplication, public WindowDelegate {
    Q_OBJECT

 public:
    Application(int &argc, char **argv);
    ~Application() override;

    static Application &shared();

    /// Builds the main layout. Its menu items call `delegate`, or this application if the delegate
    /// lacks the method.
    void loadMainLayout(QObject &delegate);

    /// Closes the window in front.
    Q_INVOKABLE void closeWindow();
    /// Shows the program's version and what it runs on.
    Q_INVOKABLE void about();

    /// To be called before a window is put on screen.
    void willShow(Window &window);
    /// To be called when a window closes.
    void didClose();
    /// To be called when a window that had the keyboard is gone: some window managers now and then
    /// give the keyboard to none of the windows that are left.
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
    QPointer<MessageBox> aboutBox_;
    QTimer keyboardKeeper_;
    bool quitting_ = false;
};

}  // namespace platform
