#include <chrono>
#include <optional>

#include <QAccessible>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTextDocument>
#include <QTimer>

#include "shell/help.h"
#include "shell/settingscontroller.h"
#include "support/openwindow.h"
#include "support/testmain.h"
#include "support/windowtest.h"
#include "windowing/bringtofront.h"

using namespace Qt::StringLiterals;

class tst_menubar final : public ProgramTest {
    Q_OBJECT

 private Q_SLOTS:
    void everyWindowShowsTheSameMenuItems_data() {
        QTest::addColumn<QString>("layout");
        for (const QString &layout : openwindow::layouts) {
            QTest::newRow(qPrintable(layout)) << layout;
        }
    }

    void everyWindowShowsTheSameMenuItems() {
        QFETCH(const QString, layout);
        const platform::Window *wayBack = openwindow::open(u"MainLayout"_s, *delegate_);
        const QList<QAction *> menus = wayBack->menuBar()->actions();
        QCOMPARE(menus.size(), 4);
        const platform::Window *window = openwindow::open(layout, *delegate_);
        QVERIFY(window->menuBar()->isVisible());
        const QList<QAction *> shown = window->menuBar()->actions();
        QCOMPARE(shown.size(), menus.size());
        for (qsizetype i = 0; i < menus.size(); ++i) {
            QCOMPARE(shown.at(i)->text(), menus.at(i)->text());
            QCOMPARE(shown.at(i)->menu()->actions(), menus.at(i)->menu()->actions());
        }
    }

    void screenReaderFindsEachWindowsOwnItems() {
        const auto itemsRead = [](const platform::Window &window) {
            QStringList names;
            const QAccessibleInterface *bar =
                QAccessible::queryAccessibleInterface(window.menuBar());
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
        };
        const QStringList expected{
            u"Zorvan"_s,    u"About Zorvan"_s, u"Settings"_s,  QString(),       u"Quit"_s,
            u"Quizzes"_s,   u"Terminology"_s,  u"Variables"_s, u"Methods"_s,    u"Functions"_s,
            u"Structure"_s, u"Syntax"_s,       QString(),      u"Main Test"_s,  u"Window"_s,
            u"Main Menu"_s, u"Close Window"_s, u"Help"_s,      u"Zorvan Help"_s};
        delegate_->ShowHelp();
        delegate_->goPreferences();
        QCOMPARE(itemsRead(*delegate_->theHelp->window()), expected);
        QCOMPARE(itemsRead(*delegate_->theSettings->window()), expected);
        delegate_->theHelp->close();
        delegate_->theHelp.reset();
        desk::freeUnused();
        QCOMPARE(itemsRead(*delegate_->theSettings->window()), expected);
    }

    void shortcutsWorkFromEveryWindow_data() {
        QTest::addColumn<QString>("layout");
        QTest::addColumn<QKeyCombination>("key");
        QTest::addColumn<QString>("opened");
        QTest::addColumn<QString>("quizId");
        struct Shortcut {
            QKeyCombination key;
            QString opened;
            QString quizId = {};
        };
        const QString quiz = u"MainTest"_s;
        const QList<Shortcut> shortcuts{
            {Qt::CTRL | Qt::Key_1, quiz, u"1"_s},      {Qt::CTRL | Qt::Key_2, quiz, u"2"_s},
            {Qt::CTRL | Qt::Key_3, quiz, u"3"_s},      {Qt::CTRL | Qt::Key_4, quiz, u"4"_s},
            {Qt::CTRL | Qt::Key_5, quiz, u"5"_s},      {Qt::CTRL | Qt::Key_6, quiz, u"6"_s},
            {Qt::CTRL | Qt::Key_7, quiz, u"7"_s},      {Qt::CTRL | Qt::Key_0, u"MainMenu"_s},
            {Qt::CTRL | Qt::Key_Comma, u"Settings"_s}, {Qt::Key_F1, u"Help"_s},
        };
        for (const QString &layout : openwindow::layouts) {
            for (const Shortcut &shortcut : shortcuts) {
                const QString key = QKeySequence(shortcut.key).toString(QKeySequence::PortableText);
                QTest::addRow("%s, %s", qPrintable(layout), qPrintable(key))
                    << layout << shortcut.key << shortcut.opened << shortcut.quizId;
            }
        }
    }

    void shortcutsWorkFromEveryWindow() {
        QFETCH(const QString, layout);
        QFETCH(const QKeyCombination, key);
        QFETCH(const QString, opened);
        QFETCH(const QString, quizId);
        platform::Window *window = openwindow::open(layout, *delegate_);
        const QList<platform::Window *> before = desk::windows(opened);
        store::forgetWrites();
        learner::type(window, key);

        QCOMPARE(desk::windows(opened).size(), before.size() + 1);
        if (quizId.isEmpty()) {
            QCOMPARE(store::writes(), QList<store::Write>());
        } else {
            QCOMPARE(store::writes(), QList<store::Write>({{u"currentTest"_s, quizId}}));
        }
        QCOMPARE(window->isVisible(), layout != u"MainLayout");
    }

    void heldShortcutOpensOneWindow_data() {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<Qt::KeyboardModifier>("modifier");
        QTest::addColumn<QString>("opened");
        QTest::newRow("quiz") << Qt::Key_5 << Qt::ControlModifier << u"MainTest"_s;
        QTest::newRow("settings") << Qt::Key_Comma << Qt::ControlModifier << u"Settings"_s;
        QTest::newRow("help") << Qt::Key_F1 << Qt::NoModifier << u"Help"_s;
    }

    void heldShortcutOpensOneWindow() {
        QFETCH(const Qt::Key, key);
        QFETCH(const Qt::KeyboardModifier, modifier);
        QFETCH(const QString, opened);
        platform::Window *menu = openwindow::open(u"MainMenu"_s, *delegate_);
        learner::type(menu, modifier | key);
        platform::Window *window = desk::window(opened);
        QVERIFY(window != nullptr);
        QVERIFY(QTest::qWaitForWindowActive(window));
        for (int repeat = 0; repeat < 3; ++repeat) {
            constexpr bool pressed = true;
            constexpr bool repeated = true;
            QTest::simulateEvent(window->windowHandle(), pressed, key, modifier, QString(),
                                 repeated);
        }
        QCOMPARE(desk::windows(opened), QList<platform::Window *>{window});
    }

    void shortcutClosesTheWindowInFront_data() {
        QTest::addColumn<QString>("layout");
        for (const QString &layout :
             {u"MainMenu"_s, u"QuizComplete"_s, u"progress"_s, u"Settings"_s, u"Help"_s}) {
            QTest::newRow(qPrintable(layout)) << layout;
        }
    }

    void shortcutClosesTheWindowInFront() {
        QFETCH(const QString, layout);
        delegate_->ShowHelp();
        const platform::Window *behind = delegate_->theHelp->window();
        platform::Window *window = nullptr;
        if (layout == u"Help") {
            delegate_->ShowHelp();
            window = delegate_->theHelp->window();
        } else {
            window = openwindow::open(layout, *delegate_);
        }
        QVERIFY(window != behind);
        learner::type(window, Qt::CTRL | Qt::Key_W);
        QVERIFY(!window->isVisible());
        QVERIFY(behind->isVisible());
    }

    void shortcutAsksTheQuizBeforeItCloses() {
        platform::Window *quiz = openwindow::open(u"MainTest"_s, *delegate_);
        alerts_->answer(u"No"_s);
        learner::type(quiz, Qt::CTRL | Qt::Key_W);
        QVERIFY(quiz->isVisible());
        alerts_->answer(u"Yes"_s);
        learner::type(quiz, Qt::CTRL | Qt::Key_W);
        QVERIFY(!quiz->isVisible());
        QCOMPARE(alerts_->messages().size(), 2);
        QCOMPARE(alerts_->messages().first(),
                 u"This will end your current progress on this test, would you still like to close "
                 "this window?"_s);
    }

    void closeItemClosesOnlyTheWindowInFront() {
        platform::Window *settings = openwindow::open(u"Settings"_s, *delegate_);
        settings->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(settings));
        learner::pick(settings, u"closeWindow"_s);
        QVERIFY(!settings->isVisible());
        QCOMPARE(desk::windows(u"MainMenu"_s).size(), 1);
    }

    void escapeClosesOnlyTheAuxiliaryWindows_data() {
        QTest::addColumn<QString>("layout");
        QTest::addColumn<bool>("closes");
        QTest::newRow("settings") << u"Settings"_s << true;
        QTest::newRow("progress") << u"progress"_s << true;
        QTest::newRow("help") << u"Help"_s << true;
        QTest::newRow("results") << u"QuizComplete"_s << true;
        QTest::newRow("main menu") << u"MainMenu"_s << false;
        QTest::newRow("quiz") << u"MainTest"_s << false;
    }

    void escapeClosesOnlyTheAuxiliaryWindows() {
        QFETCH(const QString, layout);
        QFETCH(const bool, closes);
        platform::Window *window = openwindow::open(layout, *delegate_);
        learner::type(window, Qt::Key_Escape);
        QCOMPARE(!window->isVisible(), closes);
        QCOMPARE(alerts_->messages(), QStringList());
    }

    void windowMenuNamesWhatIsOpen() {
        platform::Window *menu = openwindow::open(u"MainMenu"_s, *delegate_);
        delegate_->ShowHelp();
        platform::Window *help = delegate_->theHelp->window();
        delegate_->goPreferences();
        platform::Window *settings = delegate_->theSettings->window();
        QVERIFY(QTest::qWaitForWindowActive(settings));
        const QString separator;
        QCOMPARE(windowsListed(settings),
                 QStringList({separator, u"&1 Zorvan"_s, u"&2 Help"_s, u"&3 Settings*"_s}));
        help->setWindowTitle(u"Help & more"_s);
        menu->close();
        help->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(help));
        QCOMPARE(windowsListed(help),
                 QStringList({separator, u"&1 Help && more*"_s, u"&2 Settings"_s}));
        help->close();
        settings->close();
        QCoreApplication::processEvents();
        QCOMPARE(windowsListed(desk::window(u"MainLayout"_s)), QStringList());
    }

    void windowMenuBringsAWindowToTheFront() {
        platform::Window *menu = openwindow::open(u"MainMenu"_s, *delegate_);
        platform::Window *settings = openwindow::open(u"Settings"_s, *delegate_);
        QVERIFY(QTest::qWaitForWindowActive(settings));
        menu->showMinimized();
        QMenu &open = openWindowMenu(settings);
        QTest::keyClick(&open, Qt::Key_1);
        QVERIFY(!open.isVisible());
        QVERIFY(QTest::qWaitForWindowActive(menu));
        QVERIFY(!menu->isMinimized());
        QVERIFY(settings->isVisible());
    }

    void windowMenuTellsManyWindowsApart() {
        for (int window = 0; window < 10; ++window) {
            delegate_->ShowHelp();
        }
        const QStringList listed = windowsListed(delegate_->theHelp->window());
        QCOMPARE(listed.size(), 11);
        QCOMPARE(listed.at(9), u"&9 Help"_s);
        QVERIFY2(listed.at(10).startsWith(u"10 Help"), qPrintable(listed.at(10)));
    }

    void aboutSaysWhatTheProgramIs() {
        platform::Window *menu = openwindow::open(u"MainMenu"_s, *delegate_);
        learner::pick(menu, u"about"_s);
        const QList<QMessageBox *> boxes = aboutBoxes();
        QCOMPARE(boxes.size(), 1);
        QMessageBox *box = boxes.first();
        QVERIFY(box->isVisible());
        // A modal box would stop the clock of an open quiz, as an alert does.
        QVERIFY(!box->isModal());
        QCOMPARE(box->text(), u"Zorvan "_s + QStringLiteral(ZORVAN_VERSION));
        QVERIFY(box->informativeText().endsWith(u"\nQt "_s + QString::fromLatin1(qVersion())));
        QCOMPARE(box->defaultButton()->text(), u"OK"_s);
        // The icon is in proportion to the text beside it.
        const double lines =
            box->iconPixmap().deviceIndependentSize().height() / box->fontMetrics().lineSpacing();
        QVERIFY2(qAbs(lines - 4) < 0.1,
                 qPrintable(u"The icon is %1 lines high, not 4"_s.arg(lines)));
        for (const QLabel *label : box->findChildren<QLabel *>()) {
            if (!label->text().isEmpty()) {
                QVERIFY2(
                    label->textFormat() == Qt::PlainText || !Qt::mightBeRichText(label->text()),
                    qUtf8Printable(label->text()));
            }
            // Only the picture needs a name of its own.
            QCOMPARE(label->accessibleName(), label->pixmap().isNull() ? QString() : u"Zorvan"_s);
        }
        box->close();
        desk::freeUnused();
        QVERIFY(menu->isVisible());
    }

    void aboutIsOpenOnce() {
        platform::Window *menu = openwindow::open(u"MainMenu"_s, *delegate_);
        learner::pick(menu, u"about"_s);
        const QPointer<QMessageBox> box = aboutBoxes().constFirst();
        box->showMinimized();
        platform::bringToFront(*menu);
        QVERIFY(QTest::qWaitForWindowActive(menu));
        learner::pick(menu, u"about"_s);
        QCOMPARE(aboutBoxes(), QList<QMessageBox *>({box}));
        QVERIFY(QTest::qWaitForWindowActive(box));
        QVERIFY(!box->isMinimized());
        box->close();
        desk::freeUnused();
        QVERIFY(box.isNull());
        learner::pick(menu, u"about"_s);
        QCOMPARE(aboutBoxes().size(), 1);
        QVERIFY(aboutBoxes().constFirst()->isVisible());
    }

    void keyboardStaysWhereTheUserTakesIt() {
        using namespace std::chrono_literals;
        platform::Window *menu = openwindow::open(u"MainMenu"_s, *delegate_);
        QVERIFY(QTest::qWaitForWindowActive(menu));
        learner::pick(menu, u"about"_s);
        QMessageBox *box = aboutBoxes().constFirst();
        QVERIFY(QTest::qWaitForWindowActive(box));
        menu->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(menu));
        // By then a request for the keyboard would have been repeated.
        bool isLater = false;
        QTimer::singleShot(500ms, menu, [&isLater] { isLater = true; });
        QVERIFY(QTest::qWaitFor([&isLater] { return isLater; }));
        QVERIFY(menu->isActiveWindow());
    }

 private:
    /// The items of the window's open Window menu that name windows; an asterisk marks those that
    /// are checked.
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

    static QList<QMessageBox *> aboutBoxes() {
        QList<QMessageBox *> boxes;
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (auto *box = qobject_cast<QMessageBox *>(widget)) {
                boxes << box;
            }
        }
        return boxes;
    }
};

ZORVAN_TEST(tst_menubar)
#include "tst_menubar.moc"
