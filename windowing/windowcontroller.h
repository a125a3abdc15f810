#pragma once

#include <memory>

#include <QObject>
#include <QString>

#include "windowing/layouts.h"
#include "windowing/outlet.h"
#include "windowing/window.h"

namespace platform {

/// Owns one window, which is built from a named layout when it is first shown.
///
/// If the root of the layout has the property "visibleAtLoad", the window is on screen before
/// windowDidLoad(), so that an alert raised there appears over it.
///
/// A controller is shared by the properties that hold it and, while its window is on screen, by
/// that window. Make controllers with makeController().
class WindowController : public QObject,
                         public WindowDelegate,
                         public OutletOwner,
                         public std::enable_shared_from_this<WindowController> {
    Q_OBJECT

 public:
    /// Throws Exception if there is no layout of that name.
    explicit WindowController(const QString &layoutName);
    ~WindowController() override;

    /// Loads the window if that has not happened yet, and puts it on screen.
    void showWindow();
    /// Takes the window off the screen without asking windowShouldClose(). Does nothing if the
    /// window was never loaded.
    void close();
    /// The window, or null before it is loaded.
    Window *window() const { return window_.get(); }

    bool windowShouldClose() override { return true; }

 protected:
    /// Called when the window is built, its outlets are filled and its actions are connected.
    virtual void windowDidLoad() {}

 private:
    void load();
    void putOnScreen();
    void windowDidClose() final;

    LayoutBuilder layout_;
    std::unique_ptr<Window> window_;
    std::shared_ptr<WindowController> onScreen_;
};

/// Builds a controller from a layout's name. The event loop frees it, never while one of its own
/// methods is running.
template <class Controller>
std::shared_ptr<Controller> makeController(const QString &layoutName) {
    auto controller = std::make_unique<Controller>(layoutName);
    return {controller.release(), [](Controller *unused) { unused->deleteLater(); }};
}

}  // namespace platform
