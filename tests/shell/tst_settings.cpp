#include <QRadioButton>
#include <QTest>

#include "quizrun/quizrun.h"
#include "shell/appdelegate.h"
#include "shell/mainmenu.h"
#include "shell/settingscontroller.h"
#include "support/learner.h"
#include "support/testmain.h"
#include "support/windowtest.h"

using namespace Qt::StringLiterals;

class tst_settings final : public WindowTest {
    Q_OBJECT

 private Q_SLOTS:
    void init() {
        WindowTest::init();
        menu_ = platform::makeController<MainMenu>(u"MainMenu"_s);
        menu_->showWindow();
        store::forgetWrites();
    }

    void cleanup() {
        menu_.reset();
        WindowTest::cleanup();
    }

    void withoutAChoiceQuizzesShowAsUntimed() {
        const platform::Window *settings = open();
        QVERIFY(isOn(settings, u"noRadio"_s));
        QVERIFY(!isOn(settings, u"yesRadio"_s));
    }

    void onlyTheExactYesShowsAsTimed_data() {
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("timed");
        QTest::newRow("yes") << u"yes"_s << true;
        QTest::newRow("no") << u"no"_s << false;
        QTest::newRow("capital") << u"Yes"_s << false;
        QTest::newRow("capitals") << u"YES"_s << false;
        QTest::newRow("another word") << u"true"_s << false;
        QTest::newRow("a number") << u"1"_s << false;
        QTest::newRow("longer") << u"yes!"_s << false;
        QTest::newRow("empty") << QString() << false;
    }

    void onlyTheExactYesShowsAsTimed() {
        QFETCH(const QString, value);
        QFETCH(const bool, timed);
        store::set(u"timedQuizzes"_s, value);
        const platform::Window *settings = open();
        QCOMPARE(isOn(settings, u"yesRadio"_s), timed);
        QCOMPARE(isOn(settings, u"noRadio"_s), !timed);
    }

    void opensWithTheFocusOnTheOptionThatIsOn_data() { timings(); }

    void opensWithTheFocusOnTheOptionThatIsOn() {
        QFETCH(const QString, value);
        QFETCH(const QString, radio);
        store::set(u"timedQuizzes"_s, value);
        const platform::Window *settings = open();
        QVERIFY(isOn(settings, radio));
        QCOMPARE(settings->focusWidget(), &desk::control(settings, radio));
    }

    void optionsAreLargeEnoughToHit_data() { timings(); }

    void optionsAreLargeEnoughToHit() {
        QFETCH(const QString, radio);
        QVERIFY(desk::control(open(), radio).height() >= 24);
    }

    void cornerOfAnOptionsRowChoosesIt_data() { timings(); }

    void cornerOfAnOptionsRowChoosesIt() {
        QFETCH(const QString, value);
        QFETCH(const QString, radio);
        store::set(u"timedQuizzes"_s, value == u"yes" ? u"no"_s : u"yes"_s);
        const platform::Window *settings = open();
        auto &option = desk::control<QRadioButton>(settings, radio);
        QVERIFY(!option.isChecked());
        // Below the text and beyond its end.
        QTest::mouseClick(&option, Qt::LeftButton, {}, option.rect().bottomRight());
        QVERIFY(option.isChecked());
        QCOMPARE(store::value(u"timedQuizzes"_s), value);
    }

    void clickingAnOptionWritesIt() {
        const platform::Window *settings = open();
        click(settings, u"yesRadio"_s);
        QCOMPARE(store::value(u"timedQuizzes"_s), u"yes"_s);
        QVERIFY(isOn(settings, u"yesRadio"_s));
        QVERIFY(!isOn(settings, u"noRadio"_s));
        click(settings, u"noRadio"_s);
        QCOMPARE(store::value(u"timedQuizzes"_s), u"no"_s);
        QVERIFY(!isOn(settings, u"yesRadio"_s));
        QVERIFY(isOn(settings, u"noRadio"_s));
        QCOMPARE(store::writes(), QList<store::Write>({{u"timedQuizzes"_s, u"yes"_s},
                                                       {u"timedQuizzes"_s, u"no"_s}}));
    }

    void clickingTheOptionThatIsOnWritesItAgain_data() { timings(); }

    void clickingTheOptionThatIsOnWritesItAgain() {
        QFETCH(const QString, value);
        QFETCH(const QString, radio);
        store::set(u"timedQuizzes"_s, value);
        const store::Contents before = store::contents();
        const platform::Window *settings = open();
        click(settings, radio);
        QCOMPARE(store::writes(), QList<store::Write>({{u"timedQuizzes"_s, value}}));
        QCOMPARE(store::contents(), before);
        QVERIFY(isOn(settings, radio));
        QVERIFY(isOn(settings, u"noRadio"_s) != isOn(settings, u"yesRadio"_s));
    }

    void arrowKeysChooseAndWrite_data() {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("down") << Qt::Key_Down;
        QTest::newRow("up") << Qt::Key_Up;
    }

    void arrowKeysChooseAndWrite() {
        QFETCH(const Qt::Key, key);
        const bool forward = key == Qt::Key_Down;
        store::set(u"timedQuizzes"_s, forward ? u"no"_s : u"yes"_s);
        platform::Window *settings = open();
        desk::control(settings, forward ? u"noRadio"_s : u"yesRadio"_s).setFocus();
        learner::type(settings, key);
        QCOMPARE(isOn(settings, u"yesRadio"_s), forward);
        QCOMPARE(isOn(settings, u"noRadio"_s), !forward);
        QCOMPARE(store::writes(),
                 QList<store::Write>({{u"timedQuizzes"_s, forward ? u"yes"_s : u"no"_s}}));
    }

    void actionsLeaveTheOptionsAlone() {
        const platform::Window *settings = open();
        menu_->settingsController->yesTimeSelected();
        QVERIFY(isOn(settings, u"noRadio"_s));
        QVERIFY(!isOn(settings, u"yesRadio"_s));
        QCOMPARE(store::value(u"timedQuizzes"_s), u"yes"_s);
    }

    void lastClickOfTwoWindowsWins() {
        AppDelegate delegate;
        delegate.goPreferences();
        const platform::Window *fromTheMenuBar = delegate.theSettings->window();
        const platform::Window *fromTheMainMenu = open();
        QCOMPARE(desk::windows(u"Settings"_s).size(), 2);

        click(fromTheMenuBar, u"yesRadio"_s);
        QVERIFY(isOn(fromTheMenuBar, u"yesRadio"_s));
        QVERIFY(isOn(fromTheMainMenu, u"noRadio"_s));
        click(fromTheMainMenu, u"noRadio"_s);
        QCOMPARE(store::value(u"timedQuizzes"_s), u"no"_s);
        QVERIFY(isOn(fromTheMenuBar, u"yesRadio"_s));
        QVERIFY(isOn(fromTheMainMenu, u"noRadio"_s));
        click(fromTheMenuBar, u"yesRadio"_s);
        QCOMPARE(store::value(u"timedQuizzes"_s), u"yes"_s);
        QVERIFY(isOn(fromTheMainMenu, u"noRadio"_s));

        QVERIFY(isOn(open(), u"yesRadio"_s));
    }

    void runningQuizKeepsItsTiming_data() {
        QTest::addColumn<bool>("timed");
        QTest::newRow("timed") << true;
        QTest::newRow("untimed") << false;
    }

    void runningQuizKeepsItsTiming() {
        QFETCH(const bool, timed);
        store::set(u"timedQuizzes"_s, timed ? u"yes"_s : u"no"_s);
        learner::press(menu_->window(), u"goTest5"_s);
        const platform::Window *quiz = desk::window(u"MainTest"_s);
        click(open(), timed ? u"noRadio"_s : u"yesRadio"_s);
        QCOMPARE(store::value(u"timedQuizzes"_s), timed ? u"no"_s : u"yes"_s);
        desk::click(quiz, u"btnAnswer1"_s);
        desk::click(quiz, u"btnNextQuestion"_s);
        QCOMPARE(desk::isShown(quiz, u"lblTimeLeft"_s), timed);
        QCOMPARE(quizRun().quizTimer != nullptr && quizRun().quizTimer->isValid(), timed);
    }

    void clearingLeavesTheOptionsAlone() {
        const platform::Window *settings = open();
        click(settings, u"yesRadio"_s);
        alerts_->answer(u"Yes"_s);
        alerts_->answer(u"OK"_s);
        learner::press(settings, u"resetProgress"_s);
        QVERIFY(isOn(settings, u"yesRadio"_s));
        QCOMPARE(store::value(u"timedQuizzes"_s), u"yes"_s);
        QVERIFY(settings->isVisible());
    }

 private:
    /// Adds a test row for each timing as it is stored, with the option that stands for it.
    static void timings() {
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("radio");
        QTest::newRow("timed") << u"yes"_s << u"yesRadio"_s;
        QTest::newRow("untimed") << u"no"_s << u"noRadio"_s;
    }

    platform::Window *open() {
        learner::press(menu_->window(), u"showPreferences"_s);
        return menu_->settingsController->window();
    }

    static bool isOn(const platform::Window *settings, const QString &radio) {
        return desk::control<QRadioButton>(settings, radio).isChecked();
    }

    static void click(const platform::Window *settings, const QString &radio) {
        // On the circle, in every style.
        auto &button = desk::control<QRadioButton>(settings, radio);
        QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(8, button.height() / 2));
    }

    std::shared_ptr<MainMenu> menu_;
};

ZORVAN_TEST(tst_settings)
#include "tst_settings.moc"
