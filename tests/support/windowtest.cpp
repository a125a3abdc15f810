#include "support/windowtest.h"

#include <QApplication>
#include <QTest>

#include "quizrun/quizrun.h"
#include "resources/resources.h"
#include "shell/controllertable.h"
#include "shell/mainmenu.h"
#include "support/learner.h"
#include "support/pointer.h"
#include "windowing/application.h"

void WindowTest::init() {
    store::fill(store::seeded());
    store::forgetWrites();
    quizRun().random = [] { return 0U; };
    alerts_.emplace();
    pointer::putAside();
}

void WindowTest::cleanup() {
    desk::clear();
    installResources();
    fillControllerTable();
    QApplication::setPalette(palette_);
    QApplication::setFont(font_);
    qApp->setStyleSheet({});
    QVERIFY(alerts_->verify());
}

void ProgramTest::init() {
    WindowTest::init();
    standardError_.emplace();
    delegate_ = std::make_unique<AppDelegate>();
    platform::Application::shared().loadMainLayout(*delegate_);
}

void ProgramTest::cleanup() {
    delegate_.reset();
    standardError_.reset();
    WindowTest::cleanup();
}

void ProgramTest::layoutRows() {
    QTest::addColumn<QString>("layout");
    for (const char *layout :
         {"MainMenu", "MainTest", "QuizComplete", "progress", "Settings", "Help", "MainLayout"}) {
        QTest::newRow(layout) << QString::fromLatin1(layout);
    }
}

platform::Window *ProgramTest::openWindow(const QString &layout) {
    delegate_->ShowMainMenu();
    platform::Window *menu = delegate_->theMainMenu->window();
    if (layout == u"MainMenu") {
        return menu;
    }
    if (layout == u"MainTest") {
        learner::press(menu, QStringLiteral("goTest5"));
    } else if (layout == u"QuizComplete") {
        learner::press(menu, QStringLiteral("goTest5"));
        learner::passStructure(desk::window(QStringLiteral("MainTest")));
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

QStringList ProgramTest::openWindows() {
    QStringList titles;
    for (const QPointer<platform::Window> &window : platform::Window::onScreen()) {
        titles << window->windowTitle();
    }
    return titles;
}
