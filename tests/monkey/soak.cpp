#include <array>
#include <malloc.h>
#include <numeric>

#include <QCommandLineParser>
#include <QFile>
#include <QPointer>

#include "content/catalogue.h"
#include "monkey/liveprogram.h"
#include "support/alerts.h"
#include "support/clocks.h"
#include "support/learner.h"
#include "support/quizdesk.h"
#include "support/standarderror.h"
#include "support/storehome.h"

using namespace Qt::StringLiterals;

using platform::Window;

namespace {

enum class Ending { Pass, Fail, TimeOut, Abandon };

struct Attempt {
    bool timed;
    bool fromMenuBar;
    Ending ending;
};

/// One for each quiz.
constexpr std::array<Attempt, content::quizzes.size()> attempts{{
    {.timed = false, .fromMenuBar = false, .ending = Ending::Pass},
    {.timed = false, .fromMenuBar = true, .ending = Ending::Fail},
    {.timed = true, .fromMenuBar = false, .ending = Ending::Pass},
    {.timed = true, .fromMenuBar = true, .ending = Ending::TimeOut},
    {.timed = true, .fromMenuBar = false, .ending = Ending::Abandon},
    {.timed = true, .fromMenuBar = true, .ending = Ending::Fail},
    {.timed = false, .fromMenuBar = false, .ending = Ending::Pass},
}};

struct Memory {
    /// Includes its share of what other processes use too, such as Qt's code.
    double proportionalKiB = 0;
    /// What only this process uses.
    double privateKiB = 0;
    double allocatedKiB = double(mallinfo2().uordblks) / 1024;
};

Memory memory() {
    Memory memory;
    QFile rollup(u"/proc/self/smaps_rollup"_s);
    if (rollup.open(QIODevice::ReadOnly)) {
        for (const QByteArray &line : rollup.readAll().split('\n')) {
            const double amount = line.simplified().split(' ').value(1).toDouble();
            if (line.startsWith("Pss:")) {
                memory.proportionalKiB = amount;
            } else if (line.startsWith("Private_Dirty:")) {
                memory.privateKiB = amount;
            }
        }
    }
    return memory;
}

/// The window of that layout that was opened last.
Window *newest(const QString &layout) {
    Window *newest = nullptr;
    for (const QPointer<Window> &window : Window::onScreen()) {
        newest = window->objectName() == layout ? window.data() : newest;
    }
    if (newest == nullptr) {
        qFatal("No window \"%s\" is open", qUtf8Printable(layout));
    }
    return newest;
}

/// Opens what a learner looks at between two quizzes.
void look(const Window *menu, bool timed) {
    learner::press(menu, u"showPreferences"_s);
    Window *settings = newest(u"Settings"_s);
    learner::press(settings, timed ? u"yesTimeSelected"_s : u"noTimeSelected"_s);
    settings->close();
    learner::press(menu, u"showProgress"_s);
    newest(u"progress"_s)->close();
    learner::pick(menu, u"ShowHelp"_s);
    learner::press(newest(u"Help"_s), u"closeHelp"_s);
}

void end(Ending ending, Window *quiz) {
    Alerts alerts;
    const int questions = quizRun().questionCount;
    switch (ending) {
        case Ending::Pass:
            quizdesk::answerQuestions(quiz, questions, questions);
            break;
        case Ending::Fail:
            quizdesk::answerQuestions(quiz, questions, 0);
            break;
        case Ending::TimeOut:
            alerts.answer(u"OK"_s);
            while (!clocks::running().isEmpty()) {
                clocks::passSecond();
            }
            break;
        case Ending::Abandon:
            alerts.answer(u"Yes"_s);
            quiz->close();
            break;
    }
    if (!alerts.verify()) {
        qFatal("An attempt did not go as it should");
    }
}

/// Takes one quiz after another; `number` counts them from 0. If `keepOpen` is set, the results and
/// the menus stay open.
void takeQuiz(int number, bool keepOpen) {
    const std::size_t turn = std::size_t(number) % attempts.size();
    const Attempt &attempt = attempts.at(turn);
    Window *menu = newest(u"MainMenu"_s);
    look(menu, attempt.timed);
    if (attempt.fromMenuBar) {
        learner::pick(menu, u"GoTest%1"_s.arg(turn + 1));
    } else {
        learner::press(menu, u"goTest%1"_s.arg(turn + 1));
    }
    end(attempt.ending, newest(u"MainTest"_s));
    if (attempt.ending != Ending::Abandon && !keepOpen) {
        newest(u"QuizComplete"_s)->close();
        menu->close();
    }
    liveprogram::settle();
    // The list of writes is the test's own and must not count as the program's memory.
    store::forgetWrites();
}

/// How many there are of each class: of controllers, of widgets, and of what belongs to them or to
/// the application.
QMap<QByteArray, int> countObjects(const LiveProgram &program) {
    QMap<QByteArray, int> counts{{"clocks", int(clocks::running().size())}};
    QObjectList roots{qApp};
    for (const QPointer<QObject> &object : program.objects()) {
        if (object->parent() == nullptr) {
            roots << object;
        }
    }
    for (const QObject *root : std::as_const(roots)) {
        ++counts[root->metaObject()->className()];
        for (const QObject *child : root->findChildren<QObject *>()) {
            ++counts[child->metaObject()->className()];
        }
    }
    // These delete themselves, some of them a moment later.
    counts.remove("QSingleShotTimer");
    return counts;
}

/// The classes whose number of objects has changed.
QStringList differences(const QMap<QByteArray, int> &before, const QMap<QByteArray, int> &now) {
    QStringList differences;
    QMap<QByteArray, int> both = before;
    both.insert(now);
    const QByteArrayList names = both.keys();
    for (const QByteArray &name : names) {
        if (before.value(name) != now.value(name)) {
            differences << u"%1: %2, wanted %3"_s.arg(QLatin1StringView(name))
                               .arg(now.value(name))
                               .arg(before.value(name));
        }
    }
    return differences;
}

int measureOpenWindows(int keepOpen) {
    const int windows = int(Window::onScreen().size());
    const Memory before = memory();
    for (int attempt = 0; attempt < keepOpen; ++attempt) {
        takeQuiz(attempt, true);
    }
    const Memory after = memory();
    const int opened = int(Window::onScreen().size()) - windows;
    std::printf(
        "%d windows stay open, each of %.0f KiB proportional, %.0f private, %.0f allocated\n",
        opened, (after.proportionalKiB - before.proportionalKiB) / opened,
        (after.privateKiB - before.privateKiB) / opened,
        (after.allocatedKiB - before.allocatedKiB) / opened);
    return opened > 0 ? 0 : 1;
}

int takeQuizzes(const LiveProgram &program, int count) {
    constexpr int round = int(attempts.size());
    QMap<QByteArray, int> wanted;
    std::printf("attempts  proportional KiB  private KiB  allocated KiB  objects\n");
    for (int attempt = 1; attempt <= count; ++attempt) {
        takeQuiz(attempt - 1, false);
        // At the end of a round always the same windows are open.
        if (attempt % round != 0) {
            continue;
        }
        const QMap<QByteArray, int> counts = countObjects(program);
        const Memory now = memory();
        std::printf("%8d  %16.0f  %11.0f  %13.0f  %7d\n", attempt, now.proportionalKiB,
                    now.privateKiB, now.allocatedKiB, std::reduce(counts.begin(), counts.end()));
        if (attempt == 2 * round) {
            wanted = counts;
        }
        const QStringList found = attempt > 2 * round ? differences(wanted, counts) : QStringList();
        if (!found.isEmpty()) {
            std::printf("There are not as many objects as after the second round: %s\n",
                        qUtf8Printable(found.join(u"; "_s)));
            return 1;
        }
    }
    return 0;
}

}  // namespace

int main(int argc, char **argv) {
    const QCommandLineOption countOption(u"attempts"_s, u"How many quizzes to take."_s, u"N"_s,
                                         u"2002"_s);
    const QCommandLineOption openOption(
        u"keep-open"_s, u"Takes N quizzes and leaves what they open on screen."_s, u"N"_s);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Takes quiz after quiz, counts what lives and measures the memory."_s);
    parser.addHelpOption();
    parser.addOptions({countOption, openOption});
    parser.process(liveprogram::arguments(argc, argv));

    const StoreHome home;
    liveprogram::prepare();
    store::fill(store::seeded());
    liveprogram::chooseScreen(false);
    LiveProgram program(content::systemRandom);
    program.open();
    const StandardError errors;
    program.delegate().applicationDidFinishLaunching();
    const int result = parser.isSet(openOption)
                           ? measureOpenWindows(parser.value(openOption).toInt())
                           : takeQuizzes(program, parser.value(countOption).toInt());
    desk::clear();
    return result;
}
