#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

#include "shell/help.h"
#include "shell/settingscontroller.h"
#include "support/learner.h"
#include "support/testmain.h"
#include "support/windowtest.h"

using namespace Qt::StringLiterals;

/// The menu bar and the keys of its items. Whether they work from every window tst_quit shows.
class tst_menubar final : public ProgramTest {
    Q_OBJECT

 private Q_SLOTS:
    void everyWindowShowsTheSameMenuItems_data() { layoutRows(); }

    void everyWindowShowsTheSameMenuItems() {
        QFETCH(const QString, layout);
        const QList<QAction *> menus = openWindow(u"MainLayout"_s)->menuBar()->actions();
        QCOMPARE(menus.size(), 4);
        const platform::Window *window = openWindow(layout);
        QVERIFY(window->menuBar()->isVisible());
        const QList<QAction *> shown = window->menuBar()->actions();
        QCOMPARE(shown.size(), menus.size());
        for (qsizetype i = 0; i < menus.size(); ++i) {
            QCOMPARE(shown.at(i)->text(), menus.at(i)->text());
            QCOMPARE(shown.at(i)->menu()->actions(), menus.at(i)->menu()->actions());
        }
    }

    void screenReaderFindsEachWindowsOwnItems() {
        const QStringList expected{
            u"Menu bar"_s,  u"Zorvan"_s,    u"About Zorvan"_s, u"Settings"_s,  QString(),
            u"Quit"_s,      u"Quizzes"_s,   u"Terminology"_s,  u"Variables"_s, u"Methods"_s,
            u"Functions"_s, u"Structure"_s, u"Syntax"_s,       QString(),      u"Main Test"_s,
            u"Window"_s,    u"Main Menu"_s, u"Close Window"_s, u"Help"_s,      u"Zorvan Help"_s};
        delegate_->ShowHelp();
        delegate_->goPreferences();
        QCOMPARE(itemsRead(*delegate_->theHelp->window()), expected);
        QCOMPARE(itemsRead(*delegate_->theSettings->window()), expected);
        delegate_->theHelp->close();
        delegate_->theHelp.reset();
        desk::freeUnused();
        QCOMPARE(itemsRead(*delegate_->theSettings->window()), expected);
    }

    void shortcutTriggersItsItemOnce() {
        platform::Window *window = openWindow(u"MainMenu"_s);
        for (const QString &action :
             {u"GoTest1"_s, u"GoTest2"_s, u"GoTest3"_s, u"GoTest4"_s, u"GoTest5"_s, u"GoTest6"_s,
              u"GoTest7"_s, u"GoMainMenu"_s, u"goPreferences"_s, u"ShowHelp"_s}) {
            const QAction &item = learner::menuItem(window, action);
            const QSignalSpy triggered(&item, &QAction::triggered);
            learner::type(window, item.shortcut()[0]);
            QVERIFY2(triggered.size() == 1, qUtf8Printable(action));
        }
        QCOMPARE(openWindows().size(), 11);
    }

    void closeItemClosesOnlyTheWindowInFront() {
        for (const bool byKey : {true, false}) {
            platform::Window *menu = openWindow(u"MainMenu"_s);
            platform::Window *settings = openWindow(u"Settings"_s);
            QVERIFY(QTest::qWaitForWindowActive(settings));
            if (byKey) {
                learner::type(settings, Qt::CTRL | Qt::Key_W);
            } else {
                learner::pick(menu, u"closeWindow"_s);
            }
            QCOMPARE(desk::windows(u"Settings"_s).size(), 0);
            QVERIFY(menu->isVisible());
        }
    }

    void escapeClosesOnlyTheAuxiliaryWindows() {
        for (const QString &layout : {u"Settings"_s, u"progress"_s, u"Help"_s, u"QuizComplete"_s}) {
            learner::type(openWindow(layout), Qt::Key_Escape);
            QVERIFY2(desk::windows(layout).isEmpty(), qUtf8Printable(layout));
        }
        for (const QString &layout : {u"MainMenu"_s, u"MainTest"_s}) {
            platform::Window *window = openWindow(layout);
            learner::type(window, Qt::Key_Escape);
            QVERIFY2(desk::windows(layout).contains(window), qUtf8Printable(layout));
        }
    }

 private:
    static QStringList itemsRead(const platform::Window &window) {
        const QAccessibleInterface *bar = QAccessible::queryAccessibleInterface(window.menuBar());
        QStringList names{bar->text(QAccessible::Name)};
        for (int i = 0; i < bar->childCount(); ++i) {
            const QAccessibleInterface *menu = bar->child(i);
            if (menu->parent() != bar) {
                names << u"(another window's)"_s;
            }
            names << menu->text(QAccessible::Name);
            for (int item = 0; item < menu->child(0)->childCount(); ++item) {
                const QAccessibleInterface *read = menu->child(0)->child(item);
                names << (read != nullptr && read->isValid() ? read->text(QAccessible::Name)
                                                             : u"(lost)"_s);
            }
        }
        return names;
    }
};

ZORVAN_TEST(tst_menubar)
#include "tst_menubar.moc"
