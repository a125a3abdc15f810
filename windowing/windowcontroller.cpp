#include "windowing/windowcontroller.h"

#include "look/layoutproperties.h"
#include "look/polish.h"
#include "windowing/actions.h"
#include "windowing/application.h"
#include "windowing/shortcuts.h"

namespace platform {

WindowController::WindowController(const QString &layoutName) : layout_(layoutNamed(layoutName)) {}

WindowController::~WindowController() = default;

void WindowController::showWindow() {
    if (!window_) {
        load();
    }
    putOnScreen();
}

void WindowController::load() {
    window_ = std::make_unique<Window>(*this);
    try {
        fillWindow(*window_, layout_);
        look::keepPolished(*window_, [this] { window_->fitToContent(); });
        fillOutlets(*window_);
        connectActions(*window_, {this});
        connectShortcuts(*window_);
        if (window_->property(layoutproperties::visibleAtLoad).toBool()) {
            putOnScreen();
        }
        windowDidLoad();
    } catch (...) {
        close();
        window_.reset();
        throw;
    }
}

void WindowController::putOnScreen() {
    onScreen_ = shared_from_this();
    Application::shared().willShow(*window_);
    window_->fitToScreen();
    window_->show();
}

void WindowController::close() {
    if (window_) {
        window_->closeUnasked();
    }
}

void WindowController::windowDidClose() {
    Application::shared().didClose();
    onScreen_.reset();
}

}  // namespace platform
