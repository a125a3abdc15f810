#include <QMenuBar>
#include <QRegularExpression>
#include <QTest>

#include "look/image.h"
#include "probe.h"
#include "support/testmain.h"
#include "support/windowtest.h"

using namespace Qt::StringLiterals;

/// How a controller finds the controls of its layout, and these its actions.
class tst_outlets final : public WindowTest {
    Q_OBJECT

 private Q_SLOTS:
    void buttonsAndMenuItemsCallTheirAction() {
        Probe::provideLayout([](QMainWindow &window) { addItem(window, u"count"_s); });
        const auto probe = Probe::open();
        QPushButton &button = desk::control<QPushButton>(probe->window(), u"btnCount"_s);
        QTest::mousePress(&button, Qt::LeftButton);
        QCOMPARE(probe->counted, 0);
        QTest::mouseRelease(&button, Qt::LeftButton);
        QCOMPARE(probe->counted, 1);
        probe->window()->findChild<QAction *>(u"wrong"_s)->trigger();
        QCOMPARE(probe->counted, 2);
    }

    void returnPressesTheButtonInFocusOnce() {
        Probe::provideLayout();
        const auto probe = Probe::open();
        QVERIFY(QTest::qWaitForWindowActive(probe->window()));
        QWindow *window = probe->window()->windowHandle();
        probe->btnCount.setFocus();
        QTest::keyClick(window, Qt::Key_Return);
        QCOMPARE(probe->counted, 1);
        QTest::keyClick(window, Qt::Key_Enter);
        QCOMPARE(probe->counted, 2);
        QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, u"\r"_s, true);
        QCoreApplication::sendEvent(window, &held);
        QCOMPARE(probe->counted, 2);
    }

    void unknownActionRaisesAndIsNamed() {
        for (const bool menuItem : {false, true}) {
            Probe::provideLayout([menuItem](QMainWindow &window) {
                menuItem ? addItem(window, u"noSuch"_s)
                         : Probe::addButton(window, u"wrong"_s, u"noSuch"_s);
            });
            const QString message = messageOf([] { Probe::open(); });
            QCOMPARE(message,
                     u"\"wrong\" asks for the action \"noSuch\", which Probe does not have"_s);
            QVERIFY(desk::windows(u"Probe"_s).isEmpty());
        }
    }

    void missingOutletIsReportedInOneLine() {
        Probe::provideLayout([](QMainWindow &window) {
            desk::control(&window, u"lblText"_s).setObjectName(u"lblTxet"_s);
            // One of another class does not count.
            desk::control(&window, u"levelBar"_s).setObjectName(QString());
            Probe::addButton(window, u"levelBar"_s, u"count"_s);
        });
        StandardError standardError;
        const auto probe = Probe::open();
        probe->levelBar.setHidden(true);
        QVERIFY(desk::isShown(probe->window(), u"levelBar"_s));
        const QString line =
            u"The layout \"Probe\" has no platform::%1 named \"%2\"; there are: lblTxet, imgMark, "
            "radio, btnCount, btnClose, btnThrow, levelBar"_s;
        QCOMPARE(standardError.lines(),
                 QStringList({line.arg(u"TextLabel"_s, u"lblText"_s),
                              line.arg(u"LevelIndicator"_s, u"levelBar"_s)}));
    }

    void writesToAMissingOutletDoNothing() {
        Probe::provideLayout([](QMainWindow &window) {
            for (QWidget *widget : window.centralWidget()->findChildren<QWidget *>()) {
                widget->setObjectName(QString());
            }
        });
        StandardError standardError;
        QTest::failOnWarning(QRegularExpression(u"QObject::connect"_s));
        const auto probe = Probe::open();
        probe->lblText.setStringValue(u"text"_s);
        probe->lblText.setTextColor(Qt::white);
        probe->lblText.setAlphaValue(0.5);
        probe->lblText.setHidden(true);
        probe->levelBar.setDoubleValue(1);
        probe->levelBar.setMaxValue(2);
        probe->radio.setState(1);
        probe->imgMark.setImage(platform::look::imageNamed(u"checkmark.png"_s));
        probe->imgMark.setAccessibleName(u"mark"_s);
        probe->btnCount.setEnabled(false);
        probe->btnCount.setKeyEquivalent(u"\r"_s);
        probe->btnCount.setAccessibleDescription(u"count"_s);
        probe->btnCount.setFocus();
        probe->btnCount.announce(u"count"_s);
        QCOMPARE(probe->lblText.stringValue(), QString());
        // One line for each outlet.
        QCOMPARE(standardError.lines().size(), 5);
    }

    void everyUnknownPropertyIsReportedInOneLine() {
        Probe::provideLayout([](QMainWindow &window) {
            window.setProperty("escapesClose", true);
            desk::control(&window, u"lblText"_s).setProperty("keepRoom", true);
            desk::control(&window, u"imgMark"_s).setProperty("keepsRoom", true);
        });
        StandardError standardError;
        Probe::open();
        const QString line =
            u"The layout \"Probe\" gives \"%1\" the unknown property \"%2\"; there are: action, "
            "shortcuts, escapeCloses, visibleAtLoad, listsWindows, textStyle, spacing, keepsRoom, "
            "widest"_s;
        QCOMPARE(standardError.lines(), QStringList({line.arg(u"Probe"_s, u"escapesClose"_s),
                                                     line.arg(u"lblText"_s, u"keepRoom"_s)}));
    }

 private:
    static void addItem(QMainWindow &window, const QString &action) {
        QAction *item = window.menuBar()->addMenu(u"Menu"_s)->addAction(u"Item"_s);
        item->setObjectName(u"wrong"_s);
        item->setProperty("action", action);
    }
};

ZORVAN_TEST(tst_outlets)
#include "tst_outlets.moc"
