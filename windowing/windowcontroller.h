#pragma once

#include <memory>

#include <QObject>
#include <QString>

#include "windowing/layouts.h"
#include "windowing/outlet.h"
#include "windowing/window.h"

namespace platform {

/// Owns one window that is built from a layout by name, when it is first shown.
///
/// A layout whose root carries the property "visibleAtLoad" is on screen before
/// windowDidLoad(), so that an alert raised there appears over its window.
///
/// Controllers are shared: by the properties that hold them, and by their own window for as long
/// as it is on screen. Make them with makeController().
class WindowController : public QObject,
                         public WindowDelegate,
                         public OutletOwner,
                         public std::enable_shared_from_this<WindowController> {
    Q_OBJECT

 public:
    /// Raises Exception where there is no layout of that name.
    explicit WindowController(const QString &layoutName);
    ~WindowController() override;

    /// Loads the window where that has not happened yet, and puts it on screen.
    void showWindow();
    /// Takes the window off the screen without asking windowShouldClose(); a window that was
    /// never loaded stays so.
    void close();
    /// The window, or null before it is loaded.
    Window *window() const { return window_.get(); }

    bool windowShouldClose() override { return true; }

 protected:
    /// The window is built, its outlets are filled, its actions connected.
    virtual void windowDidLoad() {}

 private:
    void load();
    void putOnScreen();
    void windowDidClose() final;

    LayoutBuilder layout_;
    std::unique_ptr<Window> window_;
    std::shared_ptr<WindowController> onScreen_;
};

/// Builds a controller from a layout's name. It is freed from the event loop, never under a
/// method of its own that is still running.
template <class Controller>
std::shared_ptr<Controller> makeController(const QString &layoutName) {
    auto controller = std::make_unique<Controller>(layoutName);
    return {controller.release(), [](Controller *unused) { unused->deleteLater(); }};
}

}  // namespace platform
