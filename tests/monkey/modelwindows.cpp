#include "monkey/model.h"

using namespace Qt::StringLiterals;

namespace model {

namespace {

constexpr int quizCount = 7;

QStringList numbered(const QString &pattern, int last) {
    QStringList names;
    for (int number = 1; number <= last; ++number) {
        names << pattern.arg(number);
    }
    return names;
}

}  // namespace

const QMap<QString, QStringList> &outlets() {
    static const QMap<QString, QStringList> all{
        {u"MainMenu"_s,
         numbered(u"progressbarQuiz%1"_s, quizCount) + QStringList{u"progressbarMain"_s}},
        {u"MainTest"_s,
         numbered(u"lblAnswer%1"_s, 3) + numbered(u"btnAnswer%1"_s, 3) +
             QStringList{u"lblQuizName"_s, u"lblProgressPercent"_s, u"lblQuestion"_s,
                         u"lblCorrectPercent"_s, u"lblStatus"_s, u"lblTimeLeftLabel"_s,
                         u"lblTimeLeft"_s, u"btnNextQuestion"_s, u"progressbarMain"_s,
                         u"imgQuestion"_s}},
        {u"QuizComplete"_s,
         numbered(u"theImage%1"_s, 3) + QStringList{u"lblQuizName"_s, u"lblTheStatus"_s}},
        {u"progress"_s, numbered(u"lblQuiz%1Progress"_s, 6) + numbered(u"progressbarQuiz%1"_s, 6)},
        {u"Settings"_s, {u"noRadio"_s, u"yesRadio"_s}},
        {u"Help"_s, {}},
    };
    return all;
}

// The main menu.

void Program::openMainMenu(const Then &then) {
    const QString menu = load(u"MainMenu"_s);
    const auto goOn = [this, menu, then](bool) {
        fillMainMenu(menu);
        show(menu);
        if (then) {
            then();
        }
    };
    if (store_.contains(u"firstRun"_s)) {
        goOn(true);
        return;
    }
    seed();
    ask({u"Welcome to Zorvan, this is the main progress screen where you can select quizzes to "
         "take and track your progress."_s,
         {u"OK"_s},
         menu},
        goOn);
}

void Program::seed() {
    write(u"currentTest"_s, u"0"_s);
    for (const QString &key : numbered(u"quiz%1"_s, quizCount)) {
        write(key, u"0"_s);
    }
    write(u"currentStatus"_s, u"0"_s);
    write(u"firstRun"_s, u"false"_s);
}

std::optional<int> Program::passCount(const QString &id) const {
    static const QStringList counts{u"0"_s, u"1"_s, u"2"_s, u"3"_s};
    const qsizetype count = counts.indexOf(store_.value(u"quiz"_s + id));
    return count < 0 ? std::nullopt : std::optional(int(count));
}

void Program::fillMainMenu(const QString &menu) {
    int sum = 0;
    for (int quiz = 1; quiz <= quizCount; ++quiz) {
        const int passes = passCount(QString::number(quiz)).value_or(0);
        control(menu, u"progressbarQuiz%1"_s.arg(quiz)).value = passes;
        sum += passes;
    }
    control(menu, u"progressbarMain"_s).value = sum;
}

void Program::startQuiz(const QString &id) {
    write(u"currentTest"_s, id);
    openQuiz();
}

// The other windows.

void Program::openProgress() {
    static const QStringList percentages{u"0%"_s, u"33%"_s, u"67%"_s, u"100%"_s};
    const QString window = load(u"progress"_s);
    for (int quiz = 1; quiz <= 6; ++quiz) {
        const int passes = passCount(QString::number(quiz)).value_or(0);
        control(window, u"lblQuiz%1Progress"_s.arg(quiz)).text = percentages.at(passes);
        control(window, u"progressbarQuiz%1"_s.arg(quiz)).value = passes;
    }
    show(window);
}

void Program::openSettings() {
    const QString window = load(u"Settings"_s);
    showTimed(window, store_.value(u"timedQuizzes"_s) == u"yes");
    show(window);
}

void Program::showTimed(const QString &settings, bool timed) {
    control(settings, u"yesRadio"_s).on = timed;
    control(settings, u"noRadio"_s).on = !timed;
}

void Program::resetProgress(const QString &settings) {
    ask({u"This will reset all progress. Are you sure you want to clear your progress?"_s,
         {u"Yes"_s, u"No"_s},
         settings},
        [this, settings](bool yes) {
            if (yes) {
                seed();
                happened(countOpen(u"MainTest"_s) > 0 ? u"cleared during a quiz"_s : u"cleared"_s);
                ask({u"All progress on quizzes has been reset"_s, {u"OK"_s}, settings},
                    [](bool) {});
            }
        });
}

void Program::openResults(const Then &then) {
    const QString results = load(u"QuizComplete"_s);
    fillResults(results);
    openMainMenu([this, results, then] {
        show(results);
        then();
    });
}

void Program::fillResults(const QString &results) {
    const QString id = store_.value(u"currentTest"_s);
    log_ << store_.value(u"currentTest"_s, u"(null)"_s);
    const Quiz *quiz = quizOf(id);
    if (quiz == nullptr) {
        happened(u"results of no quiz"_s);
        return;
    }
    control(results, u"lblQuizName"_s).text = quiz->name;
    const std::optional<int> passes = passCount(id);
    if (!passes) {
        happened(u"results without a pass count"_s);
        return;
    }
    for (int mark = 1; mark <= 3; ++mark) {
        control(results, u"theImage%1"_s.arg(mark)).image =
            mark <= *passes ? u"checkmark.png"_s : u"blankcheckmark.png"_s;
    }
    static const QStringList passed{
        u"Congratulations you have passed this quiz."_s,
        u"Congratulations you have passed this quiz. Only two more passes needed to have this "
        "quiz mastered."_s,
        u"Congratulations you have passed this quiz. Only one more pass needed to have this quiz "
        "mastered."_s,
        u"Congratulations you MASTERED this quiz."_s};
    control(results, u"lblTheStatus"_s).text =
        store_.value(u"currentStatus"_s) == u"pass"
            ? passed.at(*passes)
            : u"Unfortunately you did not pass the quiz this time. Please try again."_s;
}

}  // namespace model
