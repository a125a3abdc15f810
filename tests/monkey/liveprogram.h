#pragma once

#include <array>
#include <cstdio>
#include <memory>
#include <mutex>
#include <unordered_set>

#include <QCoreApplication>
#include <QMap>
#include <QObject>
#include <QStringList>
#include <QTemporaryDir>

#include "content/shuffle.h"
#include "progress/progress.h"
#include "progress/quizcomplete.h"
#include "quizrun/maintest.h"
#include "quizrun/quizrun.h"
#include "resources/resources.h"
#include "shell/appdelegate.h"
#include "shell/controllertable.h"
#include "shell/help.h"
#include "shell/mainmenu.h"
#include "shell/settingscontroller.h"
#include "support/desk.h"
#include "support/eventloop.h"
#include "support/store.h"
#include "system/runtimefolder.h"
#include "windowing/application.h"
#include "windowing/windowcontroller.h"

/// Qt calls the functions in this table when an object is created or destroyed.
// NOLINTNEXTLINE(*-avoid-c-arrays, *-avoid-non-const-global-variables): it is Qt's
extern quintptr Q_CORE_EXPORT qtHookData[];

/// All QObjects that exist.
class LiveObjects final {
 public:
    /// Has to be called before the first object is created.
    static void watch() {
        constexpr int addHook = 3;
        constexpr int removeHook = 4;
        qtHookData[addHook] = reinterpret_cast<quintptr>(&added);
        qtHookData[removeHook] = reinterpret_cast<quintptr>(&removed);
    }

    template <class Class>
    static QList<Class *> all() {
        QList<Class *> found;
        const std::lock_guard guard(mutex());
        for (QObject *object : objects()) {
            if (auto *wanted = qobject_cast<Class *>(object)) {
                found << wanted;
            }
        }
        return found;
    }

    /// How many objects of each class there are.
    static QMap<QByteArray, int> byClass() {
        QMap<QByteArray, int> counts;
        const std::lock_guard guard(mutex());
        for (const QObject *object : objects()) {
            ++counts[object->metaObject()->className()];
        }
        // These delete themselves, some of them a moment later.
        counts.remove("QSingleShotTimer");
        return counts;
    }

 private:
    static void added(QObject *object) {
        const std::lock_guard guard(mutex());
        objects().insert(object);
    }
    static void removed(QObject *object) {
        const std::lock_guard guard(mutex());
        objects().erase(object);
    }

    // Neither is ever freed: objects are destroyed until the very end of the process.
    // NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables): the hooks have no object
    static std::unordered_set<QObject *> &objects() {
        static auto &objects = *new std::unordered_set<QObject *>;
        return objects;
    }
    static std::mutex &mutex() {
        static auto &mutex = *new std::mutex;
        return mutex;
    }
    // NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)
};

/// Keeps what the process writes to the C library's `stderr` from the terminal. A sanitizer's
/// report still gets there.
class WrittenErrors final {
 public:
    WrittenErrors() : terminal_(stderr) { open(); }
    ~WrittenErrors() {
        close();
        stderr = terminal_;
    }
    WrittenErrors(const WrittenErrors &) = delete;
    WrittenErrors &operator=(const WrittenErrors &) = delete;

    FILE *terminal() const { return terminal_; }

    /// The lines since the last call.
    QStringList take() {
        std::fflush(stderr);
        if (size_ == 0) {
            return {};
        }
        const QString text = QString::fromUtf8(buffer_, qsizetype(size_));
        close();
        open();
        return text.split(u'\n', Qt::SkipEmptyParts);
    }

 private:
    void open() { stderr = open_memstream(&buffer_, &size_); }
    void close() {
        std::fclose(stderr);
        std::free(buffer_);  // NOLINT(cppcoreguidelines-no-malloc): the C library made it
    }

    FILE *terminal_;
    char *buffer_ = nullptr;
    std::size_t size_ = 0;
};

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

    /// The controllers in use: those on screen, and those that a property of the delegate or of
    /// another one in use holds.
    QSet<platform::WindowController *> used(const QList<platform::WindowController *> &live) const {
        QSet<platform::WindowController *> used;
        add(used, delegate_->theMainMenu.get());
        add(used, delegate_->theSettings.get());
        add(used, delegate_->theMainTest.get());
        add(used, delegate_->theHelp.get());
        for (platform::WindowController *controller : live) {
            if (controller->window() != nullptr && controller->window()->isVisible()) {
                add(used, controller);
            }
        }
        return used;
    }

 private:
    static void add(QSet<platform::WindowController *> &used,
                    platform::WindowController *controller) {
        if (controller == nullptr || used.contains(controller)) {
            return;
        }
        used << controller;
        if (const auto *menu = qobject_cast<const MainMenu *>(controller)) {
            add(used, menu->theTestScreen.get());
            add(used, menu->settingsController.get());
            add(used, menu->progressController.get());
        } else if (const auto *quiz = qobject_cast<const MainTest *>(controller)) {
            add(used, quiz->quizComplete.get());
        }
    }

    int argc_ = 1;
    std::array<char, 7> name_ = std::to_array("zorvan");
    std::array<char *, 2> argv_{name_.data(), nullptr};
    platform::Application application_{argc_, argv_.data()};
    std::unique_ptr<AppDelegate> delegate_ = std::make_unique<AppDelegate>();
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

/// Does what the main function does before it creates the application, with a store of its own.
inline void prepare(const QTemporaryDir &home) {
    qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
    platform::provideRuntimeFolder();
    installResources();
    fillControllerTable();
    LiveObjects::watch();
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
