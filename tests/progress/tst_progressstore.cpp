#include <QDir>
#include <QDirIterator>
#include <QRadioButton>
#include <QTest>

#include "quizrun/quizrun.h"
#include "shell/mainmenu.h"
#include "shell/settingscontroller.h"
#include "support/learner.h"
#include "support/testmain.h"
#include "support/windowtest.h"
#include "windowing/windowcontroller.h"

using namespace Qt::StringLiterals;

class tst_progressstore final : public WindowTest {
    Q_OBJECT

 private Q_SLOTS:
    void firstMainMenuSeedsInOrderThenGreetsOnce() {
        store::wipe();
        QList<store::Write> writesAtTheGreeting;
        store::Contents storeAtTheGreeting;
        alerts_->answer(u"OK"_s, [&] {
            writesAtTheGreeting = store::writes();
            storeAtTheGreeting = store::contents();
        });
        openMainMenu();

        QCOMPARE(writesAtTheGreeting, seedWrites());
        QCOMPARE(storeAtTheGreeting, store::seeded());
        QCOMPARE(store::writes(), seedWrites());
        QCOMPARE(alerts_->shown().size(), 1);
        const ShownAlert greeting = alerts_->shown().first();
        QCOMPARE(
            greeting.message,
            u"Welcome to Zorvan, this is the main progress screen where you can select quizzes "
            "to take and track your progress."_s);
        QCOMPARE(greeting.buttons, QStringList{u"OK"_s});
        QCOMPARE(greeting.informativeText, QString());
        QCOMPARE(greeting.title, QString());
        QVERIFY(!greeting.hasIcon);

        store::forgetWrites();
        openMainMenu();
        QCOMPARE(store::writes(), QList<store::Write>());
        QCOMPARE(alerts_->shown().size(), 1);
    }

    void anyFirstRunValueCountsAsSeeded_data() {
        QTest::addColumn<QString>("value");
        QTest::newRow("as seeded") << u"false"_s;
        QTest::newRow("another text") << u"true"_s;
        QTest::newRow("a number") << u"0"_s;
        QTest::newRow("empty") << QString();
    }

    void anyFirstRunValueCountsAsSeeded() {
        QFETCH(const QString, value);
        const store::Contents before{{u"firstRun"_s, value}};
        store::fill(before);
        openMainMenu();
        QCOMPARE(store::writes(), QList<store::Write>());
        QCOMPARE(store::contents(), before);
        QCOMPARE(alerts_->messages(), QStringList());
    }

    void wipedStoreIsSeededAgain() {
        openMainMenu();
        QCOMPARE(alerts_->messages(), QStringList());
        store::wipe();
        alerts_->answer(u"OK"_s);
        openMainMenu();
        QCOMPARE(store::writes(), seedWrites());
        QCOMPARE(store::contents(), store::seeded());
    }

    void clearingWithNoChangesNothing_data() {
        QTest::addColumn<bool>("byKey");
        QTest::newRow("the button No") << false;
        QTest::newRow("Escape") << true;
    }

    void clearingWithNoChangesNothing() {
        QFETCH(const bool, byKey);
        const store::Contents before{{u"currentTest"_s, u"4"_s},   {u"currentStatus"_s, u"pass"_s},
                                     {u"quiz1"_s, u"1"_s},         {u"quiz2"_s, u"2"_s},
                                     {u"quiz3"_s, u"3"_s},         {u"quiz4"_s, u"1"_s},
                                     {u"quiz5"_s, u"0"_s},         {u"quiz6"_s, u"2"_s},
                                     {u"quiz7"_s, u"3"_s},         {u"firstRun"_s, u"false"_s},
                                     {u"timedQuizzes"_s, u"yes"_s}};
        store::fill(before);
        if (byKey) {
            alerts_->press(Qt::Key_Escape);
        } else {
            alerts_->answer(u"No"_s);
        }
        learner::press(openSettings()->window(), u"resetProgress"_s);

        QCOMPARE(store::writes(), QList<store::Write>());
        QCOMPARE(store::contents(), before);
        QCOMPARE(alerts_->shown().size(), 1);
        const ShownAlert question = alerts_->shown().first();
        QCOMPARE(question.message,
                 u"This will reset all progress. Are you sure you want to clear your progress?"_s);
        QCOMPARE(question.buttons, QStringList({u"Yes"_s, u"No"_s}));
        QCOMPARE(question.informativeText, QString());
        QCOMPARE(question.title, QString());
        QVERIFY(!question.hasIcon);
    }

    void clearingWithYesResetsAllButTheTiming_data() {
        QTest::addColumn<QString>("timed");
        QTest::newRow("timed") << u"yes"_s;
        QTest::newRow("untimed") << u"no"_s;
        QTest::newRow("never chosen") << QString();
    }

    void clearingWithYesResetsAllButTheTiming() {
        QFETCH(const QString, timed);
        store::Contents before{{u"currentTest"_s, u"4"_s}, {u"currentStatus"_s, u"pass"_s},
                               {u"quiz1"_s, u"1"_s},       {u"quiz2"_s, u"2"_s},
                               {u"quiz3"_s, u"3"_s},       {u"quiz4"_s, u"x"_s},
                               {u"quiz7"_s, u"3"_s},       {u"firstRun"_s, u"other"_s}};
        store::Contents after = store::seeded();
        if (!timed.isEmpty()) {
            before.insert(u"timedQuizzes"_s, timed);
            after.insert(u"timedQuizzes"_s, timed);
        }
        store::fill(before);
        store::Contents storeAtTheReport;
        alerts_->answer(u"Yes"_s);
        alerts_->answer(u"OK"_s, [&] { storeAtTheReport = store::contents(); });
        learner::press(openSettings()->window(), u"resetProgress"_s);

        QCOMPARE(store::writes(), seedWrites());
        QCOMPARE(store::contents(), after);
        QCOMPARE(storeAtTheReport, after);
        QCOMPARE(alerts_->shown().size(), 2);
        const ShownAlert report = alerts_->shown().last();
        QCOMPARE(report.message, u"All progress on quizzes has been reset"_s);
        QCOMPARE(report.buttons, QStringList{u"OK"_s});
        QCOMPARE(report.informativeText, QString());
        QCOMPARE(report.title, QString());
        QVERIFY(!report.hasIcon);
    }

    void noGreetingAfterClearing() {
        store::fill({});
        alerts_->answer(u"Yes"_s);
        alerts_->answer(u"OK"_s);
        learner::press(openSettings()->window(), u"resetProgress"_s);
        openMainMenu();
        QCOMPARE(alerts_->messages().last(), u"All progress on quizzes has been reset"_s);
    }

    void quizzesAreUntimedUntilTheLearnerChooses() {
        QCOMPARE(store::value(u"timedQuizzes"_s), std::nullopt);
        const auto settings = openSettings();
        QVERIFY(desk::control<QRadioButton>(settings->window(), u"noRadio"_s).isChecked());
        QVERIFY(!desk::control<QRadioButton>(settings->window(), u"yesRadio"_s).isChecked());

        platform::Window *quiz = startStructure();
        QVERIFY(!desk::isShown(quiz, u"lblTimeLeft"_s));
        QVERIFY(!desk::isShown(quiz, u"lblTimeLeftLabel"_s));
        QVERIFY(!quizRun().quizTimer);
        QCOMPARE(store::value(u"timedQuizzes"_s), std::nullopt);
    }

    void clearingDuringAQuizDoesNotStopIt() {
        store::set(u"quiz5"_s, u"2"_s);
        platform::Window *quiz = startStructure();
        alerts_->answer(u"Yes"_s);
        alerts_->answer(u"OK"_s);
        learner::press(openSettings()->window(), u"resetProgress"_s);
        QCOMPARE(store::value(u"currentTest"_s), u"0"_s);

        learner::finishStructure(quiz, true);
        QCOMPARE(store::value(u"currentTest"_s), u"5"_s);
        QCOMPARE(store::value(u"currentStatus"_s), u"pass"_s);
        QCOMPARE(store::value(u"quiz5"_s), u"1"_s);
        QCOMPARE(desk::text(desk::window(u"QuizComplete"_s), u"lblQuizName"_s), u"Structure"_s);
    }

    void storeIsOneFileOfTheConfigurationHome() {
        store::wipe();
        alerts_->answer(u"OK"_s);
        openMainMenu();
        const QDir home(qEnvironmentVariable("XDG_CONFIG_HOME"));
        QStringList files;
        QDirIterator all(home.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (all.hasNext()) {
            files << home.relativeFilePath(all.next());
        }
        QCOMPARE(files, QStringList{u"Zorvan/Zorvan.conf"_s});
    }

 private:
    static std::shared_ptr<MainMenu> openMainMenu() {
        auto menu = platform::makeController<MainMenu>(u"MainMenu"_s);
        menu->showWindow();
        return menu;
    }

    static std::shared_ptr<SettingsController> openSettings() {
        auto settings = platform::makeController<SettingsController>(u"Settings"_s);
        settings->showWindow();
        return settings;
    }

    /// Starts quiz 5 from a main menu and returns its window.
    static platform::Window *startStructure() {
        learner::press(openMainMenu()->window(), u"goTest5"_s);
        return desk::window(u"MainTest"_s);
    }

    static QList<store::Write> seedWrites() {
        return {{u"currentTest"_s, u"0"_s}, {u"quiz1"_s, u"0"_s}, {u"quiz2"_s, u"0"_s},
                {u"quiz3"_s, u"0"_s},       {u"quiz4"_s, u"0"_s}, {u"quiz5"_s, u"0"_s},
                {u"quiz6"_s, u"0"_s},       {u"quiz7"_s, u"0"_s}, {u"currentStatus"_s, u"0"_s},
                {u"firstRun"_s, u"false"_s}};
    }
};

ZORVAN_TEST(tst_progressstore)
#include "tst_progressstore.moc"
