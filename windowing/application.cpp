#include "windowing/application.h"

#include <algorithm>
#include <chrono>
#include <utility>

#ifdef Q_OS_LINUX
#include <unistd.h>
#endif

#include <QAccessible>
#include <QDir>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QResource>
#include <QTimer>

#include "controls/accessibility.h"
#include "look/polish.h"
#include "look/style.h"
#include "windowing/actions.h"
#include "windowing/keyrepeat.h"
#include "windowing/layouts.h"
#include "windowing/menus.h"

using namespace Qt::StringLiterals;

namespace platform {

void provideRuntimeFolder() {
#ifdef Q_OS_LINUX
    constexpr const char *variable = "XDG_RUNTIME_DIR";
    if (qEnvironmentVariableIsSet(variable)) {
        return;
    }
    const QString folder = u"%1/runtime-%2"_s.arg(QDir::tempPath()).arg(getuid());
    QDir().mkdir(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv(variable, QFile::encodeName(folder));
#endif
}

namespace {

/// From plain pixels, a file for each size, named by it: to read a picture file the toolkit loads
/// all that it has for any kind of them.
QIcon programIcon() {
    QIcon icon;
    const QDir sizes(u":/window-icon"_s);
    for (const QString &size : sizes.entryList()) {
        const QResource pixels(sizes.filePath(size));
        icon.addPixmap(QPixmap::fromImage(
            QImage(pixels.data(), size.toInt(), size.toInt(), QImage::Format_RGBA8888)));
    }
    return icon;
}

void giveIcon(QMessageBox &box) {
    const int side = 4 * box.fontMetrics().lineSpacing();
    box.setIconPixmap(
        QIcon(u":/icons/zorvan-256.png"_s).pixmap(QSize(side, side), box.devicePixelRatioF()));
}

QMessageBox *newAboutBox(QWidget *parent) {
    auto *box = new QMessageBox(parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowTitle(u"About Zorvan"_s);
    box->setTextFormat(Qt::PlainText);
    giveIcon(*box);
    box->setText(u"Zorvan %1"_s.arg(QCoreApplication::applicationVersion()));
    box->setInformativeText(QStringLiteral(ZORVAN_DESCRIPTION ".\n\nQt ") +
                            QString::fromLatin1(qVersion()));
    box->setDefaultButton(box->addButton(u"OK"_s, QMessageBox::AcceptRole));
    for (QLabel *label : box->findChildren<QLabel *>()) {
        if (!label->pixmap().isNull()) {
            label->setAccessibleName(QGuiApplication::applicationDisplayName());
        }
    }
    look::keepPolished(*box, [box] {
        // It makes the layout anew.
        giveIcon(*box);
        look::polish(*box);
    });
    box->setModal(false);
    return box;
}

}  // namespace

Application::Application(int &argc, char **argv) : QApplication(argc, argv) {
    setApplicationName(u"zorvan"_s);
    setApplicationDisplayName(u"Zorvan"_s);
    setApplicationVersion(QStringLiteral(ZORVAN_VERSION));
    setDesktopFileName(QStringLiteral(ZORVAN_ID));
    setWindowIcon(programIcon());
    setQuitOnLastWindowClosed(false);
    // Mirrored, code says something else.
    setLayoutDirection(Qt::LeftToRight);
    QAccessible::installFactory(describeControl);
    installEventFilter(new KeyRepeat(this));
    installEventFilter(this);
    keyboardKeeper_.setSingleShot(true);
    connect(&keyboardKeeper_, &QTimer::timeout, this, &Application::activateAWindow);
#ifndef Q_OS_MACOS
    setStyle(new look::Style);
#endif
}

Application::~Application() {
    // Controllers let go of at the very end are still waiting to be freed, and what they held after
    // them.
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
    layoutNamed(u"MainLayout"_s)(*mainLayout_);
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
    aboutBox_->show();
    bringToFront(*aboutBox_);
}

void Application::willShow(Window &window) {
    if (!window.isVisible()) {
        // What appears gets the keyboard.
        keyboardKeeper_.stop();
    }
    if (mainLayout_) {
        menus_->provideMenuBar(window);
        mainLayout_->hide();
    }
}

void Application::didClose() {
    // Another window may be on its way.
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

bool Application::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::Resize && watched->isWidgetType()) {
        // On a screen that scales by a fraction the toolkit lets windows be resized in steps. These
        // count from the base size; from nothing, a step would end below the least size.
        if (auto *widget = static_cast<QWidget *>(watched); widget->isWindow()) {
            widget->setBaseSize(widget->size());
        }
    }
    return QApplication::eventFilter(watched, event);
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
    // Some may go while others are asked.
    return std::ranges::all_of(Window::onScreen(), [](const QPointer<Window> &window) {
        return window.isNull() || !window->isVisible() || window->mayClose();
    });
}

}  // namespace platform
