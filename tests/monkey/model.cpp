#include "monkey/model.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace model {

namespace {

/// The number at the end of an action's name, such as "goTest5".
int numberIn(const QString &action) {
    return action.back().digitValue();
}

}  // namespace

const QStringList &Program::events() {
    static const QStringList all{
        u"answer in a quiz while another one's clock runs"_s,
        u"answer without a question"_s,
        u"attempt abandoned"_s,
        u"attempt abandoned, another one's clock stopped"_s,
        u"attempt failed"_s,
        u"attempt of no questions failed"_s,
        u"attempt of no questions passed"_s,
        u"attempt passed"_s,
        u"attempt timed out"_s,
        u"cleared"_s,
        u"cleared during a quiz"_s,
        u"clock replaced by another quiz's"_s,
        u"no question left to show"_s,
        u"pass of a mastered quiz"_s,
        u"pass of a quiz with an odd count"_s,
        u"pass of a quiz without a count"_s,
        u"quiz mastered"_s,
        u"quiz of an odd id"_s,
        u"four quiz windows at once"_s,
        u"quiz without an id"_s,
        u"results of no quiz"_s,
        u"results without a pass count"_s,
        u"unknown quiz with questions left over"_s,
        u"unknown quiz without questions"_s,
    };
    return all;
}

Program::Program(Layouts layouts, Random random, store::Contents store)
    : layouts_(std::move(layouts)), random_(std::move(random)), store_(std::move(store)) {}

// What the learner, the clock and others do.

void Program::start() {
    openMainMenu([this] { log_ << u"Finished Starting"_s; });
}

void Program::pressInMenuBar(const QString &action) {
    if (alert_ || ended_) {
        object(u"%1 was picked behind an alert or after the end"_s.arg(action));
    } else if (action.startsWith(u"GoTest")) {
        startQuiz(QString::number(numberIn(action)));
    } else if (action == u"GoMainMenu") {
        openMainMenu();
    } else if (action == u"goPreferences") {
        openSettings();
    } else if (action == u"ShowHelp") {
        show(load(u"Help"_s));
    } else if (action == u"quit") {
        QStringList quizWindows;
        for (const Window &window : std::as_const(windows_)) {
            if (window.layout == u"MainTest") {
                quizWindows << window.name;
            }
        }
        quit(quizWindows);
    }
}

void Program::press(const QString &window, const QString &action) {
    if (alert_ || ended_ || !isOpen(window)) {
        object(u"%1 was pressed in %2, which is closed or behind an alert"_s.arg(action, window));
        return;
    }
    const QString layout = find(window)->layout;
    if (layout == u"MainTest") {
        pressInQuiz(window, action);
    } else if (action.startsWith(u"goTest")) {
        startQuiz(QString::number(numberIn(action)));
    } else if (action == u"showPreferences") {
        openSettings();
    } else if (action == u"showProgress") {
        openProgress();
    } else if (action == u"refreshProgress") {
        fillMainMenu(window);
    } else if (action == u"goHome") {
        log_ << u"Going Home"_s;
    } else if (action == u"yesTimeSelected" || action == u"noTimeSelected") {
        const bool timed = action == u"yesTimeSelected";
        showTimed(window, timed);
        write(u"timedQuizzes"_s, timed ? u"yes"_s : u"no"_s);
    } else if (action == u"resetProgress") {
        resetProgress(window);
    } else if (action == u"closeHelp") {
        close(window);
    } else {
        object(u"%1 does not know the action %2"_s.arg(window, action));
    }
}

void Program::closeWindow(const QString &window) {
    if (window.startsWith(u"MainLayout")) {
        ended_ = true;
    } else if (alert_) {
        object(u"%1 was closed behind an alert"_s.arg(window));
    } else if (find(window)->layout == u"MainTest") {
        askToClose(window);
    } else {
        close(window);
    }
}

void Program::answer(const QString &button) {
    if (!alert_ || !alert_->buttons.contains(button)) {
        object(u"\"%1\" was the answer, but nothing asked for it"_s.arg(button));
        return;
    }
    const bool byDefault = button == alert_->buttons.first();
    alert_.reset();
    std::exchange(afterAlert_, {})(byDefault);
}

void Program::quit(QStringList quizzesToAsk) {
    if (quizzesToAsk.isEmpty()) {
        ended_ = true;
        return;
    }
    const QString quiz = quizzesToAsk.takeFirst();
    askToClose(quiz, [this, quizzesToAsk] { quit(quizzesToAsk); });
}

// Windows and alerts.

bool Program::isOpen(const QString &window) const {
    return std::ranges::count(windows_, window, &Window::name) > 0;
}

int Program::countOpen(const QString &layout) const {
    return int(std::ranges::count(windows_, layout, &Window::layout));
}

Window *Program::find(const QString &name) {
    const auto found = std::ranges::find(windows_, name, &Window::name);
    return found == windows_.end() ? nullptr : &*found;
}

Control &Program::control(const QString &window, const QString &name) {
    return find(window)->controls[name];
}

QString Program::load(const QString &layout) {
    Window window = layouts_[layout];
    window.name = u"%1 %2"_s.arg(layout).arg(++loaded_[layout]);
    windows_ << window;
    return window.name;
}

void Program::show(const QString &window) {
    find(window)->loading = false;
}

void Program::close(const QString &window) {
    windows_.removeIf([&window](const Window &one) { return one.name == window; });
}

void Program::write(const QString &key, const QString &value) {
    store_[key] = value;
    writes_.append({key, value});
}

void Program::ask(const Alert &alert, std::function<void(bool byDefault)> then) {
    alert_ = alert;
    afterAlert_ = std::move(then);
}

}  // namespace model
