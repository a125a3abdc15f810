#include <QTest>

#include "controls/textlabel.h"
#include "shell/help.h"
#include "shell/mainmenu.h"
#include "support/eventloop.h"
#include "support/learner.h"
#include "support/testmain.h"
#include "support/windowtest.h"

using namespace Qt::StringLiterals;

/// Quit, and the way back: the window that appears when no other is left.
class tst_quit final : public ProgramTest {
    Q_OBJECT

 private Q_SLOTS:
    void wayBackSaysHowToGoOn() {
        const auto labels = openWindow(u"MainLayout"_s)->findChildren<platform::TextLabel *>();
        QVERIFY(std::any_of(labels.begin(), labels.end(), [](const platform::TextLabel *label) {
            return label->isVisible() && label->text().contains(u"main menu");
        }));
    }

    void wayBackIsThereWhileNoOtherWindowIs() {
        platform::Window *menu = openWindow(u"MainMenu"_s);
        delegate_->ShowHelp();
        close(menu);
        QVERIFY(!wayBackIsShown());
        close(delegate_->theHelp->window());
        QVERIFY(wayBackIsShown());
        const platform::Window *wayBack = desk::window(u"MainLayout"_s);
        const QSize size = wayBack->minimumSizeHint();

        learner::press(wayBack, u"GoMainMenu"_s);
        QVERIFY(!wayBackIsShown());
        close(delegate_->theMainMenu->window());
        QVERIFY(wayBackIsShown());
        QCOMPARE(wayBack->minimumSizeHint(), size);
    }

    void cancelledQuitKeepsTheWayBack() {
        platform::Window *quiz = openWindow(u"MainTest"_s);
        alerts_->answer(u"No"_s);
        QCOMPARE(eventloop::run([quiz] { learner::pick(quiz, u"quit"_s); }),
                 eventloop::StillRunning);
        close(delegate_->theMainMenu->window());
        alerts_->answer(u"Yes"_s);
        close(quiz);
        QVERIFY(wayBackIsShown());
    }

    void oneNoOfThreeQuizzesCancelsQuit() {
        platform::Window *menu = openWindow(u"MainMenu"_s);
        learner::press(menu, u"goTest5"_s);
        learner::pick(menu, u"GoTest6"_s);
        learner::pick(menu, u"GoTest7"_s);
        delegate_->ShowHelp();
        QList<QStringList> openAtTheQuestions;
        const auto look = [&openAtTheQuestions] { openAtTheQuestions << openWindows(); };
        alerts_->answer(u"Yes"_s, look);
        alerts_->answer(u"No"_s, look);
        QCOMPARE(eventloop::run([menu] { learner::pick(menu, u"quit"_s); }),
                 eventloop::StillRunning);
        // The quiz that was opened first was asked first, and the third one not at all.
        const QStringList before{u"Zorvan"_s, u"Structure"_s, u"Syntax"_s, u"Main Test"_s,
                                 u"Help"_s};
        const QStringList after{u"Zorvan"_s, u"Syntax"_s, u"Main Test"_s, u"Help"_s};
        QCOMPARE(openAtTheQuestions, QList<QStringList>({before, after}));
        QCOMPARE(openWindows(), after);
    }

    // From here on the program has ended once, and does not offer the way back again.

    void shortcutQuitsFromEveryWindow_data() { layoutRows(); }

    void shortcutQuitsFromEveryWindow() {
        QFETCH(const QString, layout);
        platform::Window *window = layout == u"MainLayout" ? showWayBack() : openWindow(layout);
        if (layout == u"MainTest") {
            alerts_->answer(u"Yes"_s);
        }
        QCOMPARE(eventloop::run([window] { learner::type(window, Qt::CTRL | Qt::Key_Q); }), 0);
        QCOMPARE(openWindows(), QStringList());
    }

    void closingTheWayBackEndsTheProgram() {
        QCOMPARE(eventloop::run([] { showWayBack()->close(); }), 0);
    }

    void quitButtonOfTheWayBackEndsTheProgram() {
        QCOMPARE(eventloop::run([] { learner::press(showWayBack(), u"quit"_s); }), 0);
        QCOMPARE(openWindows(), QStringList());
    }

 private:
    static bool wayBackIsShown() { return desk::windows(u"MainLayout"_s).size() == 1; }

    /// Closes a window in the event loop, where the program goes on without it.
    static void close(platform::Window *window) {
        QCOMPARE(eventloop::run([window] { window->close(); }), eventloop::StillRunning);
    }

    static platform::Window *showWayBack() {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (widget->objectName() == u"MainLayout") {
                widget->show();
            }
        }
        return desk::window(u"MainLayout"_s);
    }
};

ZORVAN_TEST(tst_quit)
#include "tst_quit.moc"
