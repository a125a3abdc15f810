#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QThread>

#include "monkey/dice.h"
#include "monkey/hands.h"
#include "monkey/journal.h"
#include "monkey/keys.h"
#include "windowing/window.h"

using namespace Qt::StringLiterals;

void Hands::openMenu() {
    auto *window = qobject_cast<platform::Window *>(&activated(anyWindow()));
    if (window == nullptr) {
        return;
    }
    QMenuBar &bar = *window->menuBar();
    const QList<QAction *> menus = bar.actions();
    QAction &menu = *dice_.pick(menus);
    const QPoint title = bar.actionGeometry(&menu).center();
    // A title for which the window is too narrow can only be reached by its key.
    if (dice_.oneIn(2) && bar.rect().contains(title)) {
        journal_.say(u"clicks the menu "_s + menu.text());
        click(*window, bar.mapTo(window, title));
    } else {
        const QChar letter = menu.text().at(menu.text().indexOf(u'&') + 1).toUpper();
        type(Qt::ALT | Qt::Key(letter.unicode()));
    }
    if (QWidget *open = QApplication::activePopupWidget(); open != nullptr && !dice_.oneIn(4)) {
        useOpenMenu(*open);
    }
}

void Hands::useOpenMenu(QWidget &menu) {
    const auto *open = qobject_cast<QMenu *>(&menu);
    if (open == nullptr || dice_.oneIn(8)) {
        type(QKeyCombination(dice_.oneIn(2) ? Qt::Key_Escape : dice_.pick(keys::plain)));
        return;
    }
    QList<QAction *> items;
    for (QAction *item : open->actions()) {
        if (!item->isSeparator() && (item->property("action") != u"quit"_s || dice_.oneIn(8))) {
            items << item;
        }
    }
    QAction &item = *dice_.pick(items);
    if (dice_.oneIn(2)) {
        journal_.say(u"clicks the item "_s + item.text());
        click(menu, open->actionGeometry(&item).center());
        return;
    }
    for (int keys = 0; open->activeAction() != &item && keys < 10; ++keys) {
        type(Qt::Key_Down);
    }
    type(Qt::Key_Return);
}

void Hands::leaveIfBlocking(QMenu &menu) {
    // If a menu bar is too narrow, its remaining menus open in an event loop of their own, which
    // keeps the step from ending.
    if (QThread::currentThread()->loopLevel() < 2 || !menu.isVisible()) {
        return;
    }
    useOpenMenu(menu);
    menu.close();
}
