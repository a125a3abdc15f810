#include <QMainWindow>
#include <QSignalSpy>
#include <QTest>

#include "controls/levelindicator.h"
#include "support/answerrow.h"
#include "support/testmain.h"
#include "windowing/layouts.h"
#include "windowing/shortcuts.h"

using namespace Qt::StringLiterals;

/// What presses a button, and what does not.
class tst_controls final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void rowsButtonIsDescribedByItsLevel() {
        platform::ActionRow row;
        const platform::RowButton button(u"Variables"_s, &row);
        platform::LevelIndicator level(&row);
        level.setCounted(u"passes"_s);
        level.setMaximum(3);
        row.show();
        for (const int passes : {0, 2}) {
            level.setDoubleValue(passes);
            QCoreApplication::processEvents();
            QCOMPARE(button.accessibleDescription(), u"%1 of 3 passes"_s.arg(passes));
        }
    }

    void keysOfALayoutPressTheirButtonFromAnywhere() {
        AnswerRow answer;
        answer.button.setProperty("shortcuts", u"C 3"_s);
        platform::connectShortcuts(answer.window);
        answer.type(Qt::Key_C);
        QCOMPARE(answer.clicks, 1);
        answer.type(Qt::Key_3);
        QCOMPARE(answer.clicks, 2);
        answer.type(Qt::Key_A);
        QCOMPARE(answer.clicks, 2);
    }

    void keySleepsWhileItsButtonIsHiddenOrDisabled() {
        AnswerRow answer;
        platform::addShortcuts(answer.button, {QKeySequence(Qt::Key_A)});
        answer.button.hide();
        answer.type(Qt::Key_A);
        QCOMPARE(answer.clicks, 0);
        answer.button.show();
        answer.button.setEnabled(false);
        answer.type(Qt::Key_A);
        QCOMPARE(answer.clicks, 0);
        answer.button.setEnabled(true);
        answer.type(Qt::Key_A);
        QCOMPARE(answer.clicks, 1);
    }

    void heldKeyPressesOnce() {
        AnswerRow answer;
        platform::addShortcuts(answer.button, {QKeySequence(Qt::Key_A)});
        answer.type(Qt::Key_A);
        for (int repeat = 0; repeat < 3; ++repeat) {
            QKeyEvent held(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, u"a"_s, true);
            QCoreApplication::sendEvent(answer.window.windowHandle(), &held);
        }
        QCOMPARE(answer.clicks, 1);
    }

    void everyButtonOfALayoutActsWhenItIsReleased() {
        int buttons = 0;
        for (const auto &[name, build] : platform::layouts()) {
            QMainWindow window;
            build(window);
            window.show();
            for (QAbstractButton *button : window.findChildren<QAbstractButton *>()) {
                if (!button->property("action").isValid()) {
                    continue;
                }
                button->show();
                QCoreApplication::processEvents();
                const QSignalSpy clicks(button, &QAbstractButton::clicked);
                const QPoint spot = button->mapTo(&window, button->rect().center());
                QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, spot);
                QVERIFY2(clicks.isEmpty(),
                         qPrintable(button->objectName() + u" acts when pressed"_s));
                QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, spot);
                QVERIFY2(clicks.size() == 1, qPrintable(button->objectName() + u" does not act"_s));
                ++buttons;
            }
        }
        QVERIFY(buttons >= 20);
    }

    void textOfARowIsATarget() {
        AnswerRow answer;
        answer.mouse(QTest::MousePress, answer.text);
        QVERIFY(answer.button.isDown());
        QCOMPARE(answer.clicks, 0);
        answer.mouse(QTest::MouseRelease, answer.text);
        QVERIFY(!answer.button.isDown());
        QCOMPARE(answer.clicks, 1);
    }

    void pressThatLeavesItsRowDoesNothing() {
        AnswerRow answer;
        answer.mouse(QTest::MousePress, answer.text);
        answer.mouse(QTest::MouseRelease, answer.another);
        QCOMPARE(answer.clicks, 0);
        QVERIFY(!answer.button.isDown());
    }

    void doubleClickIsOnePress() {
        AnswerRow answer;
        answer.mouse(QTest::MouseDClick, answer.text);
        QCOMPARE(answer.clicks, 1);
        answer.mouse(QTest::MouseDClick, answer.button);
        QCOMPARE(answer.clicks, 2);
    }

    void disabledRowDoesNothing() {
        AnswerRow answer;
        answer.button.setEnabled(false);
        answer.click(answer.text);
        answer.click(answer.button);
        QCOMPARE(answer.clicks, 0);
    }

    void otherMouseButtonDoesNothing() {
        AnswerRow answer;
        answer.mouse(QTest::MouseClick, answer.text, Qt::RightButton);
        QCOMPARE(answer.clicks, 0);
    }
};

ZORVAN_TEST(tst_controls)
#include "tst_controls.moc"
