#include "windowing/shortcuts.h"

#include <QAbstractButton>
#include <QShortcut>

#include "look/layoutproperties.h"

namespace platform {

void addShortcuts(QAbstractButton &button, const QList<QKeySequence> &keys) {
    for (const QKeySequence &key : keys) {
        // As a child of the button the shortcut is inactive while the button is hidden or disabled.
        auto *shortcut = new QShortcut(key, &button);
        shortcut->setAutoRepeat(false);
        QObject::connect(shortcut, &QShortcut::activated, &button, &QAbstractButton::click);
    }
}

void connectShortcuts(const QWidget &root) {
    for (QAbstractButton *button : root.findChildren<QAbstractButton *>()) {
        QList<QKeySequence> keys;
        for (const QString &key : button->property(layoutproperties::shortcuts)
                                      .toString()
                                      .split(u' ', Qt::SkipEmptyParts)) {
            keys << QKeySequence(key);
        }
        addShortcuts(*button, keys);
    }
}

}  // namespace platform
