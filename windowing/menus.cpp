#include "windowing/menus.h"

#include <QAccessible>
#include <QActionGroup>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>

#include "look/layoutproperties.h"
#include "windowing/bringtofront.h"
#include "windowing/window.h"

using namespace Qt::StringLiterals;

namespace platform {

Menus::Menus(Window &mainLayout) : mainLayout_(mainLayout) {
    describe(*mainLayout_.menuBar());
#ifdef Q_OS_MACOS
    desktopMenuBar_ = std::make_unique<QMenuBar>();
    desktopMenuBar_->addActions(mainLayout_.menuBar()->actions());
#endif
}

Menus::~Menus() = default;

void Menus::provideMenuBar(Window &window) {
    // In this order, because menuBar() makes a menu bar if the window has none.
    if (desktopMenuBar_ || !window.menuBar()->actions().isEmpty()) {
        return;
    }
    QMenuBar &menuBar = *window.menuBar();
    // All windows share the items, but not the menus that hold them: to a screen reader a menu
    // belongs to one window.
    for (const QAction *shared : mainLayout_.menuBar()->actions()) {
        QMenu *menu = menuBar.addMenu(shared->text());
        menu->setProperty(layoutproperties::listsWindows,
                          shared->menu()->property(layoutproperties::listsWindows));
        menu->addActions(shared->menu()->actions());
        connect(menu, &QObject::destroyed, this, &Menus::forgetAccessibleItems);
    }
    describe(menuBar);
}

void Menus::describe(QMenuBar &menuBar) {
    menuBar.setAccessibleName(u"Menu bar"_s);
    for (const QAction *action : menuBar.actions()) {
        // The name by which a screen reader knows an open menu.
        QMenu *menu = action->menu();
        menu->setWindowTitle(action->iconText());
        connect(menu, &QMenu::aboutToShow, this, &Menus::forgetAccessibleItems);
        if (menu->property(layoutproperties::listsWindows).toBool()) {
            connect(menu, &QMenu::aboutToShow, this, [this, menu] { listWindows(*menu); });
        }
    }
}

void Menus::listWindows(QMenu &menu) {
    qDeleteAll(menu.findChildren<QActionGroup *>());
    auto *listed = new QActionGroup(&menu);
    (new QAction(listed))->setSeparator(true);
    for (const QPointer<Window> &window : Window::onScreen()) {
        if (window == &mainLayout_) {
            continue;
        }
        // The number tells windows with the same title apart, and is the key of the first nine.
        const qsizetype number = listed->actions().size();
        QString title = window->windowTitle();
        title.replace(u'&', u"&&"_s);
        auto *item = new QAction(
            (number < 10 ? u"&%1 %2"_s : u"%1 %2"_s).arg(QString::number(number), title), listed);
        item->setMenuRole(QAction::NoRole);
        item->setCheckable(true);
        item->setChecked(window->isActiveWindow());
        connect(item, &QAction::triggered, window, [window] { bringToFront(*window); });
    }
    if (listed->actions().size() > 1) {
        menu.addActions(listed->actions());
    }
}

void Menus::forgetAccessibleItems() {
    // To a screen reader each item belongs to the first menu in which it was found: it is hidden in
    // all others, and lost with that one.
    for (const QAction *menu : mainLayout_.menuBar()->actions()) {
        for (QAction *item : menu->menu()->actions()) {
            if (QAccessibleInterface *known = QAccessible::queryAccessibleInterface(item)) {
                QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(known));
            }
        }
    }
}

}  // namespace platform
