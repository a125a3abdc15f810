#include "monkey/alertanswers.h"

#include <algorithm>
#include <array>

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include "monkey/comparison.h"
#include "monkey/dice.h"
#include "monkey/hands.h"
#include "monkey/journal.h"
#include "monkey/keys.h"
#include "monkey/lookout.h"
#include "monkey/seam.h"
#include "monkey/world.h"

using namespace Qt::StringLiterals;

using words::nameOf;

namespace {

const std::array ways{u"mouse"_s, u"Return"_s, u"Escape"_s, u"close"_s, u"Tab, Space"_s};

}  // namespace

bool AlertAnswers::eventFilter(QObject *watched, QEvent *event) {
    auto *box = qobject_cast<QMessageBox *>(watched);
    if (box != nullptr && box->isModal() && event->type() == QEvent::Show) {
        QTimer::singleShot(0, box, [this, box] { answer(*box); });
    }
    return false;
}

void AlertAnswers::answer(QMessageBox &box) {
    const QString name = box.text();
    QStringList differences = comparison::differences(seam_, box);
    differences += comparison::differences(seam_, journal_.takeErrors());
    journal_.want(differences.isEmpty(), differences.join(u'\n'),
                  u"the same as in the model, while an alert is open"_s);
    journal_.want(
        QTest::qWaitFor([&box] { return QGuiApplication::focusWindow() == box.windowHandle(); }),
        u"the alert %1 does not come to the front"_s.arg(name), u"an alert in front"_s);
    if (dice_.oneIn(3)) {
        tryInVain(box);
    }
    if (dice_.oneIn(4)) {
        hands_.type(dice_.pick(keys::idle));
        journal_.want(box.isVisible(), u"the alert %1 goes at a key without meaning"_s.arg(name),
                      u"an alert that stays"_s);
    }

    const QString way = dice_.pick(ways);
    const QString expected = answerIn(way, box);
    journal_.want(!box.isVisible(), u"the alert %1 stays after %2"_s.arg(name, way),
                  u"an answered alert"_s);
    const QString pressed =
        box.clickedButton() == nullptr ? QString() : box.clickedButton()->text();
    journal_.want(pressed == expected,
                  u"%1 answers the alert %2 with \"%3\""_s.arg(way, name, pressed),
                  u"\"%1\""_s.arg(expected));
    seam_.model().answer(pressed);
}

QString AlertAnswers::answerIn(const QString &way, QMessageBox &box) {
    const QStringList buttons = seam_.model().alert()->buttons;
    if (way == u"mouse") {
        const QList<QAbstractButton *> all = box.buttons();
        QAbstractButton &button = *dice_.pick(all);
        hands_.clickControl(button);
        return button.text();
    }
    if (way == u"Return") {
        hands_.type(Qt::Key_Return);
        return buttons.first();
    }
    if (way == u"Escape") {
        hands_.type(Qt::Key_Escape);
    } else if (way == u"close") {
        journal_.say(u"closes the alert"_s);
        box.close();
    } else {
        // Tab moves from the default button, the first, to the last.
        hands_.type(Qt::Key_Tab);
        hands_.type(Qt::Key_Space);
    }
    return buttons.last();
}

void AlertAnswers::tryInVain(const QMessageBox &box) {
    const QString before = lookout_.state();
    for (int tries = 1 + dice_.below(4); tries > 0; --tries) {
        QList<QWidget *> behind = hands_.windows();
        behind.removeIf([&box](const QWidget *window) { return window == &box; });
        if (dice_.oneIn(4) || behind.isEmpty()) {
            world_.letSecondsPass(1 + dice_.below(5));
            continue;
        }
        QWidget &window = *dice_.pick(behind);
        if (dice_.oneIn(2)) {
            const QPoint at(1 + dice_.below(window.width() - 1),
                            1 + dice_.below(window.height() - 1));
            journal_.say(u"clicks at %1, %2 of %3, behind an alert"_s.arg(at.x()).arg(at.y()).arg(
                nameOf(window)));
            Hands::click(window, at);
        } else {
            const QKeyCombination key =
                dice_.oneIn(3) ? Qt::CTRL | Qt::Key_Q : dice_.pick(keys::shortcuts);
            journal_.say(u"types %1 to %2, behind an alert"_s.arg(nameOf(key), nameOf(window)));
            QTest::keyPress(window.windowHandle(), key.key(), key.keyboardModifiers());
            QTest::keyRelease(window.windowHandle(), key.key(), key.keyboardModifiers());
        }
    }
    journal_.want(box.isVisible(), u"the alert \"%1\" went unanswered"_s.arg(box.text()),
                  u"it stays"_s);
    const QString after = lookout_.state();
    journal_.want(after == before, u"behind an alert the state became\n%1"_s.arg(after), before);
}
