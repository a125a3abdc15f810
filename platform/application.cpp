#include "platform/application.h"

#include <algorithm>
#include <utility>

#ifdef Q_OS_LINUX
#include <unistd.h>
#endif

#include <QAccessible>
#include <QActionGroup>
#include <QDir>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QResource>
#include <QTimer>
#include <QWindow>

#include "platform/accessibility.h"
#include "platform/actions.h"
#include "platform/keyrepeat.h"
#include "platform/layouts.h"
#include "platform/style.h"
#include "platform/theme.h"

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

}  // namespace

Application::Application(int &argc, char **argv) : QApplication(argc, argv) {
    setApplicationName(u"zorvan"_s);
    setApplicationDisplayName(u"Zorvan"_s);
    setApplicationVersion(QStringLiteral(ZORVAN_VERSION));
    setDesktopFileName(QStringLiteral(ZORVAN_ID));
    setWindowIcon(programIcon());
    setQuitOnLastWindowClosed(false);
    QAccessible::installFactory(describeControl);
    installEventFilter(new KeyRepeat(this));
    installEventFilter(this);
#ifndef Q_OS_MACOS
    setStyle(new Style);
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
    describeMenus(*mainLayout_->menuBar());
#ifdef Q_OS_MACOS
    desktopMenuBar_ = std::make_unique<QMenuBar>();
    desktopMenuBar_->addActions(mainLayout_->menuBar()->actions());
#endif
}

void Application::closeWindow() {
    if (QWidget *window = activeWindow()) {
        window->close();
    }
}

void Application::about() {
    auto *box = new QMessageBox(activeWindow());
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowTitle(u"About Zorvan"_s);
    box->setTextFormat(Qt::PlainText);
    const int side = 4 * box->fontMetrics().lineSpacing();
    box->setIconPixmap(
        QIcon(u":/icons/zorvan-256.png"_s).pixmap(QSize(side, side), box->devicePixelRatioF()));
    box->setText(u"Zorvan %1"_s.arg(applicationVersion()));
    box->setInformativeText(QStringLiteral(ZORVAN_DESCRIPTION ".\n\nQt ") +
                            QString::fromLatin1(qVersion()));
    box->setDefaultButton(box->addButton(u"OK"_s, QMessageBox::AcceptRole));
    for (QLabel *label : box->findChildren<QLabel *>()) {
        if (!label->pixmap().isNull()) {
            label->setAccessibleName(applicationDisplayName());
        }
    }
    theme::dress(*box);
    box->setModal(false);
    box->show();
}

void Application::willShow(Window &window) {
    if (!mainLayout_) {
        return;
    }
#ifndef Q_OS_MACOS
    if (window.menuBar()->actions().isEmpty()) {
        fillMenuBar(window);
    }
#endif
    mainLayout_->hide();
}

void Application::fillMenuBar(Window &window) {
    // The items are the same in every window, the menus that hold them are not: to a screen
    // reader a menu belongs to one window.
    for (const QAction *shared : mainLayout_->menuBar()->actions()) {
        QMenu *menu = window.menuBar()->addMenu(shared->text());
        menu->setProperty("listsWindows", shared->menu()->property("listsWindows"));
        menu->addActions(shared->menu()->actions());
        connect(menu, &QObject::destroyed, this, &Application::forgetAccessibleItems);
    }
    describeMenus(*window.menuBar());
}

void Application::describeMenus(QMenuBar &menuBar) {
    menuBar.setAccessibleName(u"Menu bar"_s);
    for (const QAction *action : menuBar.actions()) {
        // The name by which a screen reader knows an open menu.
        QMenu *menu = action->menu();
        menu->setWindowTitle(action->iconText());
        connect(menu, &QMenu::aboutToShow, this, &Application::forgetAccessibleItems);
        if (menu->property("listsWindows").toBool()) {
            connect(menu, &QMenu::aboutToShow, this, [this, menu] { listWindows(*menu); });
        }
    }
}

void Application::listWindows(QMenu &menu) {
    qDeleteAll(menu.findChildren<QActionGroup *>());
    auto *listed = new QActionGroup(&menu);
    (new QAction(listed))->setSeparator(true);
    for (const QPointer<Window> &window : openWindows()) {
        if (window == mainLayout_.get()) {
            continue;
        }
        // The number tells windows of one title apart, and is the key of the first nine.
        const qsizetype number = listed->actions().size();
        QString title = window->windowTitle();
        title.replace(u'&', u"&&"_s);
        auto *item = new QAction(
            (number < 10 ? u"&%1 %2"_s : u"%1 %2"_s).arg(QString::number(number), title), listed);
        item->setMenuRole(QAction::NoRole);
        item->setCheckable(true);
        item->setChecked(window->isActiveWindow());
        connect(item, &QAction::triggered, window, &Window::bringToFront);
    }
    if (listed->actions().size() > 1) {
        menu.addActions(listed->actions());
    }
}

void Application::forgetAccessibleItems() {
    // Each is known as an item of the first menu that a screen reader found it in: hidden in all
    // others, and lost with that one.
    for (const QAction *menu : mainLayout_->menuBar()->actions()) {
        for (QAction *item : menu->menu()->actions()) {
            if (QAccessibleInterface *known = QAccessible::queryAccessibleInterface(item)) {
                QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(known));
            }
        }
    }
}

void Application::didClose() {
    // Another window may be on its way.
    QTimer::singleShot(0, this, &Application::offerWayBack);
}

void Application::offerWayBack() {
#ifndef Q_OS_MACOS
    if (quitting_ || !mainLayout_) {
        return;
    }
    if (!openWindows().isEmpty()) {
        return;
    }
    if (!std::exchange(wayBackIsDressed_, true)) {
        theme::dress(*mainLayout_);
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
    return std::ranges::all_of(openWindows(), [](const QPointer<Window> &window) {
        return window.isNull() || !window->isVisible() || window->mayClose();
    });
}

QList<QPointer<Window>> Application::openWindows() {
    // The order is that of their handles; topLevelWidgets() keeps none.
    QList<QPointer<Window>> windows;
    for (const QWindow *handle : topLevelWindows()) {
        if (handle->isVisible()) {
            if (auto *window = qobject_cast<Window *>(QWidget::find(handle->winId()))) {
                windows << window;
            }
        }
    }
    return windows;
}

}  // namespace platform
