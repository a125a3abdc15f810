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
#include "shell/learner.h"
#include "shell/mainmenu.h"
#include "shell/runningprogram.h"
#include "shell/settingscontroller.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

namespace {

/// Several times: what a freed controller held is freed one turn of the event loop later.
void freeUnused() {
    for (int depth = 0; depth < 3; ++depth) {
        desk::freeUnused();
    }
}

}  // namespace

class tst_lifetime final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void init();
    void cleanup();

    void propertyKeepsTheControllerOfAClosedWindow();
    void replacedControllersWindowGoesOnWorkingUntilClosed();
    void replacedQuizWindowGoesOnWorkingUntilClosed();
    void closedWindowsThatNobodyHoldsAreFreed();
    void quizOutlivesTheMainMenuThatOpenedIt();
    void quizThatEndsHoldsItsResults();
    void launchedProgramFreesEverythingAtItsEnd();

 private:
    std::optional<RunningProgram> program_;
};

void tst_lifetime::init() {
    program_.emplace();
    program_->delegate->applicationDidFinishLaunching();
}

void tst_lifetime::cleanup() {
    QVERIFY(program_->end());
}

void tst_lifetime::propertyKeepsTheControllerOfAClosedWindow() {
    program_->delegate->ShowHelp();
    const QPointer<Help> help = program_->delegate->theHelp.get();
    help->window()->close();
    freeUnused();
    QVERIFY(help);
    QVERIFY(!help->window()->isVisible());
    program_->delegate->ShowHelp();
    freeUnused();
    QVERIFY(!help);
}

void tst_lifetime::replacedControllersWindowGoesOnWorkingUntilClosed() {
    program_->delegate->goPreferences();
    const QPointer<SettingsController> first = program_->delegate->theSettings.get();
    program_->delegate->goPreferences();
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

void tst_lifetime::replacedQuizWindowGoesOnWorkingUntilClosed() {
    program_->delegate->GoTest5();
    const QPointer<MainTest> first = program_->delegate->theMainTest.get();
    program_->delegate->GoTest5();
    freeUnused();
    QVERIFY(first);
    desk::click(first->window(), u"btnAnswer1"_s);
    QCOMPARE(desk::text(first->window(), u"lblStatus"_s), u"correct"_s);
    program_->alerts->answer(u"Yes"_s);
    first->window()->close();
    freeUnused();
    QVERIFY(!first);
    QCOMPARE(desk::windows(u"MainTest"_s).size(), 1);
}

void tst_lifetime::closedWindowsThatNobodyHoldsAreFreed() {
    const QPointer<MainMenu> menu = program_->delegate->theMainMenu.get();
    learner::press(menu->window(), u"showProgress"_s);
    const QPointer<progress> overview = menu->progressController.get();
    learner::press(menu->window(), u"showPreferences"_s);
    const QPointer<SettingsController> settings = menu->settingsController.get();
    program_->delegate->theMainMenu.reset();
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

void tst_lifetime::quizOutlivesTheMainMenuThatOpenedIt() {
    const QPointer<MainMenu> menu = program_->delegate->theMainMenu.get();
    learner::press(menu->window(), u"goTest5"_s);
    menu->window()->close();
    program_->delegate->theMainMenu.reset();
    freeUnused();
    QVERIFY(!menu);
    platform::Window *quiz = desk::window(u"MainTest"_s);
    learner::finishStructure(quiz, true);
    QCOMPARE(store::value(u"quiz5"_s), u"1"_s);
    QCOMPARE(desk::windows(u"QuizComplete"_s).size(), 1);
}

void tst_lifetime::quizThatEndsHoldsItsResults() {
    program_->delegate->GoTest5();
    const QPointer<MainTest> quiz = program_->delegate->theMainTest.get();
    learner::finishStructure(quiz->window(), true);
    const QPointer<QuizComplete> results = quiz->quizComplete.get();
    QVERIFY(results->window()->isVisible());
    results->window()->close();
    freeUnused();
    QVERIFY(quiz);
    QVERIFY(results);
    program_->delegate->theMainTest.reset();
    freeUnused();
    QVERIFY(!quiz);
    QVERIFY(!results);
}

void tst_lifetime::launchedProgramFreesEverythingAtItsEnd() {
    program_->delegate->GoTest5();
    program_->delegate->ShowHelp();
    program_->delegate->goPreferences();
    const QPointer<MainTest> quiz = program_->delegate->theMainTest.get();
    const QPointer<Help> help = program_->delegate->theHelp.get();
    const QPointer<SettingsController> settings = program_->delegate->theSettings.get();
    program_->delegate.reset();
    QVERIFY(quiz && help && settings);
    desk::clear();
    QVERIFY(!quiz);
    QVERIFY(!help);
    QVERIFY(!settings);
}

ZORVAN_TEST_MAIN(tst_lifetime)
#include "tst_lifetime.moc"
