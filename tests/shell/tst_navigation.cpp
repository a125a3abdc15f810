#include <stdexcept>

#include <QTest>

#include "controls/levelindicator.h"
#include "controls/textlabel.h"
#include "progress/progress.h"
#include "quizrun/maintest.h"
#include "quizrun/quizrun.h"
#include "resources/resources.h"
#include "shell/appdelegate.h"
#include "shell/help.h"
#include "shell/mainmenu.h"
#include "shell/settingscontroller.h"
#include "support/learner.h"
#include "support/standarderror.h"
#include "support/testmain.h"
#include "support/windowtest.h"
#include "system/exception.h"
#include "windowing/application.h"

using namespace Qt::StringLiterals;

class tst_navigation final : public ProgramTest {
    Q_OBJECT

 private Q_SLOTS:
    void init() {
        ProgramTest::init();
        delegate_->applicationDidFinishLaunching();
        mainMenu_ = desk::window(u"MainMenu"_s);
        store::forgetWrites();
    }

    void launchShowsTheMainMenuThenLogsOneLine() {
        store::wipe();
        AppDelegate delegate;
        StandardError standardError;
        QStringList loggedUnderTheGreeting;
        bool shownUnderTheGreeting = false;
        alerts_->answer(u"OK"_s, [&] {
            loggedUnderTheGreeting = standardError.lines();
            shownUnderTheGreeting = desk::windows(u"MainMenu"_s).size() == 2;
        });
        delegate.applicationDidFinishLaunching();

        QVERIFY(shownUnderTheGreeting);
        QCOMPARE(loggedUnderTheGreeting, QStringList());
        QCOMPARE(standardError.lines(), QStringList{u"Finished Starting"_s});
        QVERIFY(delegate.theMainMenu->window()->isVisible());
        QVERIFY(!delegate.theSettings && !delegate.theMainTest && !delegate.theHelp);
    }

    void launchWithoutTheMainMenuLayoutRaises() {
        platform::layouts().erase(u"MainMenu"_s);
        StandardError standardError;
        AppDelegate delegate;
        QVERIFY_THROWS_EXCEPTION(platform::Exception, delegate.applicationDidFinishLaunching());
        QCOMPARE(standardError.lines(), QStringList());
    }

    void quizButtonOpensItsQuizOverTheMainMenu_data() { learner::quizRows(); }

    void quizButtonOpensItsQuizOverTheMainMenu() {
        QFETCH(const QString, id);
        QFETCH(const QString, name);
        const auto menu = delegate_->theMainMenu;
        learner::press(mainMenu_, u"goTest"_s + id);

        QCOMPARE(store::writes(), QList<store::Write>({{u"currentTest"_s, id}}));
        QCOMPARE(store::value(u"currentTest"_s), id);
        platform::Window *quiz = desk::window(u"MainTest"_s);
        QVERIFY(quiz != nullptr);
        QCOMPARE(desk::text(quiz, u"lblQuizName"_s), name);
        QCOMPARE(menu->theTestScreen->window(), quiz);
        QVERIFY(!delegate_->theMainTest);
        QCOMPARE(delegate_->theMainMenu, menu);
        QCOMPARE(desk::windows(u"MainMenu"_s), QList<platform::Window *>{mainMenu_});
    }

    void menuItemOpensItsQuizAndLeavesTheMainMenu_data() { learner::quizRows(); }

    void menuItemOpensItsQuizAndLeavesTheMainMenu() {
        QFETCH(const QString, id);
        QFETCH(const QString, name);
        const auto menu = delegate_->theMainMenu;
        learner::pick(mainMenu_, u"GoTest"_s + id);

        QCOMPARE(store::writes(), QList<store::Write>({{u"currentTest"_s, id}}));
        QCOMPARE(store::value(u"currentTest"_s), id);
        platform::Window *quiz = desk::window(u"MainTest"_s);
        QVERIFY(quiz != nullptr);
        QCOMPARE(desk::text(quiz, u"lblQuizName"_s), name);
        QCOMPARE(delegate_->theMainTest->window(), quiz);
        QVERIFY(!menu->theTestScreen);
        QVERIFY(delegate_->theMainMenu != menu);
        QVERIFY(delegate_->theMainMenu->window() == nullptr);
        QCOMPARE(desk::windows(u"MainMenu"_s), QList<platform::Window *>{mainMenu_});
    }

    void closeOfTheNeverShownMainMenuLoadsNothing() {
        static int built = 0;
        static platform::LayoutBuilder whole = nullptr;
        whole = platform::layoutNamed(u"MainMenu"_s);
        platform::layouts()[u"MainMenu"_s] = [](QMainWindow &window) {
            ++built;
            whole(window);
        };
        // If a main menu were loaded, it would seed this store and greet.
        store::wipe();
        learner::pick(mainMenu_, u"GoTest2"_s);
        QCOMPARE(built, 0);
        QCOMPARE(store::contents(), store::Contents({{u"currentTest"_s, u"2"_s}}));
        QCOMPARE(alerts_->messages(), QStringList());
    }

    void quizWindowIsLoadedAfterItsQuizIsWritten() {
        store::set(u"currentTest"_s, u"3"_s);
        startStructure(true);
        QCOMPARE(quizRun().currentTestId, u"5"_s);
        learner::press(mainMenu_, u"goTest6"_s);
        QCOMPARE(quizRun().currentTestId, u"6"_s);
    }

    void mainMenuOpensTwice() {
        learner::pick(mainMenu_, u"GoMainMenu"_s);
        const auto second = delegate_->theMainMenu;
        QVERIFY(second->window() != mainMenu_);
        learner::pick(mainMenu_, u"GoMainMenu"_s);
        QVERIFY(delegate_->theMainMenu != second);
        QVERIFY(delegate_->theMainMenu->window()->isVisible());
        QCOMPARE(desk::windows(u"MainMenu"_s).size(), 3);
    }

    void settingsOpenTwice() {
        learner::pick(mainMenu_, u"goPreferences"_s);
        const auto fromTheMenuBar = delegate_->theSettings;
        QVERIFY(fromTheMenuBar->window()->isVisible());
        learner::pick(mainMenu_, u"goPreferences"_s);
        QVERIFY(delegate_->theSettings != fromTheMenuBar);
        QVERIFY(delegate_->theSettings->window()->isVisible());
        QCOMPARE(desk::windows(u"Settings"_s).size(), 2);

        const auto menu = delegate_->theMainMenu;
        learner::press(mainMenu_, u"showPreferences"_s);
        const auto fromTheWindow = menu->settingsController;
        QVERIFY(fromTheWindow->window()->isVisible());
        learner::press(mainMenu_, u"showPreferences"_s);
        QVERIFY(menu->settingsController != fromTheWindow);
        QVERIFY(menu->settingsController->window()->isVisible());
        QCOMPARE(desk::windows(u"Settings"_s).size(), 4);
    }

    void progressOpensTwice() {
        const auto menu = delegate_->theMainMenu;
        learner::press(mainMenu_, u"showProgress"_s);
        const auto first = menu->progressController;
        learner::press(mainMenu_, u"showProgress"_s);
        QVERIFY(menu->progressController != first);
        QVERIFY(menu->progressController->window()->isVisible());
        QVERIFY(first->window()->isVisible());
        QCOMPARE(desk::windows(u"progress"_s).size(), 2);
    }

    void helpOpensTwice() {
        learner::pick(mainMenu_, u"ShowHelp"_s);
        const auto first = delegate_->theHelp;
        learner::pick(mainMenu_, u"ShowHelp"_s);
        QVERIFY(delegate_->theHelp != first);
        QVERIFY(delegate_->theHelp->window()->isVisible());
        QVERIFY(first->window()->isVisible());
        QCOMPARE(desk::windows(u"Help"_s).size(), 2);
    }

    void progressPropertyOfTheDelegateStaysEmpty() {
        for (const QString &action :
             {u"GoMainMenu"_s, u"goPreferences"_s, u"ShowHelp"_s, u"GoTest1"_s}) {
            learner::pick(mainMenu_, action);
        }
        learner::press(mainMenu_, u"showProgress"_s);
        QCOMPARE(desk::windows(u"progress"_s).size(), 1);
        QVERIFY(!delegate_->theProgress);
    }

    void showMainTestOpensTheQuizOfTheStore() {
        store::set(u"currentTest"_s, u"3"_s);
        delegate_->ShowMainTest();
        platform::Window *quiz = desk::window(u"MainTest"_s);
        QCOMPARE(delegate_->theMainTest->window(), quiz);
        QCOMPARE(desk::text(quiz, u"lblQuizName"_s), u"Methods"_s);
        QCOMPARE(store::writes(), QList<store::Write>());
    }

    void missingQuizLayoutIsReported_data() { openerRows(); }

    void missingQuizLayoutIsReported() {
        QFETCH(const bool, fromTheMenuBar);
        platform::layouts().erase(u"MainTest"_s);
        const auto menu = delegate_->theMainMenu;
        alerts_->answer(u"OK"_s);
        StandardError standardError;
        startStructure(fromTheMenuBar);

        QCOMPARE(standardError.lines(), QStringList());
        QCOMPARE(alerts_->shown().size(), 1);
        const ShownAlert report = alerts_->shown().first();
        QCOMPARE(report.message, u"Error loading the current quiz"_s);
        QCOMPARE(report.buttons, QStringList{u"OK"_s});
        QCOMPARE(report.informativeText, QString());
        QCOMPARE(report.title, QString());
        QVERIFY(!report.hasIcon);
        QCOMPARE(store::writes(), QList<store::Write>({{u"currentTest"_s, u"5"_s}}));
        QVERIFY(desk::windows(u"MainTest"_s).isEmpty());
        // None of the later steps was taken.
        QCOMPARE(delegate_->theMainMenu, menu);
        QVERIFY(mainMenu_->isVisible());
    }

    void brokenQuizLayoutIsReported_data() { openerRows(); }

    void brokenQuizLayoutIsReported() {
        QFETCH(const bool, fromTheMenuBar);
        static platform::LayoutBuilder whole = nullptr;
        whole = platform::layoutNamed(u"MainTest"_s);
        platform::layouts()[u"MainTest"_s] = [](QMainWindow &window) {
            whole(window);
            desk::control(&window, u"btnAnswer1"_s).setProperty("action", u"Answer4Selected"_s);
        };
        alerts_->answer(u"OK"_s);
        StandardError standardError;
        startStructure(fromTheMenuBar);
        QCOMPARE(alerts_->messages(), QStringList{u"Error loading the current quiz"_s});
        QCOMPARE(standardError.lines(), QStringList());
        QCOMPARE(store::value(u"currentTest"_s), u"5"_s);
        QVERIFY(desk::windows(u"MainTest"_s).isEmpty());
    }

    void missingMainMenuLayoutStopsTheMenuBarsQuiz() {
        platform::layouts().erase(u"MainMenu"_s);
        alerts_->answer(u"OK"_s);
        startStructure(true);
        QCOMPARE(alerts_->messages(), QStringList{u"Error loading the current quiz"_s});
        QCOMPARE(store::value(u"currentTest"_s), u"5"_s);
        QVERIFY(delegate_->theMainTest);
        QVERIFY(delegate_->theMainTest->window() == nullptr);
        QVERIFY(desk::windows(u"MainTest"_s).isEmpty());

        // The main menu window builds no second main menu.
        startStructure(false);
        QCOMPARE(desk::text(desk::window(u"MainTest"_s), u"lblQuizName"_s), u"Structure"_s);
    }

    void otherExceptionsEscapeToTheEventLoop_data() { openerRows(); }

    void otherExceptionsEscapeToTheEventLoop() {
        QFETCH(const bool, fromTheMenuBar);
        quizRun().random = []() -> quint32 { throw std::runtime_error("no randomness"); };
        {
            StandardError standardError;
            startStructure(fromTheMenuBar);
            QCOMPARE(standardError.lines().size(), 1);
            QVERIFY2(standardError.lines().constFirst().contains(u"no randomness"),
                     qUtf8Printable(standardError.lines().constFirst()));
        }
        QCOMPARE(alerts_->messages(), QStringList());
        QCOMPARE(store::value(u"currentTest"_s), u"5"_s);
        QVERIFY(desk::windows(u"MainTest"_s).isEmpty());

        quizRun().random = [] { return 0U; };
        startStructure(fromTheMenuBar);
        QCOMPARE(desk::text(desk::window(u"MainTest"_s), u"lblQuizName"_s), u"Structure"_s);
    }

    void bothGuardsLetOtherExceptionsPass() {
        quizRun().random = []() -> quint32 { throw std::runtime_error("no randomness"); };
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, delegate_->AssignTest(5));
        const auto menu = platform::makeController<MainMenu>(u"MainMenu"_s);
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, menu->AssignTest(5));
        QCOMPARE(alerts_->messages(), QStringList());
    }

    void unguardedOperationsFailAtTheEventLoop_data() {
        QTest::addColumn<QString>("layout");
        QTest::addColumn<QString>("action");
        QTest::addColumn<bool>("inTheMenuBar");
        QTest::newRow("main menu") << u"MainMenu"_s << u"GoMainMenu"_s << true;
        QTest::newRow("settings") << u"Settings"_s << u"goPreferences"_s << true;
        QTest::newRow("help") << u"Help"_s << u"ShowHelp"_s << true;
        QTest::newRow("settings, window") << u"Settings"_s << u"showPreferences"_s << false;
        QTest::newRow("progress, window") << u"progress"_s << u"showProgress"_s << false;
    }

    void unguardedOperationsFailAtTheEventLoop() {
        QFETCH(const QString, layout);
        QFETCH(const QString, action);
        QFETCH(const bool, inTheMenuBar);
        const qsizetype before = desk::windows(layout).size();
        platform::layouts().erase(layout);
        StandardError standardError;
        if (inTheMenuBar) {
            learner::pick(mainMenu_, action);
        } else {
            learner::press(mainMenu_, action);
        }
        QCOMPARE(standardError.lines().size(), 1);
        QVERIFY2(standardError.lines().constFirst().contains(layout),
                 qUtf8Printable(standardError.lines().constFirst()));
        QCOMPARE(desk::windows(layout).size(), before);
        QCOMPARE(alerts_->messages(), QStringList());
    }

    void refreshShowsAFinishedQuizInTheOpenMainMenu() {
        startStructure(false);
        {
            const StandardError quiet;
            learner::finishStructure(desk::window(u"MainTest"_s), true);
        }
        const qsizetype menus = desk::windows(u"MainMenu"_s).size();
        const auto &level =
            desk::control<platform::LevelIndicator>(mainMenu_, u"progressbarQuiz5"_s);
        const auto &overall =
            desk::control<platform::LevelIndicator>(mainMenu_, u"progressbarMain"_s);
        QCOMPARE(level.doubleValue(), 0.0);
        learner::press(mainMenu_, u"refreshProgress"_s);
        QCOMPARE(level.doubleValue(), 1.0);
        QCOMPARE(overall.doubleValue(), 1.0);
        QCOMPARE(desk::windows(u"MainMenu"_s).size(), menus);
    }

    void helpClosesByItsButton() {
        learner::pick(mainMenu_, u"ShowHelp"_s);
        learner::press(desk::window(u"Help"_s), u"closeHelp"_s);
        QVERIFY(desk::windows(u"Help"_s).isEmpty());
        QVERIFY(mainMenu_->isVisible());
        // The property still holds the controller of the closed window.
        QVERIFY(delegate_->theHelp);
    }

    void journeyLogsThreeLines() {
        StandardError standardError;
        AppDelegate delegate;
        delegate.applicationDidFinishLaunching();
        learner::press(delegate.theMainMenu->window(), u"showProgress"_s);
        learner::press(delegate.theMainMenu->window(), u"refreshProgress"_s);
        learner::press(delegate.theMainMenu->window(), u"goTest5"_s);
        learner::finishStructure(desk::window(u"MainTest"_s), true);
        learner::press(desk::window(u"QuizComplete"_s), u"goHome"_s);
        delegate.ShowHelp();
        delegate.goPreferences();
        QCoreApplication::processEvents();
        QCOMPARE(standardError.lines(),
                 QStringList({u"Finished Starting"_s, u"5"_s, u"Going Home"_s}));
    }

 private:
    static void openerRows() {
        QTest::addColumn<bool>("fromTheMenuBar");
        QTest::newRow("menu bar") << true;
        QTest::newRow("main menu window") << false;
    }

    /// Starts quiz 5 from the menu bar or from the main menu window.
    void startStructure(bool fromTheMenuBar) const {
        if (fromTheMenuBar) {
            learner::pick(mainMenu_, u"GoTest5"_s);
        } else {
            learner::press(mainMenu_, u"goTest5"_s);
        }
    }

    /// The main menu window that the launch showed.
    platform::Window *mainMenu_ = nullptr;
};

ZORVAN_TEST(tst_navigation)
#include "tst_navigation.moc"
