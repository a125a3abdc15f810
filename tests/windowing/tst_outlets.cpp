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
        Probe::provideLayout([](QMainWindow &window) { addItem(window, u"item"_s, u"act"_s); });
        const auto probe = Probe::open();
        auto &button = desk::control<QPushButton>(probe->window(), u"btnAct"_s);
        QTest::mousePress(&button, Qt::LeftButton);
        QCOMPARE(probe->acted, 0);
        QTest::mouseRelease(&button, Qt::LeftButton);
        QCOMPARE(probe->acted, 1);
        probe->window()->findChild<QAction *>(u"item"_s)->trigger();
        QCOMPARE(probe->acted, 2);
    }

    void returnPressesTheButtonInFocusOnce() {
        Probe::provideLayout();
        const auto probe = Probe::open();
        QVERIFY(QTest::qWaitForWindowActive(probe->window()));
        QWindow *window = probe->window()->windowHandle();
        probe->btnAct.setFocus();
        QTest::keyClick(window, Qt::Key_Return);
        QCOMPARE(probe->acted, 1);
        QTest::keyClick(window, Qt::Key_Enter);
        QCOMPARE(probe->acted, 2);
        QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, u"\r"_s, true);
        QCoreApplication::sendEvent(window, &held);
        QCOMPARE(probe->acted, 2);
    }

    void unknownActionRaisesAndIsNamed() {
        for (const bool menuItem : {false, true}) {
            Probe::provideLayout([menuItem](QMainWindow &window) {
                menuItem ? addItem(window, u"wrong"_s, u"noSuch"_s)
                         : Probe::addButton(window, u"wrong"_s, u"noSuch"_s);
            });
            const QString message = messageOf([] { Probe::open(); });
            QCOMPARE(message,
                     u"\"wrong\" asks for the action \"noSuch\", which Probe does not have"_s);
            QVERIFY(desk::windows(u"Probe"_s).isEmpty());
        }
    }

    void missingOutletIsReportedInOneLineAndPassedOver() {
        Probe::provideLayout([](QMainWindow &window) {
            desk::control(&window, u"lblText"_s).setObjectName(u"lblTxet"_s);
            for (const QString &name : {u"levelBar"_s, u"imgMark"_s, u"radio"_s, u"btnAct"_s}) {
                desk::control(&window, name).setObjectName(QString());
            }
            // One of another class does not count.
            Probe::addButton(window, u"levelBar"_s, u"act"_s);
        });
        StandardError standardError;
        QTest::failOnWarning(QRegularExpression(u"QObject::connect"_s));
        const auto probe = Probe::open();
        const QString line =
            u"The layout \"Probe\" has no %1 named \"%2\"; there are: lblTxet, levelBar"_s;
        QCOMPARE(standardError.lines(),
                 QStringList({line.arg(u"platform::TextLabel"_s, u"lblText"_s),
                              line.arg(u"platform::LevelIndicator"_s, u"levelBar"_s),
                              line.arg(u"platform::ImageLabel"_s, u"imgMark"_s),
                              line.arg(u"QRadioButton"_s, u"radio"_s),
                              line.arg(u"QAbstractButton"_s, u"btnAct"_s)}));

        probe->lblText.setStringValue(u"text"_s);
        probe->lblText.setTextColor(Qt::white);
        probe->lblText.setAlphaValue(0.5);
        probe->levelBar.setDoubleValue(1);
        probe->levelBar.setMaxValue(2);
        probe->levelBar.setHidden(true);
        probe->radio.setState(1);
        probe->imgMark.setImage(platform::look::imageNamed(u"checkmark.png"_s));
        probe->imgMark.setAccessibleName(u"mark"_s);
        probe->btnAct.setEnabled(false);
        probe->btnAct.setKeyEquivalent(u"\r"_s);
        probe->btnAct.setAccessibleDescription(u"act"_s);
        probe->btnAct.setFocus();
        probe->btnAct.announce(u"act"_s);
        QCOMPARE(probe->lblText.stringValue(), QString());
        QVERIFY(desk::isShown(probe->window(), u"levelBar"_s));
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
    static void addItem(QMainWindow &window, const QString &name, const QString &action) {
        QAction *item = window.menuBar()->addMenu(u"Menu"_s)->addAction(name);
        item->setObjectName(name);
        item->setProperty("action", action);
    }
};

ZORVAN_TEST(tst_outlets)
#include "tst_outlets.moc"
