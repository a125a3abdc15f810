#include <stdexcept>

#include <QTest>

#include "progress/progress.h"
#include "quizrun/maintest.h"
#include "quizrun/quizrun.h"
#include "resources/resources.h"
#include "shell/help.h"
#include "shell/mainmenu.h"
#include "shell/settingscontroller.h"
#include "support/learner.h"
#include "support/testmain.h"
#include "support/windowtest.h"
#include "system/exception.h"

using namespace Qt::StringLiterals;

/// How windows come to be opened, and what happens if one cannot be.
class tst_navigation final : public ProgramTest {
    Q_OBJECT

 private Q_SLOTS:
    void init() {
        ProgramTest::init();
        delegate_->applicationDidFinishLaunching();
        menu_ = delegate_->theMainMenu;
        standardError_->take();
    }

    void cleanup() {
        menu_.reset();
        ProgramTest::cleanup();
    }

    void firstLaunchGreetsOverTheMainMenuThenLogsOneLine() {
        store::wipe();
        QStringList loggedUnderTheGreeting;
        qsizetype menusUnderTheGreeting = 0;
        alerts_->answer(u"OK"_s, [&] {
            loggedUnderTheGreeting = standardError_->take();
            menusUnderTheGreeting = desk::windows(u"MainMenu"_s).size();
        });
        delegate_->applicationDidFinishLaunching();
        const ShownAlert greeting{
            .message =
                u"Welcome to Zorvan, this is the main progress screen where you can select "
                "quizzes to take and track your progress."_s,
            .buttons = {u"OK"_s},
            .over = u"MainMenu"_s};
        QCOMPARE(alerts_->shown(), QList<ShownAlert>{greeting});
        QCOMPARE(menusUnderTheGreeting, 2);
        QCOMPARE(loggedUnderTheGreeting, QStringList());
        QCOMPARE(standardError_->take(), QStringList{u"Finished Starting"_s});
    }

    void quizIsHeldByWhatOpenedIt() {
        learner::press(menu_->window(), u"goTest5"_s);
        QVERIFY(menu_->theTestScreen->window() == desk::window(u"MainTest"_s));
        QVERIFY(!delegate_->theMainTest);
        QCOMPARE(delegate_->theMainMenu, menu_);

        learner::pick(menu_->window(), u"GoTest6"_s);
        QVERIFY(delegate_->theMainTest->window()->isVisible());
        // The main menu that is made with it is never shown.
        QVERIFY(delegate_->theMainMenu != menu_);
        QVERIFY(delegate_->theMainMenu->window() == nullptr);
        QCOMPARE(openWindows(), QStringList({u"Zorvan"_s, u"Structure"_s, u"Syntax"_s}));
        QVERIFY(!delegate_->theProgress);
    }

    void quizThatCannotBeLoadedIsReported_data() {
        QTest::addColumn<bool>("fromTheMenuBar");
        QTest::addColumn<bool>("hasLayout");
        QTest::newRow("menu bar, no layout") << true << false;
        QTest::newRow("menu bar, broken layout") << true << true;
        QTest::newRow("main menu, no layout") << false << false;
        QTest::newRow("main menu, broken layout") << false << true;
    }

    void quizThatCannotBeLoadedIsReported() {
        QFETCH(const bool, fromTheMenuBar);
        QFETCH(const bool, hasLayout);
        if (hasLayout) {
            platform::layouts()[u"MainTest"_s] = [](QMainWindow &window) {
                (new QAction(&window))->setProperty("action", u"Answer4Selected"_s);
            };
        } else {
            platform::layouts().erase(u"MainTest"_s);
        }
        delegate_->ShowHelp();
        QVERIFY(QTest::qWaitForWindowActive(delegate_->theHelp->window()));
        alerts_->answer(u"OK"_s);
        startStructure(fromTheMenuBar);

        const ShownAlert report{.message = u"Error loading the current quiz"_s,
                                .buttons = {u"OK"_s},
                                .over = fromTheMenuBar ? u"Help"_s : u"MainMenu"_s};
        QCOMPARE(alerts_->shown(), QList<ShownAlert>{report});
        QCOMPARE(store::value(u"currentTest"_s), u"5"_s);
        QCOMPARE(openWindows(), QStringList({u"Zorvan"_s, u"Help"_s}));
        QVERIFY(hasLayout || delegate_->theMainMenu == menu_);
    }

    void missingMainMenuStopsTheMenuBarsQuiz() {
        platform::layouts().erase(u"MainMenu"_s);
        alerts_->answer(u"OK"_s);
        startStructure(true);
        QCOMPARE(alerts_->messages(), QStringList{u"Error loading the current quiz"_s});
        QVERIFY(delegate_->theMainTest->window() == nullptr);
        // The main menu window makes no second main menu.
        startStructure(false);
        QCOMPARE(openWindows(), QStringList({u"Zorvan"_s, u"Structure"_s}));
    }

    void otherExceptionsEscapeToTheEventLoop() {
        quizRun().random = []() -> quint32 { throw std::runtime_error("no randomness"); };
        for (const bool fromTheMenuBar : {true, false}) {
            startStructure(fromTheMenuBar);
            const QStringList logged = standardError_->take();
            QCOMPARE(logged.size(), 1);
            QVERIFY2(logged.first().contains(u"no randomness"), qUtf8Printable(logged.first()));
            QCOMPARE(openWindows(), QStringList{u"Zorvan"_s});
        }
    }

    void unguardedOperationsFailAtTheEventLoop() {
        for (const QString &layout : {u"MainMenu"_s, u"Settings"_s, u"Help"_s, u"progress"_s}) {
            platform::layouts().erase(layout);
        }
        for (const QString &action : {u"GoMainMenu"_s, u"goPreferences"_s, u"ShowHelp"_s}) {
            learner::pick(menu_->window(), action);
            QCOMPARE(standardError_->take().size(), 1);
        }
        for (const QString &action : {u"showPreferences"_s, u"showProgress"_s}) {
            learner::press(menu_->window(), action);
            QCOMPARE(standardError_->take().size(), 1);
        }
        QCOMPARE(openWindows(), QStringList{u"Zorvan"_s});
        QVERIFY_THROWS_EXCEPTION(platform::Exception, delegate_->applicationDidFinishLaunching());
        QCOMPARE(standardError_->take(), QStringList());
    }

 private:
    /// Starts quiz 5 from the menu bar or from the main menu window.
    void startStructure(bool fromTheMenuBar) const {
        if (fromTheMenuBar) {
            learner::pick(menu_->window(), u"GoTest5"_s);
        } else {
            learner::press(menu_->window(), u"goTest5"_s);
        }
    }

    std::shared_ptr<MainMenu> menu_;
};

ZORVAN_TEST(tst_navigation)
#include "tst_navigation.moc"
