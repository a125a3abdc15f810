#include <optional>

#include <QTest>

#include "controls/textlabel.h"
#include "support/eventloop.h"
#include "support/openwindow.h"
#include "support/testmain.h"
#include "support/windowtest.h"

using namespace Qt::StringLiterals;

/// The window that appears when no other is left. No test here ends the program.
class tst_wayback final : public ProgramTest {
    Q_OBJECT

 private Q_SLOTS:
    void programGoesOnAfterItsLastWindow() {
        openwindow::open(u"MainMenu"_s, *delegate_);
        QVERIFY(!wayBackIsShown());
        const int result = eventloop::run([] { desk::window(u"MainMenu"_s)->close(); });
        QCOMPARE(result, eventloop::StillRunning);
        QVERIFY(wayBackIsShown());
    }

    void windowAppearsWithItsMenuBarAndSaysHowToGoOn() {
        const platform::Window *wayBack = openwindow::open(u"MainLayout"_s, *delegate_);
        QVERIFY(wayBack->menuBar()->isVisible());
        QCOMPARE(wayBack->menuBar()->actions().size(), 4);
        const auto labels = wayBack->findChildren<platform::TextLabel *>();
        QVERIFY(std::any_of(labels.begin(), labels.end(), [](const platform::TextLabel *label) {
            return label->isVisible() && label->text().contains(u"main menu");
        }));
    }

    void windowStaysAwayWhileAnotherIsOpen() {
        platform::Window *help = openwindow::open(u"Help"_s, *delegate_);
        desk::window(u"MainMenu"_s)->close();
        QCoreApplication::processEvents();
        QVERIFY(!wayBackIsShown());
        help->close();
        QCoreApplication::processEvents();
        QVERIFY(wayBackIsShown());
    }

    void windowStaysAwayWhenAQuizEnds() {
        platform::Window *quiz = openwindow::open(u"MainTest"_s, *delegate_);
        desk::window(u"MainMenu"_s)->close();
        learner::finishStructure(quiz, true);
        QCoreApplication::processEvents();
        QVERIFY(!wayBackIsShown());
    }

    void windowAppearsAfterAnAbandonedQuiz() {
        platform::Window *quiz = openwindow::open(u"MainTest"_s, *delegate_);
        desk::window(u"MainMenu"_s)->close();
        alerts_->answer(u"No"_s);
        quiz->close();
        QCoreApplication::processEvents();
        QVERIFY(!wayBackIsShown());
        alerts_->answer(u"Yes"_s);
        quiz->close();
        QCoreApplication::processEvents();
        QVERIFY(wayBackIsShown());
    }

    void windowGoesWhenAnotherOpens_data() {
        QTest::addColumn<QString>("action");
        QTest::addColumn<QString>("layout");
        QTest::newRow("main menu") << u"GoMainMenu"_s << u"MainMenu"_s;
        QTest::newRow("quiz") << u"GoTest7"_s << u"MainTest"_s;
        QTest::newRow("settings") << u"goPreferences"_s << u"Settings"_s;
        QTest::newRow("help") << u"ShowHelp"_s << u"Help"_s;
    }

    void windowGoesWhenAnotherOpens() {
        QFETCH(const QString, action);
        QFETCH(const QString, layout);
        const platform::Window *wayBack = openwindow::open(u"MainLayout"_s, *delegate_);
        learner::pick(wayBack, action);
        QCoreApplication::processEvents();
        QVERIFY(!wayBackIsShown());
        QCOMPARE(desk::windows(layout).size(), 1);
    }

    void windowComesBackEachTime() {
        QSize size;
        for (int time = 0; time < 2; ++time) {
            const platform::Window *wayBack = openwindow::open(u"MainLayout"_s, *delegate_);
            QVERIFY(wayBackIsShown());
            QVERIFY(time == 0 || wayBack->minimumSizeHint() == size);
            size = wayBack->minimumSizeHint();
            learner::press(wayBack, u"GoMainMenu"_s);
            QVERIFY(!wayBackIsShown());
            desk::window(u"MainMenu"_s)->close();
            QCoreApplication::processEvents();
            QVERIFY(wayBackIsShown());
        }
    }

    void cancelledQuitKeepsTheWayBack() {
        platform::Window *quiz = openwindow::open(u"MainTest"_s, *delegate_);
        alerts_->answer(u"No"_s);
        const int result = eventloop::run([quiz] { learner::pick(quiz, u"quit"_s); });
        QCOMPARE(result, eventloop::StillRunning);
        desk::window(u"MainMenu"_s)->close();
        alerts_->answer(u"Yes"_s);
        quiz->close();
        QCoreApplication::processEvents();
        QVERIFY(wayBackIsShown());
    }

 private:
    bool wayBackIsShown() const { return desk::windows(u"MainLayout"_s).size() == 1; }
};

ZORVAN_TEST(tst_wayback)
#include "tst_wayback.moc"
