#include <optional>

#include <QTest>

#include "controls/textlabel.h"
#include "shell/eventloop.h"
#include "shell/openwindow.h"
#include "shell/runningprogram.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

/// The window that appears when no other is left. No test here ends the program.
class tst_wayback final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void init();
    void cleanup();

    void programGoesOnAfterItsLastWindow();
    void windowAppearsWithItsMenuBarAndSaysHowToGoOn();
    void windowStaysAwayWhileAnotherIsOpen();
    void windowStaysAwayWhenAQuizEnds();
    void windowAppearsAfterAnAbandonedQuiz();
    void windowGoesWhenAnotherOpens_data();
    void windowGoesWhenAnotherOpens();
    void windowComesBackEachTime();
    void cancelledQuitKeepsTheWayBack();

 private:
    bool wayBackIsShown() const;

    std::optional<RunningProgram> program_;
};

void tst_wayback::init() {
    program_.emplace();
}

void tst_wayback::cleanup() {
    QVERIFY(program_->end());
}

bool tst_wayback::wayBackIsShown() const {
    return desk::windows(u"MainLayout"_s).size() == 1;
}

void tst_wayback::programGoesOnAfterItsLastWindow() {
    openwindow::open(u"MainMenu"_s, *program_->delegate);
    QVERIFY(!wayBackIsShown());
    const int result = eventloop::run([] { desk::window(u"MainMenu"_s)->close(); });
    QCOMPARE(result, eventloop::StillRunning);
    QVERIFY(wayBackIsShown());
}

void tst_wayback::windowAppearsWithItsMenuBarAndSaysHowToGoOn() {
    const platform::Window *wayBack = openwindow::open(u"MainLayout"_s, *program_->delegate);
    QVERIFY(wayBack->menuBar()->isVisible());
    QCOMPARE(wayBack->menuBar()->actions().size(), 4);
    const auto labels = wayBack->findChildren<platform::TextLabel *>();
    QVERIFY(std::any_of(labels.begin(), labels.end(), [](const platform::TextLabel *label) {
        return label->isVisible() && label->text().contains(u"main menu");
    }));
}

void tst_wayback::windowStaysAwayWhileAnotherIsOpen() {
    platform::Window *help = openwindow::open(u"Help"_s, *program_->delegate);
    desk::window(u"MainMenu"_s)->close();
    QCoreApplication::processEvents();
    QVERIFY(!wayBackIsShown());
    help->close();
    QCoreApplication::processEvents();
    QVERIFY(wayBackIsShown());
}

void tst_wayback::windowStaysAwayWhenAQuizEnds() {
    platform::Window *quiz = openwindow::open(u"MainTest"_s, *program_->delegate);
    desk::window(u"MainMenu"_s)->close();
    learner::finishStructure(quiz, true);
    QCoreApplication::processEvents();
    QVERIFY(!wayBackIsShown());
}

void tst_wayback::windowAppearsAfterAnAbandonedQuiz() {
    platform::Window *quiz = openwindow::open(u"MainTest"_s, *program_->delegate);
    desk::window(u"MainMenu"_s)->close();
    program_->alerts->answer(u"No"_s);
    quiz->close();
    QCoreApplication::processEvents();
    QVERIFY(!wayBackIsShown());
    program_->alerts->answer(u"Yes"_s);
    quiz->close();
    QCoreApplication::processEvents();
    QVERIFY(wayBackIsShown());
}

void tst_wayback::windowGoesWhenAnotherOpens_data() {
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("layout");
    QTest::newRow("main menu") << u"GoMainMenu"_s << u"MainMenu"_s;
    QTest::newRow("quiz") << u"GoTest7"_s << u"MainTest"_s;
    QTest::newRow("settings") << u"goPreferences"_s << u"Settings"_s;
    QTest::newRow("help") << u"ShowHelp"_s << u"Help"_s;
}

void tst_wayback::windowGoesWhenAnotherOpens() {
    QFETCH(const QString, action);
    QFETCH(const QString, layout);
    const platform::Window *wayBack = openwindow::open(u"MainLayout"_s, *program_->delegate);
    learner::pick(wayBack, action);
    QCoreApplication::processEvents();
    QVERIFY(!wayBackIsShown());
    QCOMPARE(desk::windows(layout).size(), 1);
}

void tst_wayback::windowComesBackEachTime() {
    QSize size;
    for (int time = 0; time < 2; ++time) {
        const platform::Window *wayBack = openwindow::open(u"MainLayout"_s, *program_->delegate);
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

void tst_wayback::cancelledQuitKeepsTheWayBack() {
    platform::Window *quiz = openwindow::open(u"MainTest"_s, *program_->delegate);
    program_->alerts->answer(u"No"_s);
    const int result = eventloop::run([quiz] { learner::pick(quiz, u"quit"_s); });
    QCOMPARE(result, eventloop::StillRunning);
    desk::window(u"MainMenu"_s)->close();
    program_->alerts->answer(u"Yes"_s);
    quiz->close();
    QCoreApplication::processEvents();
    QVERIFY(wayBackIsShown());
}

ZORVAN_TEST_MAIN(tst_wayback)
#include "tst_wayback.moc"
