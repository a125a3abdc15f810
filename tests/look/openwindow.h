#pragma once

#include "quizrun/quizrun.h"
#include "shell/appdelegate.h"
#include "shell/mainmenu.h"
#include "support/learner.h"
#include "support/store.h"

/// Windows of each kind, opened as a learner opens them.
namespace openwindow {

/// The layouts that have windows of their own; the last one is that of the way back.
inline const QStringList layouts{QStringLiteral("MainMenu"),     QStringLiteral("MainTest"),
                                 QStringLiteral("QuizComplete"), QStringLiteral("progress"),
                                 QStringLiteral("Settings"),     QStringLiteral("Help"),
                                 QStringLiteral("MainLayout")};

/// Opens a window of that layout by way of the main menu and returns it. The way back needs every
/// other window closed and a turn of the event loop.
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
