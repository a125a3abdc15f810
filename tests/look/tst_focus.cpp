#include <QKeyEvent>
#include <QPointingDevice>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QVBoxLayout>

#include "controls/section.h"
#include "support/answerrow.h"
#include "support/drawing.h"
#include "support/keyboard.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

namespace {

/// A window with one control of each kind that draws the focus.
struct Desk {
    AnswerRow row;
    QPushButton push{u"Next question"_s};
    QRadioButton option{u"Timed"_s};
    platform::Section section;

    Desk() {
        section.setFocusPolicy(Qt::TabFocus);
        section.setMinimumHeight(40);
        for (QWidget *control : std::initializer_list<QWidget *>{&push, &option, &section}) {
            row.window.layout()->addWidget(control);
        }
        QCoreApplication::processEvents();
    }

    QList<QWidget *> controls() { return {&row.button, &push, &option, &section}; }

    /// Whether the control, which has the focus, looks as if it had not.
    bool hides(QWidget &control) {
        control.setFocus();
        const QImage with = row.window.grab().toImage();
        control.clearFocus();
        const bool same = row.window.grab().toImage() == with;
        control.setFocus();
        return same;
    }
};

using Use = void (*)(Desk &);

void tap(Desk &desk) {
    static const std::unique_ptr<QPointingDevice> screen(QTest::createTouchDevice());
    QTest::touchEvent(&desk.row.window, screen.get()).press(0, {1, 1}).commit();
    QTest::touchEvent(&desk.row.window, screen.get()).release(0, {1, 1}).commit();
}

}  // namespace

Q_DECLARE_METATYPE(Use)

/// The focus is shown to whoever uses the keyboard, and to nobody else.
class tst_focus final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void isHiddenAtFirst() {
        Desk desk;
        expectShown(desk, false);
    }

    void deviceUsedLastDecides_data() {
        QTest::addColumn<Use>("use");
        QTest::addColumn<bool>("shown");
        const auto add = [](const char *name, Use use, bool shown) {
            QTest::newRow(name) << use << shown;
        };
        add(
            "Tab", [](Desk &desk) { QTest::keyClick(&desk.row.window, Qt::Key_Tab); }, true);
        add(
            "a letter", [](Desk &desk) { QTest::keyClick(&desk.row.window, Qt::Key_X); }, true);
        add(
            "the key of a shortcut",
            [](Desk &desk) {
                desk.push.setShortcut(Qt::CTRL | Qt::Key_J);
                QTest::keyClick(&desk.row.window, Qt::Key_J, Qt::ControlModifier);
            },
            true);
        add(
            "the mouse", [](Desk &desk) { QTest::mouseClick(&desk.row.window, Qt::LeftButton); },
            false);
        add("a finger", tap, false);
    }

    void deviceUsedLastDecides() {
        QFETCH(const Use, use);
        QFETCH(const bool, shown);
        Desk desk;
        if (shown) {
            QTest::mouseClick(&desk.row.window, Qt::LeftButton);
        } else {
            keyboard::use(desk.row.window);
        }
        expectShown(desk, !shown);
        use(desk);
        expectShown(desk, shown);
    }

    void modifiersAndThePointersWayChangeNothing() {
        Desk desk;
        QTest::mouseClick(&desk.row.window, Qt::LeftButton);
        for (const Qt::Key key :
             {Qt::Key_Shift, Qt::Key_Control, Qt::Key_Alt, Qt::Key_AltGr, Qt::Key_Meta,
              Qt::Key_Super_L, Qt::Key_Super_R, Qt::Key_CapsLock, Qt::Key_NumLock}) {
            QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
            QCoreApplication::sendEvent(&desk.row.window, &press);
            expectShown(desk, false);
        }
        keyboard::use(desk.row.window);
        QTest::mouseMove(&desk.row.window, QPoint(1, 1));
        expectShown(desk, true);
    }

    void windowThatOpensFollowsTheDeviceUsedBefore() {
        Desk before;
        keyboard::use(before.row.window);
        Desk byKeyboard;
        expectShown(byKeyboard, true);
        QTest::mouseClick(&before.row.window, Qt::LeftButton);
        expectShown(byKeyboard, false);
        Desk byMouse;
        expectShown(byMouse, false);
    }

    void windowIsRedrawnAtOnce() {
        Desk desk;
        QTest::mouseClick(&desk.row.window, Qt::LeftButton);
        QCoreApplication::processEvents();
        const drawing::Paints paints(desk.push);
        keyboard::use(desk.row.window);
        QVERIFY(QTest::qWaitFor([&] { return paints.count() == 1; }));
        // But not with each further key.
        keyboard::use(desk.row.window);
        QCoreApplication::processEvents();
        QCOMPARE(paints.count(), 1);
        QTest::mousePress(&desk.row.window, Qt::LeftButton);
        QVERIFY(QTest::qWaitFor([&] { return paints.count() == 2; }));
    }

 private:
    static void expectShown(Desk &desk, bool shown) {
        for (QWidget *control : desk.controls()) {
            QVERIFY2(desk.hides(*control) != shown, control->metaObject()->className());
        }
    }
};

ZORVAN_TEST(tst_focus)
#include "tst_focus.moc"
