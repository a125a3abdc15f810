#pragma once

#include "quizrun/quizrun.h"
#include "shell/mainmenu.h"
#include "support/learner.h"
#include "support/windowtest.h"

/// A test of the whole program, with windows of each kind opened as a learner opens them.
class ShellTest : public ProgramTest {
    Q_OBJECT

 protected:
    /// Adds a test row for each layout.
    static void layoutRows() {
        QTest::addColumn<QString>("layout");
        for (const char *layout : {"MainMenu", "MainTest", "QuizComplete", "progress", "Settings",
                                   "Help", "MainLayout"}) {
            QTest::newRow(layout) << QString::fromLatin1(layout);
        }
    }

    /// Opens a window of that layout by way of the main menu; ends the test program if none opens.
    /// The way back, "MainLayout", needs every other window closed.
    platform::Window *open(const QString &layout) {
        delegate_->ShowMainMenu();
        platform::Window *menu = delegate_->theMainMenu->window();
        if (layout == u"MainMenu") {
            return menu;
        }
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
        } else {
            menu->close();
            QCoreApplication::processEvents();
        }
        platform::Window *window = desk::window(layout);
        if (window == nullptr) {
            qFatal("No window \"%s\" opens", qUtf8Printable(layout));
        }
        return window;
    }

    /// The titles of the windows on screen, in the order in which they were opened.
    static QStringList openWindows() {
        QStringList titles;
        for (const QPointer<platform::Window> &window : platform::Window::onScreen()) {
            titles << window->windowTitle();
        }
        return titles;
    }
};
