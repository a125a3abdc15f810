// Takes quizzes with the program's own windows on a real display, and times every step of the
// learner's way until the X server has painted what comes of it.
//
//     attempts [--main-tests N] [--attempts N]
//
// Writes one object: for each step its times, and for each attempt at quiz 5 what it cost. Times
// are in milliseconds. What the learner does between the steps, such as closing windows, is not
// timed.

#include <cstdio>
#include <ctime>
#include <malloc.h>
#include <memory>
#include <vector>
#include <xcb/xcb.h>

#include <QAbstractButton>
#include <QApplication>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QScopedPointer>
#include <QTest>
#include <QTimer>
#include <QtGui/qguiapplication_platform.h>

#include "platform/application.h"
#include "quizrun/quizrun.h"
#include "resources/resources.h"
#include "shell/appdelegate.h"
#include "shell/controllertable.h"

using namespace Qt::StringLiterals;

using platform::Window;

namespace {

constexpr std::size_t mostQuestions = 30;

double processorMilliseconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return double(now.tv_sec) * 1e3 + double(now.tv_nsec) / 1e6;
}

double proportionalKiB() {
    QFile rollup(u"/proc/self/smaps_rollup"_s);
    if (rollup.open(QIODevice::ReadOnly)) {
        for (const QByteArray &line : rollup.readAll().split('\n')) {
            if (line.startsWith("Pss:")) {
                return line.simplified().split(' ').value(1).toDouble();
            }
        }
    }
    qFatal("The kernel does not tell how much memory is used");
}

/// Returns when the X server has done all that it was asked to.
void waitForServer() {
    xcb_connection_t *connection =
        qApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
    const std::unique_ptr<xcb_get_input_focus_reply_t, QScopedPointerPodDeleter> reply(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

/// Which controls have been painted.
class Painted final : public QObject {
 public:
    Painted() { qApp->installEventFilter(this); }

    void forget() { controls_.clear(); }
    bool contains(const Window *window, const QString &name) const {
        return window != nullptr && controls_.contains(window->findChild<QWidget *>(name));
    }

 private:
    bool eventFilter(QObject *watched, QEvent *event) override {
        if (event->type() == QEvent::Paint) {
            controls_.insert(watched);
        }
        return false;
    }

    QSet<const QObject *> controls_;
};

class Learner final {
 public:
    /// Keeps room for the times of so many quizzes, so that what grows is the program.
    explicit Learner(int quizzes);

    /// Takes that quiz to its end, with every eighth answer wrong, and closes the results and the
    /// menu that it began in.
    void takeQuiz(int quiz);

    /// The times of each step so far.
    const QMap<QString, std::vector<double>> &steps() const { return steps_; }

 private:
    Window *open(const QString &layout) const;
    template <class Condition>
    void waitUntil(Condition condition);
    template <class Condition>
    void time(const QString &step, const QString &button, Condition painted);
    void note(const QString &step, const QElapsedTimer &elapsed);

    std::size_t mostEvents_;
    Painted painted_;
    Window *menu_ = nullptr;
    Window *quiz_ = nullptr;
    QMap<QString, std::vector<double>> steps_;
    QTimer patience_;
};

Learner::Learner(int quizzes) : mostEvents_(std::size_t(quizzes) * mostQuestions) {
    patience_.callOnTimeout(qApp, [] { qFatal("A window was waited for in vain"); });
    waitUntil([this] { return (menu_ = open(u"MainMenu"_s)) != nullptr; });
}

/// The window of that layout, other than the menu that is already known.
Window *Learner::open(const QString &layout) const {
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        auto *window = qobject_cast<Window *>(widget);
        if (window != nullptr && window != menu_ && window->isVisible() &&
            window->objectName() == layout) {
            return window;
        }
    }
    return nullptr;
}

template <class Condition>
void Learner::waitUntil(Condition condition) {
    patience_.start(std::chrono::seconds(10));
    while (!condition()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    patience_.stop();
}

/// Times from the click on a button of the window in front until the picture is complete.
template <class Condition>
void Learner::time(const QString &step, const QString &button, Condition painted) {
    waitForServer();
    QCoreApplication::processEvents();
    painted_.forget();
    auto *control = QApplication::activeWindow()->findChild<QAbstractButton *>(button);
    QElapsedTimer elapsed;
    elapsed.start();
    QTest::mouseClick(control, Qt::LeftButton);
    waitUntil(painted);
    QCoreApplication::processEvents();
    waitForServer();
    note(step, elapsed);
}

void Learner::note(const QString &step, const QElapsedTimer &elapsed) {
    const double milliseconds = double(elapsed.nsecsElapsed()) / 1e6;
    std::vector<double> &times = steps_[step];
    times.reserve(mostEvents_);
    times.push_back(milliseconds);
}

void Learner::takeQuiz(int quiz) {
    const QString number = QString::number(quiz);
    QElapsedTimer whole;
    menu_->activateWindow();
    waitUntil([this] { return menu_->isActiveWindow(); });
    whole.start();
    time(u"open"_s, u"btnQuiz"_s + number, [this] {
        quiz_ = open(u"MainTest"_s);
        return painted_.contains(quiz_, u"lblQuestion"_s);
    });
    waitUntil([this] { return quiz_->isActiveWindow(); });

    for (int left = quizRun().questionCount; left > 0; --left) {
        const int right = quizRun().correctAnswerNumber;
        const int answer = left % 8 != 0 ? right : right == 1 ? 2 : 1;
        const QString button = u"btnAnswer%1"_s.arg(answer);
        if (left > 1) {
            time(u"answer"_s, button, [this] { return painted_.contains(quiz_, u"lblStatus"_s); });
            // The next question's text may be the same.
            time(u"next"_s, u"btnNextQuestion"_s,
                 [this] { return painted_.contains(quiz_, u"lblProgressPercent"_s); });
            continue;
        }
        time(u"end"_s, button, [this] {
            return painted_.contains(open(u"QuizComplete"_s), u"lblTheStatus"_s) &&
                   painted_.contains(open(u"MainMenu"_s), u"progressbarMain"_s);
        });
    }
    note(u"quiz "_s + number, whole);

    Window *next = open(u"MainMenu"_s);
    open(u"QuizComplete"_s)->close();
    menu_->close();
    menu_ = next;
    // As the event loop does when none of the program's own code runs.
    QCoreApplication::processEvents();
    for (int depth = 0; depth < 3; ++depth) {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

struct Cost {
    double processorTime;
    double proportionalKiB;
    double heapKiB;
};

QJsonObject takeQuizzes(int mainTests, int attempts) {
    Learner learner(attempts + mainTests);
    std::vector<Cost> costs;
    costs.reserve(std::size_t(attempts));
    for (int attempt = 1; attempt <= attempts; ++attempt) {
        const double before = processorMilliseconds();
        learner.takeQuiz(5);
        costs.push_back({.processorTime = processorMilliseconds() - before,
                         .proportionalKiB = proportionalKiB(),
                         .heapKiB = double(mallinfo2().uordblks) / 1024});
    }
    for (int attempt = 0; attempt < mainTests; ++attempt) {
        learner.takeQuiz(7);
    }

    QJsonObject result;
    for (auto step = learner.steps().begin(); step != learner.steps().end(); ++step) {
        QJsonArray times;
        for (const double time : *step) {
            times.append(time);
        }
        result.insert(step.key(), times);
    }
    QJsonArray attemptCosts;
    for (const Cost &cost : costs) {
        attemptCosts.append(QJsonObject{{u"cpu"_s, cost.processorTime},
                                        {u"pss"_s, cost.proportionalKiB},
                                        {u"heap"_s, cost.heapKiB}});
    }
    result.insert(u"attempts"_s, attemptCosts);
    return result;
}

}  // namespace

int main(int argc, char **argv) {
    installResources();
    fillControllerTable();
    platform::provideRuntimeFolder();
    platform::Application application(argc, argv);
    const QCommandLineOption mainTests(u"main-tests"_s, u"Takes quiz 7 so often."_s, u"N"_s,
                                       u"20"_s);
    const QCommandLineOption attempts(u"attempts"_s, u"Takes quiz 5 so often before."_s, u"N"_s,
                                      u"1000"_s);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOptions({mainTests, attempts});
    parser.process(application);

    AppDelegate delegate;
    application.loadMainLayout(delegate);
    delegate.applicationDidFinishLaunching();
    const QJsonObject result =
        takeQuizzes(parser.value(mainTests).toInt(), parser.value(attempts).toInt());
    std::puts(QJsonDocument(result).toJson(QJsonDocument::Compact).constData());
    return 0;
}
