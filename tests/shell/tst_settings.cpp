#include <QRadioButton>
#include <QTest>

#include "quizrun/quizrun.h"
#include "shell/appdelegate.h"
#include "shell/learner.h"
#include "shell/mainmenu.h"
#include "shell/settingscontroller.h"
#include "support/alerts.h"
#include "support/desk.h"
#include "support/store.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

class tst_settings final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void init();
    void cleanup();

    void withoutAChoiceQuizzesShowAsUntimed();
    void onlyTheExactYesShowsAsTimed_data();
    void onlyTheExactYesShowsAsTimed();
    void opensWithTheFocusOnTheOptionThatIsOn_data();
    void opensWithTheFocusOnTheOptionThatIsOn();
    void optionsAreLargeEnoughToHit_data();
    void optionsAreLargeEnoughToHit();
    void cornerOfAnOptionsRowChoosesIt_data();
    void cornerOfAnOptionsRowChoosesIt();
    void clickingAnOptionWritesIt();
    void clickingTheOptionThatIsOnWritesItAgain_data();
    void clickingTheOptionThatIsOnWritesItAgain();
    void arrowKeysChooseAndWrite_data();
    void arrowKeysChooseAndWrite();
    void actionsLeaveTheOptionsAlone();
    void lastClickOfTwoWindowsWins();
    void runningQuizKeepsItsTiming_data();
    void runningQuizKeepsItsTiming();
    void clearingLeavesTheOptionsAlone();

 private:
    /// Adds a test row for each timing as it is stored, with the option that stands for it.
    static void timings();
    platform::Window *open();
    static bool isOn(const platform::Window *settings, const QString &radio);
    static void click(const platform::Window *settings, const QString &radio);

    std::shared_ptr<MainMenu> menu_;
    std::unique_ptr<Alerts> alerts_;
};

void tst_settings::init() {
    store::fill(store::seeded());
    quizRun().random = [] { return 0U; };
    alerts_ = std::make_unique<Alerts>();
    menu_ = platform::makeController<MainMenu>(u"MainMenu"_s);
    menu_->showWindow();
    store::forgetWrites();
}

void tst_settings::cleanup() {
    menu_.reset();
    desk::clear();
    QVERIFY(alerts_->verify());
}

void tst_settings::timings() {
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("radio");
    QTest::newRow("timed") << u"yes"_s << u"yesRadio"_s;
    QTest::newRow("untimed") << u"no"_s << u"noRadio"_s;
}

platform::Window *tst_settings::open() {
    learner::press(menu_->window(), u"showPreferences"_s);
    return menu_->settingsController->window();
}

bool tst_settings::isOn(const platform::Window *settings, const QString &radio) {
    return desk::control<QRadioButton>(settings, radio).isChecked();
}

void tst_settings::click(const platform::Window *settings, const QString &radio) {
    // On the circle, in every style.
    auto &button = desk::control<QRadioButton>(settings, radio);
    QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(8, button.height() / 2));
}

void tst_settings::withoutAChoiceQuizzesShowAsUntimed() {
    const platform::Window *settings = open();
    QVERIFY(isOn(settings, u"noRadio"_s));
    QVERIFY(!isOn(settings, u"yesRadio"_s));
}

void tst_settings::onlyTheExactYesShowsAsTimed_data() {
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

void tst_settings::onlyTheExactYesShowsAsTimed() {
    QFETCH(const QString, value);
    QFETCH(const bool, timed);
    store::set(u"timedQuizzes"_s, value);
    const platform::Window *settings = open();
    QCOMPARE(isOn(settings, u"yesRadio"_s), timed);
    QCOMPARE(isOn(settings, u"noRadio"_s), !timed);
}

void tst_settings::opensWithTheFocusOnTheOptionThatIsOn_data() {
    timings();
}

void tst_settings::opensWithTheFocusOnTheOptionThatIsOn() {
    QFETCH(const QString, value);
    QFETCH(const QString, radio);
    store::set(u"timedQuizzes"_s, value);
    const platform::Window *settings = open();
    QVERIFY(isOn(settings, radio));
    QCOMPARE(settings->focusWidget(), &desk::control(settings, radio));
}

void tst_settings::optionsAreLargeEnoughToHit_data() {
    timings();
}

void tst_settings::optionsAreLargeEnoughToHit() {
    QFETCH(const QString, radio);
    QVERIFY(desk::control(open(), radio).height() >= 24);
}

void tst_settings::cornerOfAnOptionsRowChoosesIt_data() {
    timings();
}

void tst_settings::cornerOfAnOptionsRowChoosesIt() {
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

void tst_settings::clickingAnOptionWritesIt() {
    const platform::Window *settings = open();
    click(settings, u"yesRadio"_s);
    QCOMPARE(store::value(u"timedQuizzes"_s), u"yes"_s);
    QVERIFY(isOn(settings, u"yesRadio"_s));
    QVERIFY(!isOn(settings, u"noRadio"_s));
    click(settings, u"noRadio"_s);
    QCOMPARE(store::value(u"timedQuizzes"_s), u"no"_s);
    QVERIFY(!isOn(settings, u"yesRadio"_s));
    QVERIFY(isOn(settings, u"noRadio"_s));
    QCOMPARE(store::writes(),
             QList<store::Write>({{u"timedQuizzes"_s, u"yes"_s}, {u"timedQuizzes"_s, u"no"_s}}));
}

void tst_settings::clickingTheOptionThatIsOnWritesItAgain_data() {
    timings();
}

void tst_settings::clickingTheOptionThatIsOnWritesItAgain() {
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

void tst_settings::arrowKeysChooseAndWrite_data() {
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("down") << Qt::Key_Down;
    QTest::newRow("up") << Qt::Key_Up;
}

void tst_settings::arrowKeysChooseAndWrite() {
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

void tst_settings::actionsLeaveTheOptionsAlone() {
    const platform::Window *settings = open();
    menu_->settingsController->yesTimeSelected();
    QVERIFY(isOn(settings, u"noRadio"_s));
    QVERIFY(!isOn(settings, u"yesRadio"_s));
    QCOMPARE(store::value(u"timedQuizzes"_s), u"yes"_s);
}

void tst_settings::lastClickOfTwoWindowsWins() {
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

void tst_settings::runningQuizKeepsItsTiming_data() {
    QTest::addColumn<bool>("timed");
    QTest::newRow("timed") << true;
    QTest::newRow("untimed") << false;
}

void tst_settings::runningQuizKeepsItsTiming() {
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

void tst_settings::clearingLeavesTheOptionsAlone() {
    const platform::Window *settings = open();
    click(settings, u"yesRadio"_s);
    alerts_->answer(u"Yes"_s);
    alerts_->answer(u"OK"_s);
    learner::press(settings, u"resetProgress"_s);
    QVERIFY(isOn(settings, u"yesRadio"_s));
    QCOMPARE(store::value(u"timedQuizzes"_s), u"yes"_s);
    QVERIFY(settings->isVisible());
}

ZORVAN_TEST_MAIN(tst_settings)
#include "tst_settings.moc"
