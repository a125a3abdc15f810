#include <QAccessible>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QTest>
#include <QVBoxLayout>

#include "controls/actionrow.h"
#include "controls/imagelabel.h"
#include "controls/levelindicator.h"
#include "controls/rowbutton.h"
#include "controls/textlabel.h"
#include "look/image.h"
#include "support/testmain.h"
#include "windowing/outlets.h"
#include "windowing/shortcuts.h"

using namespace Qt::StringLiterals;

/// A window with one answer: a lettered button, its text, and another control.
struct Answer {
    QWidget window;
    platform::ActionRow row{&window};
    platform::RowButton button{u"A"_s, &row};
    platform::TextLabel label{&row};
    QPushButton another{u"another"_s, &window};
    int clicks = 0;

    Answer() {
        auto *inRow = new QHBoxLayout(&row);
        inRow->addWidget(&button);
        inRow->addWidget(&label, 1);
        auto *inWindow = new QVBoxLayout(&window);
        inWindow->addWidget(&row);
        inWindow->addWidget(&another);
        label.setStringValue(u"C & Perl"_s);
        QObject::connect(&button, &QAbstractButton::clicked, &window, [this] { ++clicks; });
        window.resize(400, 120);
        window.show();
        window.activateWindow();
    }

    /// Sends a key to the window as the keyboard does.
    void type(Qt::Key key) { QTest::keyClick(window.windowHandle(), key); }
    QPoint on(const QWidget &widget) const { return widget.mapTo(&window, widget.rect().center()); }
};

class tst_controls final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void keyPressesItsButtonFromAnywhereInTheWindow() {
        Answer answer;
        QVERIFY(inFront(answer));
        platform::addShortcuts(answer.button, {QKeySequence(Qt::Key_A), QKeySequence(Qt::Key_1)});
        answer.another.setFocus();
        answer.type(Qt::Key_A);
        QCOMPARE(answer.clicks, 1);
        answer.type(Qt::Key_1);
        QCOMPARE(answer.clicks, 2);
        answer.type(Qt::Key_B);
        QCOMPARE(answer.clicks, 2);
    }

    void keySleepsWhileItsButtonIsHiddenOrDisabled_data() {
        QTest::addColumn<bool>("hidden");
        QTest::newRow("hidden") << true;
        QTest::newRow("disabled") << false;
    }

    void keySleepsWhileItsButtonIsHiddenOrDisabled() {
        QFETCH(const bool, hidden);
        Answer answer;
        QVERIFY(inFront(answer));
        platform::addShortcuts(answer.button, {QKeySequence(Qt::Key_A)});
        answer.button.setHidden(hidden);
        answer.button.setEnabled(hidden);
        answer.type(Qt::Key_A);
        QCOMPARE(answer.clicks, 0);
        answer.button.setHidden(false);
        answer.button.setEnabled(true);
        answer.type(Qt::Key_A);
        QCOMPARE(answer.clicks, 1);
    }

    void heldKeyPressesOnce() {
        Answer answer;
        QVERIFY(inFront(answer));
        platform::addShortcuts(answer.button, {QKeySequence(Qt::Key_A)});
        answer.another.setFocus();
        answer.type(Qt::Key_A);
        for (int repeat = 0; repeat < 3; ++repeat) {
            QKeyEvent held(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, u"a"_s, true);
            QCoreApplication::sendEvent(answer.window.windowHandle(), &held);
        }
        QCOMPARE(answer.clicks, 1);
    }

    void keysOfALayoutArePartedByBlanks() {
        Answer answer;
        QVERIFY(inFront(answer));
        answer.button.setProperty("shortcuts", u"C 3"_s);
        platform::connectShortcuts(answer.window);
        for (const Qt::Key key : {Qt::Key_C, Qt::Key_3, Qt::Key_A, Qt::Key_1}) {
            answer.type(key);
        }
        QCOMPARE(answer.clicks, 2);
        QVERIFY(answer.another.findChildren<QShortcut *>().isEmpty());
    }

    void textOfARowIsATarget() {
        Answer answer;
        QVERIFY(inFront(answer));
        QTest::mouseClick(answer.window.windowHandle(), Qt::LeftButton, {},
                          answer.on(answer.label));
        QCOMPARE(answer.clicks, 1);
        QTest::mouseClick(answer.window.windowHandle(), Qt::LeftButton, {},
                          answer.on(answer.button));
        QCOMPARE(answer.clicks, 2);
    }

    void pressThatLeavesItsRowDoesNothing() {
        Answer answer;
        QVERIFY(inFront(answer));
        QWindow *window = answer.window.windowHandle();
        QTest::mousePress(window, Qt::LeftButton, {}, answer.on(answer.label));
        QTest::mouseRelease(window, Qt::LeftButton, {}, answer.on(answer.another));
        QCOMPARE(answer.clicks, 0);
        QVERIFY(!answer.button.isDown());
    }

    void doubleClickIsOnePress_data() {
        QTest::addColumn<bool>("onTheText");
        QTest::newRow("on the text") << true;
        QTest::newRow("on the button") << false;
    }

    void doubleClickIsOnePress() {
        QFETCH(const bool, onTheText);
        Answer answer;
        QVERIFY(inFront(answer));
        const QPoint spot = onTheText ? answer.on(answer.label) : answer.on(answer.button);
        QTest::mouseDClick(answer.window.windowHandle(), Qt::LeftButton, {}, spot);
        QCOMPARE(answer.clicks, 1);
    }

    void disabledRowDoesNothing() {
        Answer answer;
        QVERIFY(inFront(answer));
        answer.button.setEnabled(false);
        QTest::mouseClick(answer.window.windowHandle(), Qt::LeftButton, {},
                          answer.on(answer.label));
        QTest::mouseClick(answer.window.windowHandle(), Qt::LeftButton, {},
                          answer.on(answer.button));
        QCOMPARE(answer.clicks, 0);
    }

    void otherMouseButtonDoesNothing() {
        Answer answer;
        QVERIFY(inFront(answer));
        QTest::mouseClick(answer.window.windowHandle(), Qt::RightButton, {},
                          answer.on(answer.label));
        QCOMPARE(answer.clicks, 0);
    }

    void rowsButtonIsNamedAfterItsText() {
        Answer answer;
        QVERIFY(inFront(answer));
        QCOMPARE(answer.button.accessibleName(), u"A: C & Perl"_s);
        answer.label.setStringValue(u"<b>ASP</b>"_s);
        QCOMPARE(answer.button.accessibleName(), u"A: <b>ASP</b>"_s);
    }

    void rowsButtonIsDescribedByItsLevel() {
        platform::ActionRow row;
        platform::RowButton button(u"Variables"_s, &row);
        platform::LevelIndicator level(&row);
        level.setCounted(u"passes"_s);
        level.setMaximum(3);
        row.show();
        const auto description = [&] {
            QCoreApplication::processEvents();
            return QAccessible::queryAccessibleInterface(&button)->text(QAccessible::Description);
        };
        QCOMPARE(description(), u"0 of 3 passes"_s);
        level.setDoubleValue(2);
        QCOMPARE(description(), u"2 of 3 passes"_s);
        level.setMaximum(4);
        QCOMPARE(description(), u"2 of 4 passes"_s);
    }

    void imageIsDrawnAndTakenAway() {
        platform::ImageLabel label;
        label.setLines(2);
        label.resize(label.sizeHint());
        QCOMPARE(label.width(), label.height());
        const QImage empty = label.grab().toImage();
        label.setImage(platform::look::imageNamed(u"checkmark.png"_s));
        const QImage check = label.grab().toImage();
        QVERIFY(check != empty);
        label.setImage(platform::look::imageNamed(u"blankcheckmark.png"_s));
        QVERIFY(label.grab().toImage() != empty);
        QVERIFY(label.grab().toImage() != check);
        label.setImage(QIcon());
        QCOMPARE(label.grab().toImage(), empty);
    }

    void unknownImageIsNull() {
        QVERIFY(!platform::look::imageNamed(u"checkmark.png"_s).isNull());
        QVERIFY(platform::look::imageNamed(u"absent.png"_s).isNull());
    }

    void imageOfANameIsAlwaysTheSame() {
        const auto key = [](const QString &name) {
            return platform::look::imageNamed(name).cacheKey();
        };
        QCOMPARE(key(u"checkmark.png"_s), key(u"checkmark.png"_s));
        QVERIFY(key(u"checkmark.png"_s) != key(u"blankcheckmark.png"_s));
    }

 private:
    static bool inFront(Answer &answer) { return QTest::qWaitForWindowActive(&answer.window); }
};

ZORVAN_TEST(tst_controls)
#include "tst_controls.moc"
