#include <optional>

#include <QTest>

#include "shell/eventloop.h"
#include "shell/help.h"
#include "shell/openwindow.h"
#include "shell/runningprogram.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

class tst_quit final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void init();
    void cleanup();

    void quitClosesEveryWindowAndEndsTheProgram();
    void shortcutQuitsFromEveryWindow_data();
    void shortcutQuitsFromEveryWindow();
    void noInAQuizCancelsQuitWithEveryWindowOpen();
    void yesInAQuizEndsTheProgramAndRecordsNothing();
    void oneNoOfTwoQuizzesCancelsQuit();
    void closingTheWayBackEndsTheProgram();
    void quitButtonOfTheWayBackEndsTheProgram();

 private:
    static int openWindows();
    /// Opens a window of that layout. The test shows the way back itself: after it has quit once,
    /// the program does not offer it again.
    platform::Window *open(const QString &layout);

    std::optional<RunningProgram> program_;
};

void tst_quit::init() {
    program_.emplace();
}

void tst_quit::cleanup() {
    QVERIFY(program_->end());
}

int tst_quit::openWindows() {
    int count = 0;
    for (const QString &layout : openwindow::layouts) {
        count += int(desk::windows(layout).size());
    }
    return count;
}

platform::Window *tst_quit::open(const QString &layout) {
    if (layout != u"MainLayout") {
        return openwindow::open(layout, *program_->delegate);
    }
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (widget->objectName() == layout) {
            widget->show();
        }
    }
    return desk::window(layout);
}

void tst_quit::quitClosesEveryWindowAndEndsTheProgram() {
    platform::Window *settings = openwindow::open(u"Settings"_s, *program_->delegate);
    program_->delegate->ShowHelp();
    QCOMPARE(openWindows(), 3);
    const int result = eventloop::run([settings] { learner::pick(settings, u"quit"_s); });
    QCOMPARE(result, 0);
    QCoreApplication::processEvents();
    QCOMPARE(openWindows(), 0);
    QCOMPARE(program_->alerts->messages(), QStringList());
}

void tst_quit::shortcutQuitsFromEveryWindow_data() {
    QTest::addColumn<QString>("layout");
    for (const QString &layout : openwindow::layouts) {
        QTest::newRow(qPrintable(layout)) << layout;
    }
}

void tst_quit::shortcutQuitsFromEveryWindow() {
    QFETCH(const QString, layout);
    platform::Window *window = open(layout);
    if (layout == u"MainTest") {
        program_->alerts->answer(u"Yes"_s);
    }
    const int result = eventloop::run([window] { learner::type(window, Qt::CTRL | Qt::Key_Q); });
    QCOMPARE(result, 0);
    QCOMPARE(openWindows(), 0);
}

void tst_quit::noInAQuizCancelsQuitWithEveryWindowOpen() {
    platform::Window *quiz = openwindow::open(u"MainTest"_s, *program_->delegate);
    program_->delegate->ShowHelp();
    program_->delegate->goPreferences();
    desk::click(quiz, u"btnAnswer1"_s);
    int openAtTheQuestion = 0;
    program_->alerts->answer(u"No"_s, [&] { openAtTheQuestion = openWindows(); });
    const int result = eventloop::run([quiz] { learner::pick(quiz, u"quit"_s); });

    QCOMPARE(result, eventloop::StillRunning);
    QCOMPARE(openAtTheQuestion, 4);
    QCOMPARE(openWindows(), 4);
    QCOMPARE(program_->alerts->messages(),
             QStringList{u"This will end your current progress on this test, would you still like "
                         "to close this window?"_s});
    // The attempt goes on.
    desk::click(quiz, u"btnNextQuestion"_s);
    QCOMPARE(desk::text(quiz, u"lblProgressPercent"_s), u"2/7"_s);
}

void tst_quit::yesInAQuizEndsTheProgramAndRecordsNothing() {
    store::set(u"timedQuizzes"_s, u"yes"_s);
    platform::Window *quiz = openwindow::open(u"MainTest"_s, *program_->delegate);
    program_->delegate->ShowHelp();
    store::forgetWrites();
    int openAtTheQuestion = 0;
    program_->alerts->answer(u"Yes"_s, [&] { openAtTheQuestion = openWindows(); });
    const int result = eventloop::run([quiz] { learner::pick(quiz, u"quit"_s); });

    QCOMPARE(result, 0);
    QCOMPARE(openAtTheQuestion, 3);
    QCOMPARE(openWindows(), 0);
    QCOMPARE(program_->alerts->messages().size(), 1);
    QCOMPARE(store::writes(), QList<store::Write>());
    QVERIFY(quizRun().quizTimer);
    QVERIFY(!quizRun().quizTimer->isValid());
}

void tst_quit::oneNoOfTwoQuizzesCancelsQuit() {
    platform::Window *menu = openwindow::open(u"MainMenu"_s, *program_->delegate);
    learner::press(menu, u"goTest5"_s);
    learner::pick(menu, u"GoTest6"_s);
    program_->delegate->ShowHelp();
    program_->alerts->answer(u"Yes"_s);
    program_->alerts->answer(u"No"_s);
    const int result = eventloop::run([menu] { learner::pick(menu, u"quit"_s); });
    QCOMPARE(result, eventloop::StillRunning);
    QVERIFY(menu->isVisible());
    QVERIFY(program_->delegate->theHelp->window()->isVisible());
    // The quiz that was opened first was asked first.
    QCOMPARE(desk::windows(u"MainTest"_s).size(), 1);
    QCOMPARE(desk::window(u"MainTest"_s)->windowTitle(), u"Syntax"_s);
}

void tst_quit::closingTheWayBackEndsTheProgram() {
    platform::Window *wayBack = open(u"MainLayout"_s);
    const int result = eventloop::run([wayBack] { wayBack->close(); });
    QCOMPARE(result, 0);
}

void tst_quit::quitButtonOfTheWayBackEndsTheProgram() {
    const platform::Window *wayBack = open(u"MainLayout"_s);
    const int result = eventloop::run([wayBack] { learner::press(wayBack, u"quit"_s); });
    QCOMPARE(result, 0);
    QCOMPARE(openWindows(), 0);
}

ZORVAN_TEST_MAIN(tst_quit)
#include "tst_quit.moc"
