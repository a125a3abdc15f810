#include <array>

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QWindow>

#include "controls/messagebox.h"
#include "monkey/comparison.h"
#include "monkey/dice.h"
#include "monkey/journal.h"
#include "monkey/keys.h"
#include "monkey/seam.h"
#include "monkey/steps.h"
#include "windowing/alert.h"

using namespace Qt::StringLiterals;

void Steps::answer(platform::MessageBox &box) {
    const QString name = u"the alert \"%1\" "_s.arg(box.text());
    journal_.wantNone(comparison::differences(seam_, journal_.takeErrors(), &box));
    journal_.want(
        QTest::qWaitFor([&box] { return QGuiApplication::focusWindow() == box.windowHandle(); }),
        name + u"does not come to the front"_s);
    if (dice_.oneIn(3)) {
        tryBehind(box);
        journal_.want(box.isVisible(), name + u"went unanswered"_s);
        journal_.wantNone(comparison::differences(seam_, journal_.takeErrors(), &box));
    }
    if (dice_.oneIn(4)) {
        type(dice_.pick(keys::idle));
        journal_.want(box.isVisible(), name + u"goes at a key without meaning"_s);
    }

    static const std::array ways{u"mouse"_s, u"Return"_s, u"Escape"_s, u"close"_s, u"Tab, Space"_s};
    const QString way = dice_.pick(ways);
    const QString wanted = answerIn(way, box);
    journal_.want(!box.isVisible(), name + u"stays after "_s + way);
    const QStringList buttons = seam_.model().alert()->buttons;
    const QString pressed =
        box.result() == platform::Alert::DefaultReturn ? buttons.first() : buttons.last();
    journal_.want(pressed == wanted, name + u"is answered with \"%1\" by %2"_s.arg(pressed, way));
    seam_.model().answer(pressed);
}

QString Steps::answerIn(const QString &way, platform::MessageBox &box) {
    const QStringList buttons = seam_.model().alert()->buttons;
    if (way == u"mouse") {
        const auto all = box.findChildren<QPushButton *>();
        QPushButton &button = *dice_.pick(all);
        clickControl(button);
        return button.text();
    }
    if (way == u"Return") {
        type(Qt::Key_Return);
        return buttons.first();
    }
    if (way == u"Escape") {
        type(Qt::Key_Escape);
    } else if (way == u"close") {
        journal_.say(u"closes the alert"_s);
        box.close();
    } else {
        // Tab moves from the default button, the first, to the last.
        type(Qt::Key_Tab);
        type(Qt::Key_Space);
    }
    return buttons.last();
}

void Steps::tryBehind(const platform::MessageBox &box) {
    for (int tries = 1 + dice_.below(4); tries > 0; --tries) {
        QList<QWidget *> behind = windows();
        behind.removeIf([&box](const QWidget *window) { return window == &box; });
        if (dice_.oneIn(4) || behind.isEmpty()) {
            letSecondsPass(1 + dice_.below(5));
            continue;
        }
        QWidget &window = *dice_.pick(behind);
        if (dice_.oneIn(2)) {
            clickAnywhere(window);
        } else {
            const QKeyCombination key =
                dice_.oneIn(3) ? Qt::CTRL | Qt::Key_Q : dice_.pick(keys::shortcuts);
            journal_.say(u"types %1 to %2, behind an alert"_s.arg(QKeySequence(key).toString(),
                                                                  nameOf(window)));
            QTest::keyPress(window.windowHandle(), key.key(), key.keyboardModifiers());
            QTest::keyRelease(window.windowHandle(), key.key(), key.keyboardModifiers());
        }
    }
}
