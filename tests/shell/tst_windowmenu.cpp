#include <QMenu>
#include <QMenuBar>
#include <QTest>

#include "shell/help.h"
#include "shell/settingscontroller.h"
#include "support/testmain.h"
#include "support/windowtest.h"

using namespace Qt::StringLiterals;

/// The Window menu, which lists the windows on screen below its own items.
class tst_windowmenu final : public ProgramTest {
    Q_OBJECT

 private Q_SLOTS:
    void windowsAreListedEachTimeAnew() {
        platform::Window *menu = openWindow(u"MainMenu"_s);
        delegate_->ShowHelp();
        platform::Window *help = delegate_->theHelp->window();
        delegate_->goPreferences();
        platform::Window *settings = delegate_->theSettings->window();
        QVERIFY(QTest::qWaitForWindowActive(settings));
        const QStringList listed{u""_s, u"&1 Zorvan"_s, u"&2 Help"_s, u"&3 Settings*"_s};
        QCOMPARE(windowsListed(settings), listed);
        QCOMPARE(windowsListed(settings), listed);

        help->setWindowTitle(u"Help & more"_s);
        menu->close();
        help->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(help));
        QCOMPARE(windowsListed(help),
                 QStringList({u""_s, u"&1 Help && more*"_s, u"&2 Settings"_s}));
        help->close();
        settings->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(settings));
        QCOMPARE(windowsListed(settings), QStringList({u""_s, u"&1 Settings*"_s}));
        settings->close();
        QCoreApplication::processEvents();
        const platform::Window *wayBack = desk::window(u"MainLayout"_s);
        QVERIFY(wayBack != nullptr);
        QCOMPARE(windowsListed(wayBack), QStringList());
    }

    void itemBringsItsWindowToTheFront() {
        platform::Window *menu = openWindow(u"MainMenu"_s);
        delegate_->goPreferences();
        platform::Window *settings = delegate_->theSettings->window();
        QVERIFY(QTest::qWaitForWindowActive(settings));
        menu->showMinimized();
        QMenu &listing = openWindowMenu(settings);
        QTest::keyClick(&listing, Qt::Key_1);
        QVERIFY(!listing.isVisible());
        QVERIFY(QTest::qWaitForWindowActive(menu));
        QVERIFY(!menu->isMinimized());
        QVERIFY(settings->isVisible());
    }

    void manyWindowsAreToldApart() {
        for (int window = 0; window < 10; ++window) {
            delegate_->ShowHelp();
        }
        QVERIFY(QTest::qWaitForWindowActive(delegate_->theHelp->window()));
        const QStringList listed = windowsListed(delegate_->theHelp->window());
        QCOMPARE(listed.size(), 11);
        QCOMPARE(listed.at(9), u"&9 Help"_s);
        QCOMPARE(listed.at(10), u"10 Help*"_s);
    }

 private:
    /// The items of the window's Window menu that name windows; an asterisk marks those that are
    /// checked.
    static QStringList windowsListed(const platform::Window *window) {
        QMenu &menu = openWindowMenu(window);
        QStringList listed;
        for (const QAction *item : menu.actions()) {
            if (item->property("action").toString().isEmpty()) {
                listed << item->text() + (item->isChecked() ? u"*"_s : QString());
                // A window called "Settings" must not be taken for the settings of the program.
                if (!item->isSeparator() && item->menuRole() != QAction::NoRole) {
                    listed.last() += u" (has a role)"_s;
                }
            }
        }
        menu.close();
        return listed;
    }

    static QMenu &openWindowMenu(const platform::Window *window) {
        QMenu &menu = *window->menuBar()->actions().at(2)->menu();
        menu.popup(window->mapToGlobal(QPoint(0, 0)));
        return menu;
    }
};

ZORVAN_TEST(tst_windowmenu)
#include "tst_windowmenu.moc"
