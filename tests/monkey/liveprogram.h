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
#include "shell/eventloop.h"
#include "shell/help.h"
#include "shell/mainmenu.h"
#include "shell/settingscontroller.h"
#include "support/desk.h"
#include "support/store.h"
#include "system/runtimefolder.h"
#include "windowing/application.h"
#include "windowing/windowcontroller.h"

/// The toolkit calls whoever stands in this table as objects come and go.
// NOLINTNEXTLINE(*-avoid-c-arrays, *-avoid-non-const-global-variables): it is the toolkit's
extern quintptr Q_CORE_EXPORT qtHookData[];

/// Every object of the toolkit that lives.
class LiveObjects final {
 public:
    /// To be called before the first object is made.
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

    /// How many there are of each class.
    static QMap<QByteArray, int> byClass() {
        QMap<QByteArray, int> counts;
        const std::lock_guard guard(mutex());
        for (const QObject *object : objects()) {
            ++counts[object->metaObject()->className()];
        }
        // They go by themselves, some of them a moment later.
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

    // Neither is ever freed: objects go until the very end of the process.
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

/// What the process writes through the C library's `stderr`, held back from the terminal. What a
/// sanitizer writes goes there all the same.
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

/// The program as its main function makes it, before its first window. One after the other may
/// live in a process.
class LiveProgram final {
 public:
    explicit LiveProgram(content::RandomSource random) {
        quizRun().random = std::move(random);
        application_.loadMainLayout(*delegate_);
    }
    ~LiveProgram() {
        delegate_.reset();
        // With the process it would end here.
        quizRun() = QuizRun();
    }
    LiveProgram(const LiveProgram &) = delete;
    LiveProgram &operator=(const LiveProgram &) = delete;

    AppDelegate &delegate() { return *delegate_; }

    /// The controllers that somebody has a use for: those on screen and those that a property of
    /// theirs holds.
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

/// Offscreen, unless it is asked to be seen. The small screen is one
/// that no window fits on.
inline void chooseScreen(bool small) {
    static const bool asked = qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
    if (!asked) {
        const QByteArray screen = small ? "smallscreen.json" : "screen.json";
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" SCREENS "/" + screen);
    }
}

/// What the main function does before there is an application, on a store of its own.
inline void prepare(const QTemporaryDir &home) {
    qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
    platform::provideRuntimeFolder();
    installResources();
    fillControllerTable();
    LiveObjects::watch();
}

/// A command line, before there is an application.
inline QStringList arguments(int argc, char **argv) {
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments << QString::fromLocal8Bit(argv[i]);
    }
    return arguments;
}

/// Frees what nobody holds any more, and what that held.
inline void settle() {
    for (int depth = 0; depth < 4; ++depth) {
        QCoreApplication::processEvents();
        desk::freeUnused();
    }
}

}  // namespace liveprogram
