#include <array>
#include <cstdio>

#include "monkey/model.h"
#include "support/golden.h"

using namespace Qt::StringLiterals;

namespace model {

namespace {

const std::array quizzes{
    Quiz{u"1"_s, u"Terminology"_s, 1, 14, 14}, Quiz{u"2"_s, u"Variables"_s, 15, 33, 19},
    Quiz{u"3"_s, u"Methods"_s, 34, 43, 10},    Quiz{u"4"_s, u"Functions"_s, 44, 54, 11},
    Quiz{u"5"_s, u"Structure"_s, 55, 61, 7},   Quiz{u"6"_s, u"Syntax"_s, 62, 77, 16},
    Quiz{u"7"_s, u"Main Test"_s, 1, 77, 30},
};

/// As the C library prints it: Qt rounds halves differently.
QString percentage(const char *format, float ratio) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), format, double(ratio * 100));
    return QString::fromLatin1(text.data());
}

}  // namespace

const Quiz *quizOf(const std::optional<QString> &id) {
    const auto *found = std::ranges::find(quizzes, id, &Quiz::id);
    return found == quizzes.end() ? nullptr : found;
}

// The start.

void Program::openQuiz() {
    const QString quiz = load(u"MainTest"_s);
    for (const QString &name : {u"lblTimeLeftLabel"_s, u"lblTimeLeft"_s, u"lblStatus"_s,
                                u"btnNextQuestion"_s, u"imgQuestion"_s}) {
        control(quiz, name).hidden = true;
    }
    run_ = {.questionOrder = run_.questionOrder,
            .minutesLeft = run_.minutesLeft,
            .secondsLeft = run_.secondsLeft,
            .scoreRatio = run_.scoreRatio};
    control(quiz, u"progressbarMain"_s).value = 0;
    if (store_.contains(u"currentTest"_s)) {
        run_.currentTestId = store_[u"currentTest"_s];
    }
    loadCurrentTest(quiz);
    if (store_.value(u"timedQuizzes"_s) == u"yes") {
        startClock(quiz);
    }
    show(quiz);
    if (countOpen(u"MainTest"_s) == 4) {
        happened(u"four quiz windows at once"_s);
    }
}

void Program::loadCurrentTest(const QString &quiz) {
    if (const Quiz *known = quizOf(run_.currentTestId)) {
        control(quiz, u"lblQuizName"_s).text = known->name;
        run_.questionCount = known->questionCount;
        shuffleQuestions(*known);
    } else {
        happened(run_.currentTestId ? u"quiz of an odd id"_s : u"quiz without an id"_s);
        happened(run_.questionOrder.isEmpty() ? u"unknown quiz without questions"_s
                                              : u"unknown quiz with questions left over"_s);
    }
    control(quiz, u"progressbarMain"_s).maximum = run_.questionCount;
    control(quiz, u"lblProgressPercent"_s).text = u"1/%1"_s.arg(run_.questionCount);
    setUpQuestion(quiz);
}

void Program::shuffleQuestions(const Quiz &quiz) {
    QStringList &order = run_.questionOrder;
    order.clear();
    for (int number = quiz.first; number <= quiz.last; ++number) {
        order << QString::number(number);
    }
    for (qsizetype i = 0; i < order.size(); ++i) {
        order.swapItemsAt(i, i + qsizetype(quint64(random_()) % quint64(order.size() - i)));
    }
}

void Program::setUpQuestion(const QString &quiz) {
    if (run_.questionIndex >= run_.questionOrder.size()) {
        happened(u"no question left to show"_s);
        return;
    }
    // Question 74 also comes in the place of the three after it.
    const golden::Question &question =
        golden::question(qMin(74, run_.questionOrder.at(run_.questionIndex).toInt()));
    control(quiz, u"lblQuestion"_s).text = question.text;
    for (int answer = 1; answer <= 3; ++answer) {
        control(quiz, u"lblAnswer%1"_s.arg(answer)).text = question.answers.at(answer - 1);
    }
    if (question.thirdButtonOff) {
        control(quiz, u"btnAnswer3"_s).enabled = false;
    }
    run_.correctAnswerNumber = question.right;
}

// Answers.

void Program::pressInQuiz(const QString &quiz, const QString &action) {
    const bool next = action == u"goNextQuestion";
    const int answer = next ? 0 : action.at(6).digitValue();
    const Control &button =
        control(quiz, next ? u"btnNextQuestion"_s : u"btnAnswer%1"_s.arg(answer));
    if (button.hidden || !button.enabled) {
        object(u"%1 was pressed in %2, whose button is hidden or disabled"_s.arg(action, quiz));
    } else if (next) {
        goOn(quiz);
    } else {
        select(quiz, answer);
    }
}

void Program::select(const QString &quiz, int answer) {
    const int right = run_.correctAnswerNumber;
    for (int each = 1; each <= 3; ++each) {
        control(quiz, u"btnAnswer%1"_s.arg(each)).enabled = false;
    }
    if (right == 0) {
        happened(u"answer without a question"_s);
        return;
    }
    for (int each = 1; each <= 3; ++each) {
        control(quiz, u"lblAnswer%1"_s.arg(each)).alpha = each == right ? 1.0 : 0.5;
    }
    if (clockRuns() && clockOf_ != quiz) {
        happened(u"answer in a quiz while another one's clock runs"_s);
    }
    grade(quiz, answer == right);
}

void Program::grade(const QString &quiz, bool right) {
    Control &status = control(quiz, u"lblStatus"_s);
    status.white = true;
    status.hidden = false;
    status.text = right ? u"correct"_s : u"wrong"_s;
    if (right) {
        ++run_.correctCount;
    }
    run_.scoreRatio = float(run_.correctCount) / float(run_.questionIndex + 1);
    control(quiz, u"lblCorrectPercent"_s).text =
        percentage(right ? "%.0f %%" : "%.0f%%", run_.scoreRatio);
    ++run_.questionIndex;
    if (run_.questionIndex + 1 > run_.questionCount) {
        endQuiz(quiz);
    } else {
        control(quiz, u"btnNextQuestion"_s).hidden = false;
    }
}

void Program::goOn(const QString &quiz) {
    for (int answer = 1; answer <= 3; ++answer) {
        control(quiz, u"lblAnswer%1"_s.arg(answer)).alpha = 1;
        control(quiz, u"btnAnswer%1"_s.arg(answer)).enabled = true;
    }
    Control &status = control(quiz, u"lblStatus"_s);
    status.white = true;
    status.hidden = true;
    control(quiz, u"btnNextQuestion"_s).hidden = true;
    control(quiz, u"imgQuestion"_s).hidden = true;
    control(quiz, u"lblProgressPercent"_s).text =
        u"%1/%2"_s.arg(run_.questionIndex + 1).arg(run_.questionCount);
    run_.progressRatio = float(run_.questionIndex + 1) / float(run_.questionCount);
    control(quiz, u"progressbarMain"_s).value = run_.questionIndex;
    setUpQuestion(quiz);
}

// The clock.

void Program::startClock(const QString &quiz) {
    if (clockRuns()) {
        happened(u"clock replaced by another quiz's"_s);
    }
    control(quiz, u"lblTimeLeft"_s).hidden = false;
    control(quiz, u"lblTimeLeftLabel"_s).hidden = false;
    const int allowance = run_.questionCount * 15;
    run_.minutesLeft = allowance / 60;
    run_.secondsLeft = allowance % 59;
    clockOf_ = quiz;
}

void Program::tick() {
    if (alert_ || !clockRuns()) {
        return;
    }
    if (run_.minutesLeft < 0 || (run_.minutesLeft <= 0 && run_.secondsLeft < 0)) {
        timeIsUp();
        return;
    }
    if (run_.secondsLeft == 0) {
        --run_.minutesLeft;
        run_.secondsLeft = 59;
        if (run_.minutesLeft < 0) {
            return;
        }
    } else if (run_.secondsLeft > 0) {
        --run_.secondsLeft;
    }
    control(clockOf_, u"lblTimeLeft"_s).text =
        u"%1:%2"_s.arg(run_.minutesLeft).arg(run_.secondsLeft, 2, 10, QLatin1Char('0'));
}

void Program::timeIsUp() {
    const QString quiz = std::exchange(clockOf_, {});
    happened(u"attempt timed out"_s);
    ask({u"The time is up for this test."_s, {u"OK"_s}, quiz}, [this, quiz](bool) {
        write(u"currentStatus"_s, u"fail"_s);
        openResults([this, quiz] { close(quiz); });
    });
}

// The end.

void Program::endQuiz(const QString &quiz) {
    clockOf_.clear();
    const auto score = double(float(run_.correctCount) / float(run_.questionCount));
    const bool passed = score > 0.799;
    happened(run_.questionCount == 0
                 ? u"attempt of no questions %1"_s.arg(passed ? u"passed"_s : u"failed"_s)
             : passed ? u"attempt passed"_s
                      : u"attempt failed"_s);
    write(u"currentStatus"_s, passed ? u"pass"_s : u"fail"_s);
    if (passed && quizOf(run_.currentTestId) != nullptr) {
        raisePassCount(*run_.currentTestId);
    }
    // Where there was no id, there is none to write back.
    if (run_.currentTestId) {
        write(u"currentTest"_s, *run_.currentTestId);
    }
    openResults([this, quiz] { close(quiz); });
}

void Program::raisePassCount(const QString &id) {
    const QString key = u"quiz"_s + id;
    const std::optional<int> count = passCount(id);
    if (!count) {
        happened(store_.contains(key) ? u"pass of a quiz with an odd count"_s
                                      : u"pass of a quiz without a count"_s);
    } else if (*count == 3) {
        happened(u"pass of a mastered quiz"_s);
    } else {
        write(key, QString::number(*count + 1));
        if (*count == 2) {
            happened(u"quiz mastered"_s);
        }
    }
}

void Program::askToClose(const QString &quiz, const Then &closed) {
    ask({u"This will end your current progress on this test, would you still like to close this "
         "window?"_s,
         {u"Yes"_s, u"No"_s},
         quiz},
        [this, quiz, closed](bool yes) {
            if (!yes) {
                return;
            }
            happened(clockRuns() && clockOf_ != quiz
                         ? u"attempt abandoned, another one's clock stopped"_s
                         : u"attempt abandoned"_s);
            close(quiz);
            clockOf_.clear();
            if (closed) {
                closed();
            }
        });
}

}  // namespace model
