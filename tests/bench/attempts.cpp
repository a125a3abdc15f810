// Takes quizzes with the program's own windows on a real display, and times every step of the
// learner until the X server has painted the result.
//
//     attempts
//
// Each line of its input is the number of a quiz to take. For each it writes an object with the
// steps and the cost of the attempt. A step is its time, how often it made the disk confirm
// something, and its time without waiting for that. Times are in milliseconds, sizes in KiB. What
// the learner does between the steps, such as closing windows, is not timed.

#include <ctime>
#include <dlfcn.h>
#include <iostream>
#include <malloc.h>
#include <memory>
#include <string>
#include <unistd.h>
#include <xcb/xcb.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QScopedPointer>
#include <QTimer>
#include <QtGui/qguiapplication_platform.h>

#include "quizrun/quizrun.h"
#include "resources/resources.h"
#include "shell/appdelegate.h"
#include "shell/controllertable.h"
#include "support/desk.h"
#include "system/runtimefolder.h"
#include "windowing/application.h"

using namespace Qt::StringLiterals;

using platform::Window;

namespace {

double processorMilliseconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return double(now.tv_sec) * 1e3 + double(now.tv_nsec) / 1e6;
}

double milliseconds(const QElapsedTimer &timer) {
    return double(timer.nsecsElapsed()) / 1e6;
}

/// How often the disk was made to confirm something so far, and how long that took.
struct Confirmations {
    int count = 0;
    double milliseconds = 0;
};

// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): the system calls count here
Confirmations confirmations;

int confirm(const char *call, int descriptor) {
    const auto original = reinterpret_cast<decltype(&::fsync)>(dlsym(RTLD_NEXT, call));
    QElapsedTimer elapsed;
    elapsed.start();
    const int result = original(descriptor);
    confirmations.count += 1;
    confirmations.milliseconds += milliseconds(elapsed);
    return result;
}

/// What happens from now on.
class Step final {
 public:
    Step() { elapsed_.start(); }

    QJsonArray cost() const {
        const double all = milliseconds(elapsed_);
        return {all, confirmations.count - before_.count,
                all - (confirmations.milliseconds - before_.milliseconds)};
    }

 private:
    Confirmations before_ = confirmations;
    QElapsedTimer elapsed_;
};

/// Returns when the X server has done everything that it was asked to do.
void waitForServer() {
    xcb_connection_t *connection =
        qApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
    const std::unique_ptr<xcb_get_input_focus_reply_t, QScopedPointerPodDeleter> reply(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

}  // namespace

// These replace the system's own functions.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the system's are reserved
extern "C" {

int fsync(int descriptor) {
    return confirm("fsync", descriptor);
}

int fdatasync(int descriptor) {
    return confirm("fdatasync", descriptor);
}

}  // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)

namespace {

class Learner final : public QObject {
 public:
    Learner();

    /// Takes that quiz to its end, with every eighth answer wrong, and closes the results and the
    /// menu that it began in. Returns the times of each step.
    QJsonObject takeQuiz(int quiz);

 protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

 private:
    Window *opened(const QString &layout) const;
    bool isPainted(const Window *window, const QString &control) const;
    template <class Condition>
    void waitUntil(Condition condition);
    template <class Condition>
    QJsonArray time(const QString &button, Condition painted);

    QSet<const QObject *> painted_;
    Window *menu_ = nullptr;
    Window *quiz_ = nullptr;
    QTimer patience_;
};

Learner::Learner() {
    qApp->installEventFilter(this);
    patience_.callOnTimeout(qApp, [] { qFatal("A window was waited for in vain"); });
    waitUntil([this] { return (menu_ = opened(u"MainMenu"_s)) != nullptr; });
}

/// The window of that layout, other than the menu that is already known.
Window *Learner::opened(const QString &layout) const {
    QList<Window *> windows = desk::windows(layout);
    windows.removeOne(menu_);
    return windows.value(0);
}

bool Learner::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::Paint) {
        painted_.insert(watched);
    }
    return false;
}

bool Learner::isPainted(const Window *window, const QString &control) const {
    return window != nullptr && painted_.contains(window->findChild<QWidget *>(control));
}

template <class Condition>
void Learner::waitUntil(Condition condition) {
    patience_.start(std::chrono::seconds(10));
    while (!condition()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    patience_.stop();
}

/// Clicks on a button of the window in front and returns what happens until the picture is
/// complete.
template <class Condition>
QJsonArray Learner::time(const QString &button, Condition painted) {
    waitForServer();
    QCoreApplication::processEvents();
    painted_.clear();
    const QWidget *window = QApplication::activeWindow();
    const Step step;
    desk::click(window, button);
    waitUntil(painted);
    QCoreApplication::processEvents();
    waitForServer();
    return step.cost();
}

QJsonObject Learner::takeQuiz(int quiz) {
    menu_->activateWindow();
    waitUntil([this] { return menu_->isActiveWindow(); });
    const Step whole;
    const QJsonArray opening = time(u"btnQuiz%1"_s.arg(quiz), [this] {
        quiz_ = opened(u"MainTest"_s);
        return isPainted(quiz_, u"lblQuestion"_s);
    });
    waitUntil([this] { return quiz_->isActiveWindow(); });

    const auto answer = [](int left) {
        const int right = quizRun().correctAnswerNumber;
        return u"btnAnswer%1"_s.arg(left % 8 != 0 ? right : right == 1 ? 2 : 1);
    };
    QJsonArray answers;
    QJsonArray questions;
    for (int left = quizRun().questionCount; left > 1; --left) {
        answers.append(time(answer(left), [this] { return isPainted(quiz_, u"lblStatus"_s); }));
        // The next question's text may be the same.
        questions.append(time(u"btnNextQuestion"_s,
                              [this] { return isPainted(quiz_, u"lblProgressPercent"_s); }));
    }
    const QJsonArray ending = time(answer(1), [this] {
        return isPainted(opened(u"QuizComplete"_s), u"lblTheStatus"_s) &&
               isPainted(opened(u"MainMenu"_s), u"progressbarMain"_s);
    });
    const QJsonArray all = whole.cost();

    Window *next = opened(u"MainMenu"_s);
    opened(u"QuizComplete"_s)->close();
    menu_->close();
    menu_ = next;
    // As the event loop does when none of the program's own code runs, for what a freed controller
    // held too.
    for (int depth = 0; depth < 3; ++depth) {
        QCoreApplication::processEvents();
        desk::freeUnused();
    }
    return {{u"open"_s, QJsonArray({opening})},
            {u"answer"_s, answers},
            {u"next"_s, questions},
            {u"end"_s, QJsonArray({ending})},
            {u"whole"_s, QJsonArray({all})}};
}

}  // namespace

int main(int argc, char **argv) {
    installResources();
    fillControllerTable();
    platform::provideRuntimeFolder();
    platform::Application application(argc, argv);
    AppDelegate delegate;
    application.loadMainLayout(delegate);
    delegate.applicationDidFinishLaunching();

    Learner learner;
    for (std::string quiz; std::getline(std::cin, quiz);) {
        const double before = processorMilliseconds();
        QJsonObject attempt = learner.takeQuiz(std::stoi(quiz));
        attempt.insert(u"cpu"_s, processorMilliseconds() - before);
        attempt.insert(u"heap"_s, double(mallinfo2().uordblks) / 1024);
        std::cout << QJsonDocument(attempt).toJson(QJsonDocument::Compact).constData() << std::endl;
    }
    return 0;
}
