#pragma once

#include <QAccessible>
#include <QMainWindow>

#include "controls/actionrow.h"
#include "controls/levelindicator.h"
#include "quizrun/maintest.h"
#include "quizrun/quizrun.h"
#include "support/desk.h"
#include "support/golden.h"
#include "support/store.h"
#include "windowing/layouts.h"
#include "windowing/windowcontroller.h"

/// Quiz windows as a learner gets and uses them.
namespace quizdesk {

/// Opens a quiz window for that id, which need not be a quiz's.
inline std::shared_ptr<MainTest> open(const QString &quizId) {
    store::set(QStringLiteral("currentTest"), quizId);
    auto quiz = platform::makeController<MainTest>(QStringLiteral("MainTest"));
    quiz->showWindow();
    return quiz;
}

inline std::shared_ptr<MainTest> openTimed(const QString &quizId) {
    store::set(QStringLiteral("timedQuizzes"), QStringLiteral("yes"));
    return open(quizId);
}

/// Presses answer button 1, 2 or 3.
inline void answer(const QWidget *window, int choice) {
    desk::click(window, QStringLiteral("btnAnswer%1").arg(choice));
}

inline void goOn(const QWidget *window) {
    desk::click(window, QStringLiteral("btnNextQuestion"));
}

inline QString questionShown(const QWidget *window) {
    return desk::text(window, QStringLiteral("lblQuestion"));
}

inline void answerRight(const QWidget *window) {
    answer(window, golden::questionReading(questionShown(window)).right);
}

inline void answerWrong(const QWidget *window) {
    answer(window, golden::questionReading(questionShown(window)).right == 1 ? 2 : 1);
}

/// Answers `questions` questions, the first `right` of them correctly, and goes on after each but
/// the last.
inline void answerQuestions(const QWidget *window, int questions, int right) {
    for (int asked = 0; asked < questions; ++asked) {
        if (asked > 0) {
            goOn(window);
        }
        asked < right ? answerRight(window) : answerWrong(window);
    }
}

/// Which of the three answers can be chosen.
inline QList<bool> answersEnabled(const QWidget *window) {
    QList<bool> enabled;
    for (const int answer : {1, 2, 3}) {
        enabled << desk::control(window, QStringLiteral("btnAnswer%1").arg(answer)).isEnabled();
    }
    return enabled;
}

inline const QList<bool> noAnswer{false, false, false};
inline const QList<bool> twoAnswers{true, true, false};
inline const QList<bool> threeAnswers{true, true, true};

inline double level(const QWidget *window) {
    return desk::control<platform::LevelIndicator>(window, QStringLiteral("progressbarMain"))
        .doubleValue();
}

inline double maxLevel(const QWidget *window) {
    return desk::control<platform::LevelIndicator>(window, QStringLiteral("progressbarMain"))
        .maximum();
}

/// The opacity of the three answer texts.
inline QList<double> alphaValues(const QWidget *window) {
    QList<double> values;
    for (const int answer : {1, 2, 3}) {
        values << desk::control<platform::TextLabel>(window,
                                                     QStringLiteral("lblAnswer%1").arg(answer))
                      .alphaValue();
    }
    return values;
}

/// What a screen reader reads of a control.
inline QString spoken(QWidget &control, QAccessible::Text text) {
    return QAccessible::queryAccessibleInterface(&control)->text(text);
}

/// What a screen reader reads of each of the three answers after its name.
inline QStringList answerDescriptions(const QWidget *window) {
    QStringList descriptions;
    for (const int answer : {1, 2, 3}) {
        descriptions << spoken(desk::control(window, QStringLiteral("btnAnswer%1").arg(answer)),
                               QAccessible::Description);
    }
    return descriptions;
}

/// The states of the three answers' rows.
inline QList<platform::RowState> states(const QWidget *window) {
    QList<platform::RowState> states;
    for (const int answer : {1, 2, 3}) {
        states << desk::control<platform::ActionRow>(window,
                                                     QStringLiteral("rowAnswer%1").arg(answer))
                      .state();
    }
    return states;
}

/// The text that the layout gives the label of that name.
inline QString layoutText(const QString &name) {
    QMainWindow untouched;
    platform::layoutNamed(QStringLiteral("MainTest"))(untouched);
    return desk::text(&untouched, name);
}

}  // namespace quizdesk
