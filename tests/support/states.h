#pragma once

#include <functional>

#include <QMap>
#include <QMenu>
#include <QMenuBar>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QTimer>

#include "controls/messagebox.h"
#include "progress/progress.h"
#include "progress/quizcomplete.h"
#include "quizrun/maintest.h"
#include "quizrun/quizrun.h"
#include "shell/help.h"
#include "shell/mainmenu.h"
#include "shell/settingscontroller.h"
#include "support/desk.h"
#include "support/pointer.h"
#include "support/store.h"
#include "windowing/alert.h"
#include "windowing/application.h"
#include "windowing/controllers.h"

/// Every window in every state in which it looks different.
namespace states {

using namespace Qt::StringLiterals;

using Look = std::function<void(QWidget &)>;
/// Opens a window, has it looked at, and closes it.
using State = std::function<void(const Look &)>;

inline void nothing(QWidget &) {}

/// The widget of that class that has a window of its own on screen; ends the test program if there
/// is none.
inline QWidget &shownWindow(const char *className) {
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->inherits(className)) {
            return *window;
        }
    }
    qFatal("No %s is on screen", className);
}

inline QString nameOf(const QWidget &widget) {
    return widget.objectName().isEmpty() ? QString::fromLatin1(widget.metaObject()->className())
                                         : widget.objectName();
}

inline void settle(QWidget &window) {
    pointer::putAside();
    window.activateWindow();
    if (!QTest::qWaitForWindowActive(&window)) {
        qFatal("%s does not become active", qUtf8Printable(window.objectName()));
    }
    QCoreApplication::processEvents();
}

template <class Controller>
State window(const QString &layout, const store::Contents &contents,
             const Look &prepare = nothing) {
    return [=](const Look &look) {
        store::fill(contents);
        quizRun().random = [] { return 0U; };
        auto controller = platform::makeController<Controller>(layout);
        controller->showWindow();
        settle(*controller->window());
        prepare(*controller->window());
        QCoreApplication::processEvents();
        look(*controller->window());
        controller.reset();
        desk::clear();
    };
}

/// A store with two quizzes that are mastered, as it is after a timed attempt at that quiz.
inline store::Contents progressAfter(int quiz, const QString &status) {
    store::Contents contents = store::seeded();
    contents[u"quiz1"_s] = u"3"_s;
    contents[u"quiz2"_s] = u"2"_s;
    contents[u"quiz3"_s] = u"1"_s;
    contents[u"quiz5"_s] = u"3"_s;
    contents[u"currentTest"_s] = QString::number(quiz);
    contents[u"currentStatus"_s] = status;
    contents[u"timedQuizzes"_s] = u"yes"_s;
    return contents;
}

inline State mainMenu(const Look &prepare = nothing) {
    return window<MainMenu>(u"MainMenu"_s, progressAfter(1, u"pass"_s), prepare);
}

inline State results(int quiz, const QString &status) {
    return window<QuizComplete>(u"QuizComplete"_s, progressAfter(quiz, status));
}

/// Asks that question as the twelfth of thirty.
inline void ask(int question) {
    quizRun().questionOrder[11] = QString::number(question);
    quizRun().questionIndex = 11;
    quizRun().correctCount = 8;
    desk::click(desk::window(u"MainTest"_s), u"btnNextQuestion"_s);
}

/// The main test, with the clock stopped after its first second.
inline State quiz(const Look &prepare) {
    return window<MainTest>(u"MainTest"_s, progressAfter(7, u"0"_s), [=](QWidget &window) {
        quizRun().quizTimer->fire();
        quizRun().quizTimer.reset();
        prepare(window);
    });
}

inline State quiz(int question, const Look &prepare = nothing) {
    return quiz([=](QWidget &window) {
        ask(question);
        prepare(window);
    });
}

inline Look answered(int answer) {
    return [=](QWidget &window) { desk::click(&window, u"btnAnswer%1"_s.arg(answer)); };
}

inline Look hovered(const char *name) {
    return [=](QWidget &window) {
        pointer::moveTo(*desk::control(&window, QString::fromLatin1(name)).parentWidget());
    };
}

inline Look pressed(const char *name) {
    return [=](QWidget &window) {
        hovered(name)(window);
        desk::control<QAbstractButton>(&window, QString::fromLatin1(name)).setDown(true);
    };
}

inline void scrolledToTheEnd(QWidget &window) {
    QScrollBar &bar = *desk::control<QScrollArea>(&window, u"scrollArea"_s).verticalScrollBar();
    bar.setValue(bar.maximum());
}

inline void wayBack(const Look &look) {
    store::fill(store::seeded());
    platform::openWindow(u"MainMenu"_s);
    desk::clear();
    platform::Window &window = *desk::window(u"MainLayout"_s);
    settle(window);
    look(window);
}

inline void openMenu(const Look &look) {
    mainMenu([&](QWidget &window) {
        auto &bar = *window.findChild<QMenuBar *>();
        QAction *quizzes = bar.actions().at(1);
        bar.setActiveAction(quizzes);
        QMenu &menu = *quizzes->menu();
        if (!QTest::qWaitForWindowExposed(&menu)) {
            qFatal("The menu does not open");
        }
        menu.setActiveAction(menu.actions().constFirst());
        look(window);
        look(menu);
        menu.close();
    })(nothing);
}

inline void about(const Look &look) {
    mainMenu([&](QWidget &) {
        platform::Application::shared().about();
        QWidget &box = shownWindow("platform::MessageBox");
        settle(box);
        look(box);
        box.close();
    })(nothing);
}

inline void alert(const Look &look) {
    mainMenu([&](QWidget &) {
        QTimer::singleShot(0, qApp, [&] {
            QWidget &box = shownWindow("platform::MessageBox");
            settle(box);
            look(box);
            box.close();
        });
        platform::Alert(
            u"This will reset all progress. Are you sure you want to clear your progress?"_s,
            {.defaultButton = u"Yes"_s, .alternateButton = u"No"_s})
            .runModal(nullptr);
    })(nothing);
}

/// All states by name. The main layout has to be loaded.
inline QMap<QString, State> all() {
    store::Contents mastered = store::seeded();
    for (int quiz = 1; quiz <= 7; ++quiz) {
        mastered[u"quiz%1"_s.arg(quiz)] = u"3"_s;
    }
    const store::Contents passed = progressAfter(1, u"pass"_s);
    return {
        {u"main menu, new"_s, window<MainMenu>(u"MainMenu"_s, store::seeded())},
        {u"main menu"_s, mainMenu()},
        {u"main menu, mastered"_s, window<MainMenu>(u"MainMenu"_s, mastered)},
        {u"main menu, next row hovered"_s, mainMenu(hovered("btnQuiz2"))},
        {u"main menu, row pressed"_s, mainMenu(pressed("btnQuiz7"))},
        {u"quiz, short"_s, quiz(nothing)},
        {u"quiz, long"_s, quiz(48)},
        {u"quiz, code"_s, quiz(59)},
        {u"quiz, row hovered"_s, quiz(1, hovered("btnAnswer2"))},
        {u"quiz, row pressed"_s, quiz(1, pressed("btnAnswer2"))},
        {u"quiz, correct"_s, quiz(59, answered(3))},
        {u"quiz, wrong"_s, quiz(56, answered(1))},
        {u"results, pass"_s, results(2, u"pass"_s)},
        {u"results, mastered"_s, results(1, u"pass"_s)},
        {u"results, fail"_s, results(3, u"fail"_s)},
        {u"progress"_s, window<progress>(u"progress"_s, passed)},
        {u"settings"_s, window<SettingsController>(u"Settings"_s, passed)},
        {u"help"_s, window<Help>(u"Help"_s, passed)},
        {u"help, keys"_s, window<Help>(u"Help"_s, passed, scrolledToTheEnd)},
        {u"way back"_s, wayBack},
        {u"open menu"_s, openMenu},
        {u"about"_s, about},
        {u"alert"_s, alert},
    };
}

}  // namespace states
