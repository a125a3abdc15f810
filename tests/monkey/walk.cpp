#include "monkey/walk.h"

#include <QApplication>
#include <QMenu>
#include <QTimer>
#include <QWindow>

#include "controls/messagebox.h"
#include "monkey/comparison.h"
#include "monkey/lookout.h"
#include "support/eventloop.h"
#include "support/store.h"

using namespace Qt::StringLiterals;

namespace {

/// Whether it drives a clock: nothing else in the program repeats every second.
bool ticks(const QObject *object) {
    const auto *timer = qobject_cast<const QTimer *>(object);
    return timer != nullptr && !timer->isSingleShot() && timer->interval() == 1000;
}

}  // namespace

void Walk::run() {
    while (journal_.step() < steps_) {
        runSession();
    }
}

QStringList Walk::missing() const {
    QStringList missing = model::Program::events();
    missing.removeIf([this](const QString &event) { return met_.contains(event); });
    return missing;
}

void Walk::runSession() {
    openProgram();
    bool runs = takeStep([this] {
        seam_.model().start();
        program_->delegate().applicationDidFinishLaunching();
    });
    if (runs && dice_.oneIn(2)) {
        // No quiz has been asked in this session yet.
        runs = takeStep([this] { choice_.openQuizOfStore(program_->delegate()); });
    }
    while (runs && journal_.step() < steps_) {
        runs = takeStep([this] { choice_.take(program_->delegate()); });
    }
    endProgram();
}

void Walk::openProgram() {
    choice_.begin();
    const bool small = dice_.oneIn(4);
    liveprogram::chooseScreen(small);
    journal_.say(u"starts the program on a %1 screen"_s.arg(small ? u"small"_s : u"large"_s));
    // The program and its model shuffle alike.
    const auto random = [generator = QRandomGenerator(dice_.number())]() mutable {
        return generator.generate();
    };
    program_ = std::make_unique<LiveProgram>(random);
    static const model::Program::Layouts layouts = comparison::layouts();
    store::forgetWrites();
    seam_.begin(std::make_unique<model::Program>(layouts, random, store::contents()));
    qApp->installEventFilter(this);
    qApp->installEventFilter(&seam_);
    program_->open();
}

void Walk::endProgram() {
    qApp->removeEventFilter(this);
    qApp->removeEventFilter(&seam_);
    for (const QPointer<platform::Window> &window : platform::Window::onScreen()) {
        window->closeUnasked();
    }
    met_ += seam_.model().met();
    const QList<QPointer<QObject>> objects = program_->objects();
    program_.reset();
    journal_.wantNone(lookout::remains(objects));
    journal_.wantNone(journal_.takeErrors());
}

bool Walk::takeStep(const std::function<void()> &step) {
    journal_.nextStep();
    seam_.expect(Seam::Closing::Nothing);
    const int result = eventloop::run(step);
    journal_.want(result != eventloop::Hung, u"the event loop did not come back"_s);
    liveprogram::settle();
    journal_.wantNone(comparison::differences(seam_, journal_.takeErrors()));
    const bool runs = result == eventloop::StillRunning;
    journal_.want(runs != seam_.model().hasEnded(),
                  runs ? u"the program goes on"_s : u"the program has ended"_s);
    if (runs) {
        choice_.activateLikeAWindowManager();
        journal_.wantNone(lookout::faults(*program_));
    }
    return runs;
}

void Walk::appears(QObject *shown) {
    if (auto *box = qobject_cast<platform::MessageBox *>(shown); box != nullptr && box->isModal()) {
        QTimer::singleShot(0, box, [this, box] { choice_.answer(*box); });
    } else if (auto *menu = qobject_cast<QMenu *>(shown)) {
        QTimer::singleShot(0, menu, [this, menu] { choice_.leaveIfBlocking(*menu); });
    } else if (qobject_cast<platform::Window *>(shown) != nullptr &&
               shown->objectName() == u"MainTest") {
        choice_.quizAppears();
    }
}

bool Walk::eventFilter(QObject *watched, QEvent *event) {
    switch (event->type()) {
        case QEvent::Show:
            appears(watched);
            break;
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseButtonRelease:
            // If the first click of two closes the window, the desktop sends the second elsewhere.
            if (const auto *window = qobject_cast<const QWindow *>(watched)) {
                return !window->isVisible();
            }
            break;
        case QEvent::Timer:
            // Time passes only by steps: with real time, no walk could be repeated.
            return ticks(watched);
        default:
            break;
    }
    return false;
}
