#include <optional>

#include <QPointer>
#include <QRadioButton>
#include <QTest>

#include "progress/progress.h"
#include "progress/quizcomplete.h"
#include "quizrun/maintest.h"
#include "quizrun/quizrun.h"
#include "shell/appdelegate.h"
#include "shell/help.h"
#include "shell/mainmenu.h"
#include "shell/settingscontroller.h"
#include "support/learner.h"
#include "support/testmain.h"
#include "support/windowtest.h"

using namespace Qt::StringLiterals;

namespace {

/// Several times: what a freed controller held is freed one turn of the event loop later.
void freeUnused() {
    for (int depth = 0; depth < 3; ++depth) {
        desk::freeUnused();
    }
}

}  // namespace

class tst_lifetime final : public ProgramTest {
    Q_OBJECT

 private Q_SLOTS:
    void init() {
        ProgramTest::init();
        delegate_->applicationDidFinishLaunching();
    }

    void propertyKeepsTheControllerOfAClosedWindow() {
        delegate_->ShowHelp();
        const QPointer<Help> help = delegate_->theHelp.get();
        help->window()->close();
        freeUnused();
        QVERIFY(help);
        QVERIFY(!help->window()->isVisible());
        delegate_->ShowHelp();
        freeUnused();
        QVERIFY(!help);
    }

    void replacedControllersWindowGoesOnWorkingUntilClosed() {
        delegate_->goPreferences();
        const QPointer<SettingsController> first = delegate_->theSettings.get();
        delegate_->goPreferences();
        freeUnused();
        QVERIFY(first);
        QVERIFY(first->window()->isVisible());
        desk::control<QRadioButton>(first->window(), u"yesRadio"_s).click();
        QCOMPARE(store::value(u"timedQuizzes"_s), u"yes"_s);

        const QPointer<platform::Window> window = first->window();
        window->close();
        freeUnused();
        QVERIFY(!first);
        QVERIFY(!window);
    }

    void replacedQuizWindowGoesOnWorkingUntilClosed() {
        delegate_->GoTest5();
        const QPointer<MainTest> first = delegate_->theMainTest.get();
        delegate_->GoTest5();
        freeUnused();
        QVERIFY(first);
        desk::click(first->window(), u"btnAnswer1"_s);
        QCOMPARE(desk::text(first->window(), u"lblStatus"_s), u"correct"_s);
        alerts_->answer(u"Yes"_s);
        first->window()->close();
        freeUnused();
        QVERIFY(!first);
        QCOMPARE(desk::windows(u"MainTest"_s).size(), 1);
    }

    void closedWindowsThatNobodyHoldsAreFreed() {
        const QPointer<MainMenu> menu = delegate_->theMainMenu.get();
        learner::press(menu->window(), u"showProgress"_s);
        const QPointer<progress> overview = menu->progressController.get();
        learner::press(menu->window(), u"showPreferences"_s);
        const QPointer<SettingsController> settings = menu->settingsController.get();
        delegate_->theMainMenu.reset();
        overview->window()->close();
        freeUnused();
        QVERIFY(menu && overview && settings);

        // What the main menu held is freed with it; a window that is still on screen stays.
        menu->window()->close();
        freeUnused();
        QVERIFY(!menu);
        QVERIFY(!overview);
        QVERIFY(settings);
        settings->window()->close();
        freeUnused();
        QVERIFY(!settings);
    }

    void quizOutlivesTheMainMenuThatOpenedIt() {
        const QPointer<MainMenu> menu = delegate_->theMainMenu.get();
        learner::press(menu->window(), u"goTest5"_s);
        menu->window()->close();
        delegate_->theMainMenu.reset();
        freeUnused();
        QVERIFY(!menu);
        platform::Window *quiz = desk::window(u"MainTest"_s);
        learner::finishStructure(quiz, true);
        QCOMPARE(store::value(u"quiz5"_s), u"1"_s);
        QCOMPARE(desk::windows(u"QuizComplete"_s).size(), 1);
    }

    void quizThatEndsHoldsItsResults() {
        delegate_->GoTest5();
        const QPointer<MainTest> quiz = delegate_->theMainTest.get();
        learner::finishStructure(quiz->window(), true);
        const QPointer<QuizComplete> results = quiz->quizComplete.get();
        QVERIFY(results->window()->isVisible());
        results->window()->close();
        freeUnused();
        QVERIFY(quiz);
        QVERIFY(results);
        delegate_->theMainTest.reset();
        freeUnused();
        QVERIFY(!quiz);
        QVERIFY(!results);
    }

    void launchedProgramFreesEverythingAtItsEnd() {
        delegate_->GoTest5();
        delegate_->ShowHelp();
        delegate_->goPreferences();
        const QPointer<MainTest> quiz = delegate_->theMainTest.get();
        const QPointer<Help> help = delegate_->theHelp.get();
        const QPointer<SettingsController> settings = delegate_->theSettings.get();
        delegate_.reset();
        QVERIFY(quiz && help && settings);
        desk::clear();
        QVERIFY(!quiz);
        QVERIFY(!help);
        QVERIFY(!settings);
    }
};

ZORVAN_TEST(tst_lifetime)
#include "tst_lifetime.moc"
