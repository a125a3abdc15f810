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
#include "shell/openwindow.h"
#include "shell/runningprogram.h"
#include "shell/settingscontroller.h"
#include "support/testmain.h"
#include "windowing/bringtofront.h"

using namespace Qt::StringLiterals;

class tst_menubar final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void init();
    void cleanup();

    void everyWindowShowsTheSameMenuItems_data();
    void everyWindowShowsTheSameMenuItems();
    void screenReaderFindsEachWindowsOwnItems();
    void shortcutsWorkFromEveryWindow_data();
    void shortcutsWorkFromEveryWindow();
    void heldShortcutOpensOneWindow_data();
    void heldShortcutOpensOneWindow();
    void shortcutClosesTheWindowInFront_data();
    void shortcutClosesTheWindowInFront();
    void shortcutAsksTheQuizBeforeItCloses();
    void closeItemClosesOnlyTheWindowInFront();
    void escapeClosesOnlyTheAuxiliaryWindows_data();
    void escapeClosesOnlyTheAuxiliaryWindows();
    void windowMenuNamesWhatIsOpen();
    void windowMenuBringsAWindowToTheFront();
    void windowMenuTellsManyWindowsApart();
    void aboutSaysWhatTheProgramIs();
    void aboutIsOpenOnce();
    void keyboardStaysWhereTheUserTakesIt();

 private:
    /// The items of the window's open Window menu that name windows; an asterisk marks those that
    /// are checked.
    static QStringList windowsListed(const platform::Window *window);
    static QMenu &openWindowMenu(const platform::Window *window);
    static QList<QMessageBox *> aboutBoxes();

    std::optional<RunningProgram> program_;
};

void tst_menubar::init() {
    program_.emplace();
}

void tst_menubar::cleanup() {
    QVERIFY(program_->end());
}

void tst_menubar::everyWindowShowsTheSameMenuItems_data() {
    QTest::addColumn<QString>("layout");
    for (const QString &layout : openwindow::layouts) {
        QTest::newRow(qPrintable(layout)) << layout;
    }
}

void tst_menubar::everyWindowShowsTheSameMenuItems() {
    QFETCH(const QString, layout);
    const platform::Window *wayBack = openwindow::open(u"MainLayout"_s, *program_->delegate);
    const QList<QAction *> menus = wayBack->menuBar()->actions();
    QCOMPARE(menus.size(), 4);
    const platform::Window *window = openwindow::open(layout, *program_->delegate);
    QVERIFY(window->menuBar()->isVisible());
    const QList<QAction *> shown = window->menuBar()->actions();
    QCOMPARE(shown.size(), menus.size());
    for (qsizetype i = 0; i < menus.size(); ++i) {
        QCOMPARE(shown.at(i)->text(), menus.at(i)->text());
        QCOMPARE(shown.at(i)->menu()->actions(), menus.at(i)->menu()->actions());
    }
}

void tst_menubar::screenReaderFindsEachWindowsOwnItems() {
    const auto itemsRead = [](const platform::Window &window) {
        QStringList names;
        const QAccessibleInterface *bar = QAccessible::queryAccessibleInterface(window.menuBar());
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
    program_->delegate->ShowHelp();
    program_->delegate->goPreferences();
    QCOMPARE(itemsRead(*program_->delegate->theHelp->window()), expected);
    QCOMPARE(itemsRead(*program_->delegate->theSettings->window()), expected);
    program_->delegate->theHelp->close();
    program_->delegate->theHelp.reset();
    desk::freeUnused();
    QCOMPARE(itemsRead(*program_->delegate->theSettings->window()), expected);
}

void tst_menubar::shortcutsWorkFromEveryWindow_data() {
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

void tst_menubar::shortcutsWorkFromEveryWindow() {
    QFETCH(const QString, layout);
    QFETCH(const QKeyCombination, key);
    QFETCH(const QString, opened);
    QFETCH(const QString, quizId);
    platform::Window *window = openwindow::open(layout, *program_->delegate);
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

void tst_menubar::heldShortcutOpensOneWindow_data() {
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifier>("modifier");
    QTest::addColumn<QString>("opened");
    QTest::newRow("quiz") << Qt::Key_5 << Qt::ControlModifier << u"MainTest"_s;
    QTest::newRow("settings") << Qt::Key_Comma << Qt::ControlModifier << u"Settings"_s;
    QTest::newRow("help") << Qt::Key_F1 << Qt::NoModifier << u"Help"_s;
}

void tst_menubar::heldShortcutOpensOneWindow() {
    QFETCH(const Qt::Key, key);
    QFETCH(const Qt::KeyboardModifier, modifier);
    QFETCH(const QString, opened);
    platform::Window *menu = openwindow::open(u"MainMenu"_s, *program_->delegate);
    learner::type(menu, modifier | key);
    platform::Window *window = desk::window(opened);
    QVERIFY(window != nullptr);
    QVERIFY(QTest::qWaitForWindowActive(window));
    for (int repeat = 0; repeat < 3; ++repeat) {
        constexpr bool pressed = true;
        constexpr bool repeated = true;
        QTest::simulateEvent(window->windowHandle(), pressed, key, modifier, QString(), repeated);
    }
    QCOMPARE(desk::windows(opened), QList<platform::Window *>{window});
}

void tst_menubar::shortcutClosesTheWindowInFront_data() {
    QTest::addColumn<QString>("layout");
    for (const QString &layout :
         {u"MainMenu"_s, u"QuizComplete"_s, u"progress"_s, u"Settings"_s, u"Help"_s}) {
        QTest::newRow(qPrintable(layout)) << layout;
    }
}

void tst_menubar::shortcutClosesTheWindowInFront() {
    QFETCH(const QString, layout);
    program_->delegate->ShowHelp();
    const platform::Window *behind = program_->delegate->theHelp->window();
    platform::Window *window = nullptr;
    if (layout == u"Help") {
        program_->delegate->ShowHelp();
        window = program_->delegate->theHelp->window();
    } else {
        window = openwindow::open(layout, *program_->delegate);
    }
    QVERIFY(window != behind);
    learner::type(window, Qt::CTRL | Qt::Key_W);
    QVERIFY(!window->isVisible());
    QVERIFY(behind->isVisible());
}

void tst_menubar::shortcutAsksTheQuizBeforeItCloses() {
    platform::Window *quiz = openwindow::open(u"MainTest"_s, *program_->delegate);
    program_->alerts->answer(u"No"_s);
    learner::type(quiz, Qt::CTRL | Qt::Key_W);
    QVERIFY(quiz->isVisible());
    program_->alerts->answer(u"Yes"_s);
    learner::type(quiz, Qt::CTRL | Qt::Key_W);
    QVERIFY(!quiz->isVisible());
    QCOMPARE(program_->alerts->messages().size(), 2);
    QCOMPARE(program_->alerts->messages().first(),
             u"This will end your current progress on this test, would you still like to close "
             "this window?"_s);
}

void tst_menubar::closeItemClosesOnlyTheWindowInFront() {
    platform::Window *settings = openwindow::open(u"Settings"_s, *program_->delegate);
    settings->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(settings));
    learner::pick(settings, u"closeWindow"_s);
    QVERIFY(!settings->isVisible());
    QCOMPARE(desk::windows(u"MainMenu"_s).size(), 1);
}

void tst_menubar::escapeClosesOnlyTheAuxiliaryWindows_data() {
    QTest::addColumn<QString>("layout");
    QTest::addColumn<bool>("closes");
    QTest::newRow("settings") << u"Settings"_s << true;
    QTest::newRow("progress") << u"progress"_s << true;
    QTest::newRow("help") << u"Help"_s << true;
    QTest::newRow("results") << u"QuizComplete"_s << true;
    QTest::newRow("main menu") << u"MainMenu"_s << false;
    QTest::newRow("quiz") << u"MainTest"_s << false;
}

void tst_menubar::escapeClosesOnlyTheAuxiliaryWindows() {
    QFETCH(const QString, layout);
    QFETCH(const bool, closes);
    platform::Window *window = openwindow::open(layout, *program_->delegate);
    learner::type(window, Qt::Key_Escape);
    QCOMPARE(!window->isVisible(), closes);
    QCOMPARE(program_->alerts->messages(), QStringList());
}

QMenu &tst_menubar::openWindowMenu(const platform::Window *window) {
    QMenu &menu = *window->menuBar()->actions().at(2)->menu();
    menu.popup(window->mapToGlobal(QPoint(0, 0)));
    return menu;
}

QStringList tst_menubar::windowsListed(const platform::Window *window) {
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

void tst_menubar::windowMenuNamesWhatIsOpen() {
    platform::Window *menu = openwindow::open(u"MainMenu"_s, *program_->delegate);
    program_->delegate->ShowHelp();
    platform::Window *help = program_->delegate->theHelp->window();
    program_->delegate->goPreferences();
    platform::Window *settings = program_->delegate->theSettings->window();
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

void tst_menubar::windowMenuBringsAWindowToTheFront() {
    platform::Window *menu = openwindow::open(u"MainMenu"_s, *program_->delegate);
    platform::Window *settings = openwindow::open(u"Settings"_s, *program_->delegate);
    QVERIFY(QTest::qWaitForWindowActive(settings));
    menu->showMinimized();
    QMenu &open = openWindowMenu(settings);
    QTest::keyClick(&open, Qt::Key_1);
    QVERIFY(!open.isVisible());
    QVERIFY(QTest::qWaitForWindowActive(menu));
    QVERIFY(!menu->isMinimized());
    QVERIFY(settings->isVisible());
}

void tst_menubar::windowMenuTellsManyWindowsApart() {
    for (int window = 0; window < 10; ++window) {
        program_->delegate->ShowHelp();
    }
    const QStringList listed = windowsListed(program_->delegate->theHelp->window());
    QCOMPARE(listed.size(), 11);
    QCOMPARE(listed.at(9), u"&9 Help"_s);
    QVERIFY2(listed.at(10).startsWith(u"10 Help"), qPrintable(listed.at(10)));
}

QList<QMessageBox *> tst_menubar::aboutBoxes() {
    QList<QMessageBox *> boxes;
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (auto *box = qobject_cast<QMessageBox *>(widget)) {
            boxes << box;
        }
    }
    return boxes;
}

void tst_menubar::aboutSaysWhatTheProgramIs() {
    platform::Window *menu = openwindow::open(u"MainMenu"_s, *program_->delegate);
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
    QVERIFY2(qAbs(lines - 4) < 0.1, qPrintable(u"The icon is %1 lines high, not 4"_s.arg(lines)));
    for (const QLabel *label : box->findChildren<QLabel *>()) {
        if (!label->text().isEmpty()) {
            QVERIFY2(label->textFormat() == Qt::PlainText || !Qt::mightBeRichText(label->text()),
                     qUtf8Printable(label->text()));
        }
        // Only the picture needs a name of its own.
        QCOMPARE(label->accessibleName(), label->pixmap().isNull() ? QString() : u"Zorvan"_s);
    }
    box->close();
    desk::freeUnused();
    QVERIFY(menu->isVisible());
}

void tst_menubar::aboutIsOpenOnce() {
    platform::Window *menu = openwindow::open(u"MainMenu"_s, *program_->delegate);
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

void tst_menubar::keyboardStaysWhereTheUserTakesIt() {
    using namespace std::chrono_literals;
    platform::Window *menu = openwindow::open(u"MainMenu"_s, *program_->delegate);
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

ZORVAN_TEST_MAIN(tst_menubar)
#include "tst_menubar.moc"
