#include <optional>

#include <QTest>

#include "shell/help.h"
#include "support/eventloop.h"
#include "support/openwindow.h"
#include "support/testmain.h"
#include "support/windowtest.h"

using namespace Qt::StringLiterals;

class tst_quit final : public ProgramTest {
    Q_OBJECT

 private Q_SLOTS:
    void quitClosesEveryWindowAndEndsTheProgram() {
        platform::Window *settings = openwindow::open(u"Settings"_s, *delegate_);
        delegate_->ShowHelp();
        QCOMPARE(openWindows(), 3);
        const int result = eventloop::run([settings] { learner::pick(settings, u"quit"_s); });
        QCOMPARE(result, 0);
        QCoreApplication::processEvents();
        QCOMPARE(openWindows(), 0);
        QCOMPARE(alerts_->messages(), QStringList());
    }

    void shortcutQuitsFromEveryWindow_data() {
        QTest::addColumn<QString>("layout");
        for (const QString &layout : openwindow::layouts) {
            QTest::newRow(qPrintable(layout)) << layout;
        }
    }

    void shortcutQuitsFromEveryWindow() {
        QFETCH(const QString, layout);
        platform::Window *window = open(layout);
        if (layout == u"MainTest") {
            alerts_->answer(u"Yes"_s);
        }
        const int result =
            eventloop::run([window] { learner::type(window, Qt::CTRL | Qt::Key_Q); });
        QCOMPARE(result, 0);
        QCOMPARE(openWindows(), 0);
    }

    void noInAQuizCancelsQuitWithEveryWindowOpen() {
        platform::Window *quiz = openwindow::open(u"MainTest"_s, *delegate_);
        delegate_->ShowHelp();
        delegate_->goPreferences();
        desk::click(quiz, u"btnAnswer1"_s);
        int openAtTheQuestion = 0;
        alerts_->answer(u"No"_s, [&] { openAtTheQuestion = openWindows(); });
        const int result = eventloop::run([quiz] { learner::pick(quiz, u"quit"_s); });

        QCOMPARE(result, eventloop::StillRunning);
        QCOMPARE(openAtTheQuestion, 4);
        QCOMPARE(openWindows(), 4);
        QCOMPARE(
            alerts_->messages(),
            QStringList{u"This will end your current progress on this test, would you still like "
                        "to close this window?"_s});
        // The attempt goes on.
        desk::click(quiz, u"btnNextQuestion"_s);
        QCOMPARE(desk::text(quiz, u"lblProgressPercent"_s), u"2/7"_s);
    }

    void yesInAQuizEndsTheProgramAndRecordsNothing() {
        store::set(u"timedQuizzes"_s, u"yes"_s);
        platform::Window *quiz = openwindow::open(u"MainTest"_s, *delegate_);
        delegate_->ShowHelp();
        store::forgetWrites();
        int openAtTheQuestion = 0;
        alerts_->answer(u"Yes"_s, [&] { openAtTheQuestion = openWindows(); });
        const int result = eventloop::run([quiz] { learner::pick(quiz, u"quit"_s); });

        QCOMPARE(result, 0);
        QCOMPARE(openAtTheQuestion, 3);
        QCOMPARE(openWindows(), 0);
        QCOMPARE(alerts_->messages().size(), 1);
        QCOMPARE(store::writes(), QList<store::Write>());
        QVERIFY(quizRun().quizTimer);
        QVERIFY(!quizRun().quizTimer->isValid());
    }

    void oneNoOfTwoQuizzesCancelsQuit() {
        platform::Window *menu = openwindow::open(u"MainMenu"_s, *delegate_);
        learner::press(menu, u"goTest5"_s);
        learner::pick(menu, u"GoTest6"_s);
        delegate_->ShowHelp();
        alerts_->answer(u"Yes"_s);
        alerts_->answer(u"No"_s);
        const int result = eventloop::run([menu] { learner::pick(menu, u"quit"_s); });
        QCOMPARE(result, eventloop::StillRunning);
        QVERIFY(menu->isVisible());
        QVERIFY(delegate_->theHelp->window()->isVisible());
        // The quiz that was opened first was asked first.
        QCOMPARE(desk::windows(u"MainTest"_s).size(), 1);
        QCOMPARE(desk::window(u"MainTest"_s)->windowTitle(), u"Syntax"_s);
    }

    void closingTheWayBackEndsTheProgram() {
        platform::Window *wayBack = open(u"MainLayout"_s);
        const int result = eventloop::run([wayBack] { wayBack->close(); });
        QCOMPARE(result, 0);
    }

    void quitButtonOfTheWayBackEndsTheProgram() {
        const platform::Window *wayBack = open(u"MainLayout"_s);
        const int result = eventloop::run([wayBack] { learner::press(wayBack, u"quit"_s); });
        QCOMPARE(result, 0);
        QCOMPARE(openWindows(), 0);
    }

 private:
    static int openWindows() {
        int count = 0;
        for (const QString &layout : openwindow::layouts) {
            count += int(desk::windows(layout).size());
        }
        return count;
    }

    /// Opens a window of that layout. The test shows the way back itself: after it has quit once,
    /// the program does not offer it again.
    platform::Window *open(const QString &layout) {
        if (layout != u"MainLayout") {
            return openwindow::open(layout, *delegate_);
        }
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (widget->objectName() == layout) {
                widget->show();
            }
        }
        return desk::window(layout);
    }
};

ZORVAN_TEST(tst_quit)
#include "tst_quit.moc"
