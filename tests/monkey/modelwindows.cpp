#include <array>

#include "monkey/model.h"

using namespace Qt::StringLiterals;

namespace model {

namespace {

constexpr int quizCount = 7;

const std::array quizNames{u"Terminology"_s, u"Variables"_s, u"Methods"_s,  u"Functions"_s,
                           u"Structure"_s,   u"Syntax"_s,    u"Main Test"_s};

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
        {u"progress"_s, numbered(u"lblQuiz%1Progress"_s, 6)},
        {u"Settings"_s, {u"noRadio"_s, u"yesRadio"_s}},
        {u"Help"_s, {}},
    };
    return all;
}

// The main menu.

void Program::openMainMenu(const Then &then) {
    const QString menu = load(u"MainMenu"_s);
    firstRunCheck(menu, [this, menu, then] {
        fillMainMenu(menu);
        show(menu);
        if (then) {
            then();
        }
    });
}

void Program::firstRunCheck(const QString &menu, const Then &then) {
    if (store_.contains(u"firstRun"_s)) {
        then();
        return;
    }
    seed();
    ask({u"Welcome to Zorvan, this is the main progress screen where you can select quizzes to "
         "take and track your progress."_s,
         {u"OK"_s},
         menu},
        [then](bool) { then(); });
}

void Program::seed() {
    write(u"currentTest"_s, u"0"_s);
    for (const QString &key : numbered(u"quiz%1"_s, quizCount)) {
        write(key, u"0"_s);
    }
    write(u"currentStatus"_s, u"0"_s);
    write(u"firstRun"_s, u"false"_s);
}

int Program::passLevel(int quiz) const {
    static const QStringList counts{u"0"_s, u"1"_s, u"2"_s, u"3"_s};
    const QString key = u"quiz%1"_s.arg(quiz);
    return store_.contains(key) ? qMax(0, int(counts.indexOf(store_[key]))) : 0;
}

void Program::fillMainMenu(const QString &menu) {
    int sum = 0;
    for (int quiz = 1; quiz <= quizCount; ++quiz) {
        control(menu, u"progressbarQuiz%1"_s.arg(quiz)).value = passLevel(quiz);
        sum += passLevel(quiz);
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
        control(window, u"lblQuiz%1Progress"_s.arg(quiz)).text = percentages.at(passLevel(quiz));
    }
    show(window);
}

void Program::openSettings() {
    const QString window = load(u"Settings"_s);
    const bool timed = store_.value(u"timedQuizzes"_s) == u"yes";
    control(window, u"yesRadio"_s).on = timed;
    control(window, u"noRadio"_s).on = !timed;
    show(window);
}

void Program::openHelp() {
    show(load(u"Help"_s));
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
    const int quiz = int(numbered(u"%1"_s, quizCount).indexOf(id)) + 1;
    if (quiz == 0) {
        happened(u"results of no quiz"_s);
        return;
    }
    control(results, u"lblQuizName"_s).text = quizNames.at(std::size_t(quiz - 1));
    const QString count = store_.value(u"quiz"_s + id);
    if (!QStringList{u"0"_s, u"1"_s, u"2"_s, u"3"_s}.contains(count)) {
        happened(u"results without a pass count"_s);
        return;
    }
    const int passes = count.toInt();
    for (int mark = 1; mark <= 3; ++mark) {
        control(results, u"theImage%1"_s.arg(mark)).image =
            mark <= passes ? u"checkmark.png"_s : u"blankcheckmark.png"_s;
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
            ? passed.at(passes)
            : u"Unfortunately you did not pass the quiz this time. Please try again."_s;
}

}  // namespace model
