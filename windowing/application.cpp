#include "windowing/application.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include <QAccessible>
#include <QTimer>

#include "controls/accessibility.h"
#include "controls/messagebox.h"
#include "look/focus.h"
#include "look/polish.h"
#include "look/style.h"
#include "windowing/aboutbox.h"
#include "windowing/actions.h"
#include "windowing/basesize.h"
#include "windowing/bringtofront.h"
#include "windowing/keyrepeat.h"
#include "windowing/layouts.h"
#include "windowing/menus.h"
#include "windowing/pckeynames.h"
#include "windowing/programicon.h"

using namespace Qt::StringLiterals;

namespace platform {

Application::Application(int &argc, char **argv) : QApplication(argc, argv) {
    setApplicationName(u"zorvan"_s);
    setApplicationDisplayName(u"Zorvan"_s);
    setApplicationVersion(QStringLiteral(ZORVAN_VERSION));
    setDesktopFileName(QStringLiteral(ZORVAN_ID));
    setWindowIcon(programIcon());
    setQuitOnLastWindowClosed(false);
    // Code that is mirrored reads differently.
    setLayoutDirection(Qt::LeftToRight);
    QAccessible::installFactory(describeControl);
    installEventFilter(new KeyRepeat(this));
    installEventFilter(new BaseSize(this));
    installEventFilter(new look::FocusVisibility(this));
    keyboardKeeper_.setSingleShot(true);
    connect(&keyboardKeeper_, &QTimer::timeout, this, &Application::activateAWindow);
#if defined(Q_OS_WIN)
    // Windows' own style draws no dark windows.
    setStyle(new look::Style(u"Fusion"_s));
    installTranslator(new PcKeyNames(this));
#elif !defined(Q_OS_MACOS)
    setStyle(new look::Style);
#endif
}

Application::~Application() {
    // Controllers released at the very end are still waiting to be freed, and after them what they
    // held.
    for (qsizetype before = -1, left = topLevelWidgets().size(); left != before;) {
        before = left;
        sendPostedEvents(nullptr, QEvent::DeferredDelete);
        left = topLevelWidgets().size();
    }
}

Application &Application::shared() {
    return *qobject_cast<Application *>(instance());
}

void Application::loadMainLayout(QObject &delegate) {
    mainLayout_ = std::make_unique<Window>(*this);
    fillWindow(*mainLayout_, layoutNamed(u"MainLayout"_s));
    connectActions(*mainLayout_, {&delegate, this});
    menus_ = std::make_unique<Menus>(*mainLayout_);
}

void Application::closeWindow() {
    if (QWidget *window = activeWindow()) {
        window->close();
    }
}

void Application::about() {
    if (aboutBox_.isNull()) {
        aboutBox_ = newAboutBox(activeWindow());
    }
    keyboardKeeper_.stop();
    aboutBox_->show();
    bringToFront(*aboutBox_);
}

void Application::willShow(Window &window) {
    if (!window.isVisible()) {
        // A window that appears gets the keyboard.
        keyboardKeeper_.stop();
    }
    if (mainLayout_) {
        menus_->provideMenuBar(window);
        mainLayout_->hide();
    }
}

void Application::didClose() {
    // Another window may be about to open.
    QTimer::singleShot(0, this, &Application::offerWayBack);
    if (focusWindow() != nullptr) {
        keepTheKeyboard();
    }
}

void Application::keepTheKeyboard() {
    constexpr std::chrono::milliseconds untilTheDesktopHasChosen(300);
    keyboardKeeper_.start(untilTheDesktopHasChosen);
}

void Application::activateAWindow() {
    Window *front = Window::inFront();
    if (focusWindow() == nullptr && front != nullptr && !front->isMinimized()) {
        bringToFront(*front);
    }
}

void Application::offerWayBack() {
#ifndef Q_OS_MACOS
    if (quitting_ || !mainLayout_ || !Window::onScreen().isEmpty()) {
        return;
    }
    if (!std::exchange(wayBackIsPolished_, true)) {
        look::keepPolished(*mainLayout_, [this] { mainLayout_->fitToContent(); });
    }
    mainLayout_->show();
#endif
}

bool Application::event(QEvent *event) {
    if (event->type() != QEvent::Quit) {
        return QApplication::event(event);
    }
    if (!everyWindowAgreesToClose()) {
        event->ignore();
        return true;
    }
    quitting_ = true;
    for (QWidget *widget : topLevelWidgets()) {
        if (auto *window = qobject_cast<Window *>(widget)) {
            window->closeUnasked();
        }
    }
    return QApplication::event(event);
}

bool Application::everyWindowAgreesToClose() {
    // Some windows may be freed while others are asked.
    return std::ranges::all_of(Window::onScreen(), [](const QPointer<Window> &window) {
        return window.isNull() || !window->isVisible() || window->mayClose();
    });
}

}  // namespace platform
