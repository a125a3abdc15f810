#include <functional>

#include <QRadioButton>
#include <QTest>

#include "configuration.h"
#include "controls/messagebox.h"
#include "support/clocks.h"
#include "support/learner.h"
#include "support/quizdesk.h"
#include "support/testmain.h"
#include "support/windowtest.h"
#include "system/preferences.h"
#include "systemcalls.h"

using namespace Qt::StringLiterals;

namespace {

/// While one exists, it counts the syncs, and keeps which windows and alerts were shown after how
/// many.
class Commits final : public QObject, public systemcalls::Watcher {
    Q_OBJECT

 public:
    explicit Commits(const QString &folder) : Watcher(folder) { qApp->installEventFilter(this); }

    void succeeded(const systemcalls::Call &call) override {
        count_ += call.kind == systemcalls::Kind::Sync ? 1 : 0;
    }

    int count() const { return count_; }
    const QStringList &shown() const { return shown_; }

 protected:
    bool eventFilter(QObject *watched, QEvent *event) override {
        const auto *widget = qobject_cast<QWidget *>(watched);
        if (event->type() == QEvent::Show && widget != nullptr && widget->isWindow()) {
            const auto *box = qobject_cast<platform::MessageBox *>(watched);
            shown_ << QString::number(count_) + u' ' +
                          (box == nullptr ? widget->objectName() : box->text());
        }
        return false;
    }

 private:
    int count_ = 0;
    QStringList shown_;
};

platform::Window *quiz() {
    return desk::window(u"MainTest"_s);
}

}  // namespace

/// How often the learner waits for the disk, and that nobody is told of a write before it is there.
class tst_diskcommits final : public ProgramTest {
    Q_OBJECT

 private Q_SLOTS:
    void firstWriteWaitsForEachNewName() {
        const auto commitsBeside = [](const QStringList &others) {
            const Configuration configuration;
            for (const QString &other : others) {
                configuration.write("", other);
            }
            const Commits counted(configuration.surroundings());
            platform::Preferences().setValueForKey(u"1"_s, u"quiz1"_s);
            return counted.count();
        };
        // A kill may have left an empty folder before its name was on the disk.
        QCOMPARE(commitsBeside({}), 4);
        QCOMPARE(commitsBeside({u"../other.conf"_s}), 3);
        QCOMPARE(commitsBeside({u"other.conf"_s}), 2);
    }

    void greetingWaitsForTheFirstWrite() {
        store::wipe();
        alerts_->answer(u"OK"_s);
        take("first start", [&] { delegate_->applicationDidFinishLaunching(); }, 2,
             {u"0 MainMenu"_s,
              u"2 Welcome to Zorvan, this is the main progress screen where you can select quizzes "
              "to take and track your progress."_s});
    }

    void stepsCommitAsOftenAsTheyMustAndTellAfterwards() {
        const auto press = [](const QString &window, const QString &action) {
            // The results bring a main menu of their own: any will do.
            return [=] { learner::press(desk::windows(window).value(0), action); };
        };
        const auto choose = [](const QString &radio) {
            return [=] { desk::control<QRadioButton>(desk::window(u"Settings"_s), radio).click(); };
        };
        const auto openQuiz = [&] {
            take("opening a quiz", press(u"MainMenu"_s, u"goTest5"_s), 2, {u"2 MainTest"_s});
        };
        const auto leaveResults = [&] {
            take("leaving the results", press(u"QuizComplete"_s, u"goHome"_s));
        };
        const QStringList results{u"2 MainMenu"_s, u"2 QuizComplete"_s};

        const auto start = [&] { delegate_->applicationDidFinishLaunching(); };
        take("later start", start, 0, {u"0 MainMenu"_s});
        take("refreshing the main menu", press(u"MainMenu"_s, u"refreshProgress"_s));
        take("looking at the progress", press(u"MainMenu"_s, u"showProgress"_s), 0,
             {u"0 progress"_s});
        take("looking at the settings", press(u"MainMenu"_s, u"showPreferences"_s), 0,
             {u"0 Settings"_s});
        take("choosing timed quizzes", choose(u"yesRadio"_s), 2, {});

        openQuiz();
        const auto passTheTime = [&] {
            alerts_->answer(u"OK"_s);
            while (!clocks::running().isEmpty()) {
                clocks::passSecond();
            }
        };
        // The alert is about the clock, and waits for the learner.
        take("time is up", passTheTime, 2,
             QStringList{u"0 The time is up for this test."_s} + results);
        leaveResults();
        take("choosing untimed quizzes", choose(u"noRadio"_s), 2, {});

        openQuiz();
        const auto answerAllButOne = [] {
            quizdesk::answerQuestions(quiz(), 6, 6);
            quizdesk::goOn(quiz());
        };
        take("answers before the last", answerAllButOne);
        take(
            "last answer", [] { quizdesk::answerRight(quiz()); }, 2, results);
        leaveResults();

        openQuiz();
        take(
            "wrong answers", [] { quizdesk::answerQuestions(quiz(), 7, 0); }, 2, results);
        leaveResults();
        const auto clear = [&] {
            alerts_->answer(u"Yes"_s);
            alerts_->answer(u"OK"_s);
            learner::press(desk::window(u"Settings"_s), u"resetProgress"_s);
        };
        take("clearing", clear, 2,
             {u"0 This will reset all progress. Are you sure you want to clear your progress?"_s,
              u"2 All progress on quizzes has been reset"_s});

        openQuiz();
        const auto closeQuiz = [&] {
            alerts_->answer(u"Yes"_s);
            QVERIFY(quiz() != nullptr);
            quiz()->close();
        };
        take("closing a quiz", closeQuiz, 0,
             {u"0 This will end your current progress on this test, would you still like to close "
              "this window?"_s});
    }

 private:
    /// `shown` says what is shown, after how many commits.
    void take(const char *name, const std::function<void()> &step, int commits = 0,
              const QStringList &shown = {}) const {
        // Each step builds upon the ones before.
        if (QTest::currentTestFailed()) {
            return;
        }
        const Commits counted(qEnvironmentVariable("XDG_CONFIG_HOME") + u"/Zorvan"_s);
        step();
        QVERIFY2(counted.count() == commits, name + (": " + QByteArray::number(counted.count())));
        QVERIFY2(counted.shown() == shown, name + (":\n" + counted.shown().join(u'\n').toUtf8()));
    }
};

ZORVAN_TEST(tst_diskcommits)
#include "tst_diskcommits.moc"
