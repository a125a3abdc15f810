#pragma once

#include <functional>

#include <QMap>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QToolTip>

#include "progress/progress.h"
#include "progress/quizcomplete.h"
#include "quizrun/maintest.h"
#include "quizrun/quizrun.h"
#include "shell/help.h"
#include "shell/mainmenu.h"
#include "shell/settingscontroller.h"
#include "support/alerts.h"
#include "support/desk.h"
#include "support/store.h"
#include "windowing/alert.h"
#include "windowing/application.h"
#include "windowing/controllers.h"

/// Every window in every state in which it looks different.
namespace states {

using Look = std::function<void(QWidget &)>;
/// Opens a window, has it looked at, and closes it.
using State = std::function<void(const Look &)>;

inline void nothing(QWidget &) {}

/// The message box on screen; ends the test program if there is none.
inline QWidget &shownBox() {
    for (QWidget *box : QApplication::topLevelWidgets()) {
        if (box->isVisible() && qobject_cast<QMessageBox *>(box) != nullptr) {
            return *box;
        }
    }
    qFatal("No box is on screen");
}

inline void settle(QWidget &window) {
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

/// The main test, in the middle, with that question.
inline State quiz(const QString &question, const Look &prepare = nothing,
                  const QString &timed = QStringLiteral("no")) {
    store::Contents contents = store::seeded();
    contents[QStringLiteral("currentTest")] = QStringLiteral("7");
    contents[QStringLiteral("timedQuizzes")] = timed;
    return window<MainTest>(QStringLiteral("MainTest"), contents, [=](QWidget &window) {
        if (quizRun().quizTimer) {
            quizRun().quizTimer->fire();
            // From here on the time stands still.
            quizRun().quizTimer.reset();
        }
        quizRun().questionOrder[11] = question;
        quizRun().questionIndex = 11;
        quizRun().correctCount = 8;
        desk::click(&window, QStringLiteral("btnNextQuestion"));
        prepare(window);
    });
}

inline Look focused(const char *name) {
    return [=](QWidget &window) {
        desk::control(&window, QString::fromLatin1(name)).setFocus(Qt::TabFocusReason);
    };
}

inline Look hovered(const char *name) {
    return [=](QWidget &window) {
        const QWidget &button = desk::control(&window, QString::fromLatin1(name));
        const QPoint spot = button.mapTo(&window, button.rect().center());
        QTest::mouseMove(window.windowHandle(), spot - QPoint(1, 1));
        QTest::mouseMove(window.windowHandle(), spot);
        if (!QTest::qWaitFor([&] { return button.parentWidget()->underMouse(); })) {
            qFatal("%s is not hovered", name);
        }
    };
}

inline Look pressed(const char *name) {
    return [=](QWidget &window) {
        hovered(name)(window);
        desk::control<QAbstractButton>(&window, QString::fromLatin1(name)).setDown(true);
    };
}

inline Look answered(int rightAnswer) {
    return [=](QWidget &window) {
        quizRun().correctAnswerNumber = rightAnswer;
        desk::click(&window, QStringLiteral("btnAnswer1"));
    };
}

inline void scrolledHalfway(QWidget &window) {
    QScrollBar &bar =
        *desk::control<QScrollArea>(&window, QStringLiteral("scrollArea")).verticalScrollBar();
    bar.setValue(bar.maximum() / 2);
}

inline State results(int passes, const QString &status) {
    store::Contents contents = store::seeded();
    contents[QStringLiteral("currentTest")] = QStringLiteral("2");
    contents[QStringLiteral("currentStatus")] = status;
    contents[QStringLiteral("quiz2")] = QString::number(passes);
    return window<QuizComplete>(QStringLiteral("QuizComplete"), contents);
}

inline State settings(const QString &timed) {
    store::Contents contents = store::seeded();
    contents[QStringLiteral("timedQuizzes")] = timed;
    return window<SettingsController>(QStringLiteral("Settings"), contents);
}

inline void wayBack(const Look &look) {
    store::fill(store::seeded());
    platform::openWindow(QStringLiteral("MainMenu"));
    desk::clear();
    platform::Window &window = *desk::window(QStringLiteral("MainLayout"));
    settle(window);
    look(window);
}

inline State openMenu(int number) {
    return [=](const Look &look) {
        store::fill(store::seeded());
        const auto controller = platform::makeController<MainMenu>(QStringLiteral("MainMenu"));
        controller->showWindow();
        settle(*controller->window());
        QMenuBar &bar = *controller->window()->menuBar();
        QAction *item = bar.actions().at(number);
        bar.setActiveAction(item);
        if (!QTest::qWaitForWindowExposed(item->menu())) {
            qFatal("The menu does not open");
        }
        item->menu()->setActiveAction(item->menu()->actions().constFirst());
        look(*controller->window());
        look(*item->menu());
        item->menu()->close();
        desk::clear();
    };
}

inline void toolTip(const Look &look) {
    window<MainMenu>(QStringLiteral("MainMenu"), store::seeded(), [&](QWidget &window) {
        QToolTip::showText(window.geometry().center(), QStringLiteral("Show the passes"), &window);
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (widget->isVisible() && widget->inherits("QTipLabel")) {
                look(*widget);
                QToolTip::hideText();
                return;
            }
        }
        qFatal("No tool tip is on screen");
    })(nothing);
}

inline void about(const Look &look) {
    window<MainMenu>(QStringLiteral("MainMenu"), store::seeded(), [&](QWidget &) {
        platform::Application::shared().about();
        QWidget &box = shownBox();
        settle(box);
        look(box);
        box.close();
    })(nothing);
}

inline State alert(const QString &message, const QString &button, const QString &alternate = {}) {
    return [=](const Look &look) {
        window<MainMenu>(QStringLiteral("MainMenu"), store::seeded(), [&](QWidget &) {
            Alerts alerts;
            alerts.answer(button, [&] {
                settle(shownBox());
                look(shownBox());
            });
            platform::Alert(message, {.defaultButton = button, .alternateButton = alternate})
                .runModal(nullptr);
        })(nothing);
    };
}

/// All states by name. The main layout has to be loaded.
inline QMap<QString, State> all() {
    store::Contents mixed = store::seeded();
    store::Contents full = store::seeded();
    for (int quiz = 1; quiz <= 7; ++quiz) {
        mixed[QStringLiteral("quiz%1").arg(quiz)] = QString::number(quiz % 4);
        full[QStringLiteral("quiz%1").arg(quiz)] = QStringLiteral("3");
    }
    const QString mainMenu = QStringLiteral("MainMenu");
    const QString yes = QStringLiteral("yes");
    return {
        {QStringLiteral("main menu, fresh"), window<MainMenu>(mainMenu, store::seeded())},
        {QStringLiteral("main menu, mixed"), window<MainMenu>(mainMenu, mixed)},
        {QStringLiteral("main menu, full"), window<MainMenu>(mainMenu, full)},
        {QStringLiteral("main menu, row focused"),
         window<MainMenu>(mainMenu, mixed, focused("btnQuiz3"))},
        {QStringLiteral("main menu, row hovered"),
         window<MainMenu>(mainMenu, mixed, hovered("btnQuiz4"))},
        {QStringLiteral("main menu, row pressed"),
         window<MainMenu>(mainMenu, mixed, pressed("btnQuiz7"))},
        {QStringLiteral("quiz, short question"), quiz(QStringLiteral("1"))},
        {QStringLiteral("quiz, code"), quiz(QStringLiteral("59"))},
        {QStringLiteral("quiz, two answers"), quiz(QStringLiteral("48"))},
        {QStringLiteral("quiz, timed"), quiz(QStringLiteral("56"), nothing, yes)},
        {QStringLiteral("quiz, row hovered"), quiz(QStringLiteral("1"), hovered("btnAnswer2"))},
        {QStringLiteral("quiz, row pressed"), quiz(QStringLiteral("1"), pressed("btnAnswer2"))},
        {QStringLiteral("quiz, right"), quiz(QStringLiteral("56"), answered(1))},
        {QStringLiteral("quiz, wrong"), quiz(QStringLiteral("56"), answered(2))},
        {QStringLiteral("results, pass"), results(2, QStringLiteral("pass"))},
        {QStringLiteral("results, mastered"), results(3, QStringLiteral("pass"))},
        {QStringLiteral("results, fail"), results(0, QStringLiteral("fail"))},
        {QStringLiteral("progress"), window<progress>(QStringLiteral("progress"), mixed)},
        {QStringLiteral("settings, timed"), settings(yes)},
        {QStringLiteral("settings, untimed"), settings(QStringLiteral("no"))},
        {QStringLiteral("help"), window<Help>(QStringLiteral("Help"), mixed)},
        {QStringLiteral("help, scrolled"),
         window<Help>(QStringLiteral("Help"), mixed, scrolledHalfway)},
        {QStringLiteral("way back"), wayBack},
        {QStringLiteral("open menu"), openMenu(1)},
        {QStringLiteral("tool tip"), toolTip},
        {QStringLiteral("about"), about},
        {QStringLiteral("alert, yes or no"),
         alert(QStringLiteral("Are you sure?"), QStringLiteral("Yes"), QStringLiteral("No"))},
        {QStringLiteral("alert"),
         alert(QStringLiteral("The time is up for this test."), QStringLiteral("OK"))},
    };
}

}  // namespace states
