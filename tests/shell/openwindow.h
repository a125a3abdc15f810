#pragma once

#include "quizrun/quizrun.h"
#include "shell/appdelegate.h"
#include "shell/learner.h"
#include "shell/mainmenu.h"
#include "support/store.h"

/// Windows of each kind, opened as a learner opens them.
namespace openwindow {

/// The layouts that have a window of their own, and the one of the way back.
inline const QStringList layouts{QStringLiteral("MainMenu"),     QStringLiteral("MainTest"),
                                 QStringLiteral("QuizComplete"), QStringLiteral("progress"),
                                 QStringLiteral("Settings"),     QStringLiteral("Help"),
                                 QStringLiteral("MainLayout")};

/// Opens a window of that layout, starting from no window at all, and gives the newest of them.
/// For the way back every window has to be closed, and the event loop be given its turn.
inline platform::Window *open(const QString &layout, AppDelegate &delegate) {
    delegate.ShowMainMenu();
    platform::Window *menu = delegate.theMainMenu->window();
    if (layout == u"MainTest") {
        learner::press(menu, QStringLiteral("goTest5"));
    } else if (layout == u"QuizComplete") {
        learner::press(menu, QStringLiteral("goTest5"));
        learner::finishStructure(desk::window(QStringLiteral("MainTest")), true);
    } else if (layout == u"progress") {
        learner::press(menu, QStringLiteral("showProgress"));
    } else if (layout == u"Settings") {
        learner::press(menu, QStringLiteral("showPreferences"));
    } else if (layout == u"Help") {
        learner::pick(menu, QStringLiteral("ShowHelp"));
    } else if (layout == u"MainLayout") {
        menu->close();
        QCoreApplication::processEvents();
    } else {
        return menu;
    }
    return desk::window(layout);
}

}  // namespace openwindow
