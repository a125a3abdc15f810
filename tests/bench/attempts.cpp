// Takes quizzes with the program's own windows on a real display, and times every step of the
// learner until the X server has painted the result: not what is between them, as closing windows.
//
// Each line of its input is the number of a quiz to take. For each it writes an object with the
// steps and the cost of the attempt. A step is its time, how often it made the disk confirm
// something, and its time without waiting for that. Times are in milliseconds, sizes in KiB.

#include <cstdlib>
#include <ctime>
#include <dlfcn.h>
#include <iostream>
#include <malloc.h>
#include <string>
#include <unistd.h>
#include <xcb/xcb.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
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

/// What happens from now on.
class Step final {
 public:
    /// How often the disk was made to confirm something so far, and how long that took.
    // NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables): the system calls count here
    static inline int confirmations = 0;
    static inline double waited = 0;
    // NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)

    Step() { elapsed_.start(); }

    double milliseconds() const { return double(elapsed_.nsecsElapsed()) / 1e6; }
    QJsonArray cost() const {
        const double all = milliseconds();
        return {all, confirmations - confirmationsBefore_, all - (waited - waitedBefore_)};
    }

 private:
    int confirmationsBefore_ = confirmations;
    double waitedBefore_ = waited;
    QElapsedTimer elapsed_;
};

}  // namespace

// Replaces the system's own.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the system's is reserved
extern "C" int fsync(int descriptor) {
    const auto original = reinterpret_cast<decltype(&::fsync)>(dlsym(RTLD_NEXT, "fsync"));
    const Step step;
    const int result = original(descriptor);
    Step::confirmations += 1;
    Step::waited += step.milliseconds();
    return result;
}

namespace {

/// Returns when the X server has done everything that it was asked to do.
void waitForServer() {
    xcb_connection_t *connection =
        qApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
    // NOLINTNEXTLINE(cppcoreguidelines-no-malloc): xcb made it
    std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

class Learner final : public QObject {
 public:
    Learner() {
        qApp->installEventFilter(this);
        waitUntil([this] { return (menu_ = opened(u"MainMenu"_s)) != nullptr; });
    }

    /// Takes that quiz to its end, with every eighth answer wrong, and closes the results and the
    /// menu that it began in. Returns the times of each step.
    QJsonObject takeQuiz(int quiz) {
        menu_->activateWindow();
        waitUntil([this] { return menu_->isActiveWindow(); });
        const Step whole;
        Window *test = nullptr;
        const QJsonArray opening = time(u"btnQuiz%1"_s.arg(quiz), [&] {
            test = opened(u"MainTest"_s);
            return isPainted(test, u"lblQuestion"_s);
        });
        waitUntil([&] { return test->isActiveWindow(); });

        const auto answer = [](int left) {
            const int right = quizRun().correctAnswerNumber;
            return u"btnAnswer%1"_s.arg(left % 8 != 0 ? right : right == 1 ? 2 : 1);
        };
        QJsonArray answers;
        QJsonArray questions;
        for (int left = quizRun().questionCount; left > 1; --left) {
            answers.append(time(answer(left), [&] { return isPainted(test, u"lblStatus"_s); }));
            // The next question's text may be the same.
            questions.append(time(u"btnNextQuestion"_s,
                                  [&] { return isPainted(test, u"lblProgressPercent"_s); }));
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
        // As the event loop does when none of the program's own code runs, for what a freed
        // controller held too.
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

 protected:
    bool eventFilter(QObject *watched, QEvent *event) override {
        if (event->type() == QEvent::Paint) {
            painted_.insert(watched);
        }
        return false;
    }

 private:
    /// The window of that layout, other than the menu that is already known.
    Window *opened(const QString &layout) const {
        QList<Window *> windows = desk::windows(layout);
        windows.removeOne(menu_);
        return windows.value(0);
    }

    bool isPainted(const Window *window, const QString &control) const {
        return window != nullptr && painted_.contains(window->findChild<QWidget *>(control));
    }

    template <class Condition>
    void waitUntil(Condition condition) {
        // Does not wait forever for a window that does not come.
        alarm(10);
        while (!condition()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        alarm(0);
    }

    /// Clicks on a button of the window in front and returns what happens until the picture is
    /// complete.
    template <class Condition>
    QJsonArray time(const QString &button, Condition painted) {
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

    QSet<const QObject *> painted_;
    Window *menu_ = nullptr;
};

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
        const std::clock_t before = std::clock();
        QJsonObject attempt = learner.takeQuiz(std::stoi(quiz));
        attempt.insert(u"cpu"_s, double(std::clock() - before) * 1e3 / CLOCKS_PER_SEC);
        attempt.insert(u"heap"_s, double(mallinfo2().uordblks) / 1024);
        std::cout << QJsonDocument(attempt).toJson(QJsonDocument::Compact).constData() << std::endl;
    }
    return 0;
}
