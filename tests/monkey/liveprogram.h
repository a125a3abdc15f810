#pragma once

#include <array>
#include <memory>

#include <QCoreApplication>
#include <QStringList>

#include "content/shuffle.h"
#include "monkey/livecontrollers.h"
#include "quizrun/quizrun.h"
#include "resources/resources.h"
#include "shell/appdelegate.h"
#include "shell/controllertable.h"
#include "support/desk.h"
#include "support/store.h"
#include "system/runtimefolder.h"
#include "windowing/application.h"

/// The program as its main function sets it up, before its first window. A process can run
/// several, one after another.
class LiveProgram final {
 public:
    explicit LiveProgram(content::RandomSource random) { quizRun().random = std::move(random); }
    ~LiveProgram() {
        delegate_.reset();
        // Outside the tests the attempt ends with the process.
        quizRun() = QuizRun();
    }
    LiveProgram(const LiveProgram &) = delete;
    LiveProgram &operator=(const LiveProgram &) = delete;

    /// Loads the menu bar.
    void open() { application_.loadMainLayout(*delegate_); }

    AppDelegate &delegate() { return *delegate_; }

    const LiveControllers &controllers() const { return controllers_; }

    /// The controllers, and all widgets.
    QList<QPointer<QObject>> objects() const {
        QList<QPointer<QObject>> objects;
        const LiveControllers::Controllers controllers = controllers_.all();
        for (platform::WindowController *controller : controllers) {
            objects << controller;
        }
        for (QWidget *widget : QApplication::allWidgets()) {
            objects << widget;
        }
        return objects;
    }

 private:
    int argc_ = 1;
    std::array<char, 7> name_ = std::to_array("zorvan");
    std::array<char *, 2> argv_{name_.data(), nullptr};
    platform::Application application_{argc_, argv_.data()};
    std::unique_ptr<AppDelegate> delegate_ = std::make_unique<AppDelegate>();
    LiveControllers controllers_{*delegate_};
};

namespace liveprogram {

/// Offscreen, unless the environment chooses a platform. No window fits on the small screen.
inline void chooseScreen(bool small) {
    static const bool asked = qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
    if (!asked) {
        const QByteArray screen = small ? "smallscreen.json" : "screen.json";
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" SCREENS "/" + screen);
    }
}

/// Does what the main function does before it creates the application.
inline void prepare() {
    platform::provideRuntimeFolder();
    installResources();
    fillControllerTable();
}

/// The command line, for use before there is an application.
inline QStringList arguments(int argc, char **argv) {
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments << QString::fromLocal8Bit(argv[i]);
    }
    return arguments;
}

/// Frees what is no longer held, and what that held in turn.
inline void settle() {
    for (int depth = 0; depth < 4; ++depth) {
        QCoreApplication::processEvents();
        desk::freeUnused();
    }
}

}  // namespace liveprogram
