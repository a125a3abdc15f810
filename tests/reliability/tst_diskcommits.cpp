#include <functional>
#include <optional>

#include <QDir>
#include <QMessageBox>
#include <QRadioButton>
#include <QTest>

#include "reliability/systemcalls.h"
#include "support/clocks.h"
#include "support/learner.h"
#include "support/quizdesk.h"
#include "support/testmain.h"
#include "support/windowtest.h"

using namespace Qt::StringLiterals;

namespace {

/// While one exists, it counts the syncs below a folder, and keeps what the store held and how many
/// there had been when a window or an alert was shown.
class Commits final : public QObject, public systemcalls::Watcher {
    Q_OBJECT

 public:
    struct Showing {
        QString what;
        int commits;
        store::Contents contents;
    };

    explicit Commits(const QString &folder) : folder_(folder.toUtf8()) {
        qApp->installEventFilter(this);
    }

    void succeeded(const systemcalls::Call &call) override {
        if (call.kind == systemcalls::Kind::Sync && systemcalls::isIn(folder_, call.path)) {
            ++count_;
        }
    }

    int count() const { return count_; }
    const QList<Showing> &showings() const { return showings_; }

 protected:
    bool eventFilter(QObject *watched, QEvent *event) override {
        const auto *widget = qobject_cast<QWidget *>(watched);
        if (event->type() == QEvent::Show && widget != nullptr && widget->isWindow()) {
            const auto *box = qobject_cast<QMessageBox *>(watched);
            showings_.append(
                {box == nullptr ? widget->objectName() : box->text(), count_, store::contents()});
        }
        return false;
    }

 private:
    QByteArray folder_;
    int count_ = 0;
    QList<Showing> showings_;
};

/// Steps that a learner takes.
using Steps = std::function<void(AppDelegate &)>;

Steps inTurn(const QList<Steps> &all) {
    return [=](AppDelegate &delegate) {
        for (const Steps &steps : all) {
            steps(delegate);
        }
    };
}

QString configurationHome() {
    return QFile::decodeName(qgetenv("XDG_CONFIG_HOME"));
}

/// Removes what is there under that path in the configuration home.
Steps without(const QString &path) {
    return [=](AppDelegate &) {
        const QString whole = configurationHome() + path;
        QVERIFY(QFileInfo(whole).isDir() ? QDir(whole).removeRecursively() : QFile::remove(whole));
    };
}

/// Another program's file under that path in the configuration home.
Steps with(const QString &path) {
    return [=](AppDelegate &) {
        QFile file(configurationHome() + path);
        QVERIFY(QDir().mkpath(QFileInfo(file).path()));
        QVERIFY(file.open(QIODevice::WriteOnly));
    };
}

void start(AppDelegate &delegate) {
    delegate.applicationDidFinishLaunching();
}

Steps press(const QString &window, const QString &action) {
    return [=](AppDelegate &) { learner::press(desk::window(window), action); };
}

Steps choose(const QString &radio) {
    return [=](AppDelegate &) {
        desk::control<QRadioButton>(desk::window(u"Settings"_s), radio).click();
    };
}

/// Answers that many questions of the quiz, and goes on after each.
Steps answer(int questions, bool rightly) {
    return [=](AppDelegate &) {
        const platform::Window *quiz = desk::window(u"MainTest"_s);
        quizdesk::answerQuestions(quiz, questions, rightly ? questions : 0);
        quizdesk::goOn(quiz);
    };
}

Steps answerLast(bool rightly) {
    return [=](AppDelegate &) {
        const platform::Window *quiz = desk::window(u"MainTest"_s);
        rightly ? quizdesk::answerRight(quiz) : quizdesk::answerWrong(quiz);
    };
}

void passTheTime(AppDelegate &) {
    while (!clocks::running().isEmpty()) {
        clocks::passSecond();
    }
}

void closeQuiz(AppDelegate &) {
    desk::window(u"MainTest"_s)->close();
}

}  // namespace

/// How often the learner waits for the disk, and that nobody is told of a write before it is there.
class tst_diskcommits final : public ProgramTest {
    Q_OBJECT

 private Q_SLOTS:
    void initTestCase() {
        // Inside the one that the test has, so that it can be missing.
        qputenv("XDG_CONFIG_HOME", qgetenv("XDG_CONFIG_HOME") + "/home");
    }

    void stepsCommitAsOftenAsTheyMustAndTellAfterwards_data() {
        QTest::addColumn<Steps>("before");
        QTest::addColumn<Steps>("steps");
        QTest::addColumn<QStringList>("answers");
        QTest::addColumn<int>("commits");
        // What is shown, after how many commits.
        QTest::addColumn<QStringList>("shown");
        QTest::addColumn<store::Contents>("written");

        const Steps openQuiz = press(u"MainMenu"_s, u"goTest5"_s);
        const Steps openSettings = press(u"MainMenu"_s, u"showPreferences"_s);
        const Steps toSettings = inTurn({start, openSettings});
        const Steps toQuiz = inTurn({start, openQuiz});
        const Steps toTimedQuiz = inTurn({toSettings, choose(u"yesRadio"_s), openQuiz});
        const QString greeting =
            u"Welcome to Zorvan, this is the main progress screen where you can select quizzes to "
            "take and track your progress."_s;
        const store::Contents pass{
            {u"currentStatus"_s, u"pass"_s}, {u"quiz5"_s, u"1"_s}, {u"currentTest"_s, u"5"_s}};
        const store::Contents fail{
            {u"currentStatus"_s, u"fail"_s}, {u"quiz5"_s, u"0"_s}, {u"currentTest"_s, u"5"_s}};
        const QStringList resultsShown{u"2 MainMenu"_s, u"2 QuizComplete"_s};

        const auto row = [](const char *name, const Steps &before, const Steps &steps,
                            const QStringList &answers, int commits, const QStringList &shown,
                            const store::Contents &written = {}) {
            QTest::newRow(name) << before << steps << answers << commits << shown << written;
        };
        // The name of each folder that is created has to be on the disk, too.
        row("first start, configuration home missing", without(QString()), start, {u"OK"_s}, 4,
            {u"0 MainMenu"_s, u"4 "_s + greeting}, store::seeded());
        row("first start, folder missing",
            inTurn({without(u"/Zorvan"_s), with(u"/Other/other.conf"_s)}), start, {u"OK"_s}, 3,
            {u"0 MainMenu"_s, u"3 "_s + greeting}, store::seeded());
        // A kill may have left it before its name was on the disk.
        row("first start, empty folder there",
            inTurn({without(u"/Zorvan/Zorvan.conf"_s), with(u"/Other/other.conf"_s)}), start,
            {u"OK"_s}, 3, {u"0 MainMenu"_s, u"3 "_s + greeting}, store::seeded());
        row("first start, folder there",
            inTurn({without(u"/Zorvan/Zorvan.conf"_s), with(u"/Zorvan/other.conf"_s)}), start,
            {u"OK"_s}, 2, {u"0 MainMenu"_s, u"2 "_s + greeting}, store::seeded());
        row("later start", [](AppDelegate &) {}, start, {}, 0, {u"0 MainMenu"_s});
        row("opening a quiz", start, openQuiz, {}, 2, {u"2 MainTest"_s},
            {{u"currentTest"_s, u"5"_s}});
        row("answers before the last", toQuiz, answer(6, true), {}, 0, {});
        row("last answer, passed", inTurn({toQuiz, answer(6, true)}), answerLast(true), {}, 2,
            resultsShown, pass);
        row("last answer, failed", inTurn({toQuiz, answer(6, false)}), answerLast(false), {}, 2,
            resultsShown, fail);
        // The alert is about the clock, and waits for the learner.
        row("time is up", toTimedQuiz, passTheTime, {u"OK"_s}, 2,
            QStringList{u"0 The time is up for this test."_s} + resultsShown, fail);
        row("closing a quiz", toTimedQuiz, closeQuiz, {u"Yes"_s}, 0,
            {u"0 This will end your current progress on this test, would you still like to close "
             u"this "
             "window?"_s});
        row("clearing", toSettings, press(u"Settings"_s, u"resetProgress"_s), {u"Yes"_s, u"OK"_s},
            2,
            {u"0 This will reset all progress. Are you sure you want to clear your progress?"_s,
             u"2 All progress on quizzes has been reset"_s},
            store::seeded());
        row("choosing timed quizzes", toSettings, choose(u"yesRadio"_s), {}, 2, {},
            {{u"timedQuizzes"_s, u"yes"_s}});
        row("choosing untimed quizzes", toTimedQuiz, choose(u"noRadio"_s), {}, 2, {},
            {{u"timedQuizzes"_s, u"no"_s}});
        row("looking at the settings", start, openSettings, {}, 0, {u"0 Settings"_s});
        row("looking at the progress", start, press(u"MainMenu"_s, u"showProgress"_s), {}, 0,
            {u"0 progress"_s});
        row("refreshing the main menu", start, press(u"MainMenu"_s, u"refreshProgress"_s), {}, 0,
            {});
        row("leaving the results", inTurn({toQuiz, answer(6, true), answerLast(true)}),
            press(u"QuizComplete"_s, u"goHome"_s), {}, 0, {});
    }

    void stepsCommitAsOftenAsTheyMustAndTellAfterwards() {
        QFETCH(const Steps, before);
        QFETCH(const Steps, steps);
        QFETCH(const QStringList, answers);
        QFETCH(const int, commits);
        QFETCH(const QStringList, shown);
        QFETCH(const store::Contents, written);
        before(*delegate_);
        for (const QString &answer : answers) {
            alerts_->answer(answer);
        }

        const Commits counted(QFileInfo(configurationHome()).path());
        steps(*delegate_);

        QCOMPARE(counted.count(), commits);
        const store::Contents after = store::contents();
        for (auto entry = written.begin(); entry != written.end(); ++entry) {
            QCOMPARE(after.value(entry.key()), *entry);
        }
        QStringList found;
        for (const Commits::Showing &showing : counted.showings()) {
            found << QString::number(showing.commits) + u' ' + showing.what;
            QVERIFY2(showing.commits < commits || showing.contents == after,
                     qUtf8Printable(showing.what));
        }
        QCOMPARE(found.join(u'\n'), shown.join(u'\n'));
    }
};

ZORVAN_TEST(tst_diskcommits)
#include "tst_diskcommits.moc"
