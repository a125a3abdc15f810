#include "monkey/menus.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QThread>
#include <QTimer>

#include "monkey/dice.h"
#include "monkey/hands.h"
#include "monkey/journal.h"
#include "monkey/keys.h"
#include "windowing/window.h"

using namespace Qt::StringLiterals;

bool MenuUse::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::Show) {
        if (auto *menu = qobject_cast<QMenu *>(watched)) {
            QTimer::singleShot(0, menu, [this, menu] { leaveIfBlocking(*menu); });
        }
    }
    return false;
}

void MenuUse::openOne() {
    auto *window = qobject_cast<platform::Window *>(&hands_.activated(hands_.anyWindow()));
    if (window == nullptr) {
        return;
    }
    QMenuBar &bar = *window->menuBar();
    const QList<QAction *> menus = bar.actions();
    QAction &menu = *dice_.pick(menus);
    if (dice_.oneIn(2)) {
        journal_.say(u"clicks the menu "_s + menu.text());
        Hands::click(*window, bar.mapTo(window, bar.actionGeometry(&menu).center()));
    } else {
        const QChar letter = menu.text().at(menu.text().indexOf(u'&') + 1).toUpper();
        hands_.type(Qt::ALT | Qt::Key(letter.unicode()));
    }
    if (QWidget *open = QApplication::activePopupWidget(); open != nullptr && !dice_.oneIn(4)) {
        useOpen(*open);
    }
}

void MenuUse::useOpen(QWidget &menu) {
    const auto *open = qobject_cast<QMenu *>(&menu);
    if (open == nullptr || dice_.oneIn(8)) {
        hands_.type(QKeyCombination(dice_.oneIn(2) ? Qt::Key_Escape : dice_.pick(keys::plain)));
        return;
    }
    QList<QAction *> items;
    for (QAction *item : open->actions()) {
        if (!item->isSeparator() && (words::actionOf(*item) != u"quit" || dice_.oneIn(8))) {
            items << item;
        }
    }
    QAction &item = *dice_.pick(items);
    if (dice_.oneIn(2)) {
        journal_.say(u"clicks the item "_s + item.text());
        Hands::click(menu, open->actionGeometry(&item).center());
        return;
    }
    for (int keys = 0; open->activeAction() != &item && keys < 10; ++keys) {
        hands_.type(Qt::Key_Down);
    }
    hands_.type(Qt::Key_Return);
}

void MenuUse::leaveIfBlocking(QMenu &menu) {
    // If a menu bar is too narrow, its remaining menus open in an event loop of their own, which
    // keeps the step from ending.
    if (QThread::currentThread()->loopLevel() < 2 || !menu.isVisible()) {
        return;
    }
    useOpen(menu);
    menu.close();
}
