#include "monkey/walk.h"

#include <QApplication>
#include <QTimer>
#include <QWindow>

#include "monkey/comparison.h"
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

Walk::Walk(quint32 seed, int steps, bool verbose)
    : steps_(steps), journal_(seed, verbose), dice_(seed) {
    journal_.describeWith([this] { return lookout_.state(); });
}

void Walk::run() {
    while (journal_.step() < steps_) {
        runSession();
    }
}

QStringList Walk::missing() const {
    QStringList missing = model::Program::events();
    missing.removeIf([this](const QString &event) { return happened_.contains(event); });
    return missing;
}

void Walk::runSession() {
    world_.prepareStore();
    const bool small = dice_.oneIn(4);
    liveprogram::chooseScreen(small);
    journal_.say(u"starts the program on a %1 screen"_s.arg(small ? u"small"_s : u"large"_s));
    // The program and its model shuffle alike.
    const quint32 seed = dice_.number();
    QRandomGenerator random(seed);
    program_ = std::make_unique<LiveProgram>([&random] { return random.generate(); });
    beginModel(seed);
    const QList<QObject *> observers{this, &alertAnswers_, &menus_, &seam_};
    for (QObject *observer : observers) {
        qApp->installEventFilter(observer);
    }
    program_->open();
    intents_.forget();
    hands_.forgetWindows();

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

    for (QObject *observer : observers) {
        qApp->removeEventFilter(observer);
    }
    for (const QPointer<platform::Window> &window : platform::Window::onScreen()) {
        window->closeUnasked();
    }
    const QList<QPointer<QObject>> objects = program_->objects();
    program_.reset();
    lookout_.checkNothingIsLeft(objects);
    const QStringList errors = journal_.takeErrors();
    journal_.want(errors.isEmpty(), u"on standard error: "_s + errors.join(u'\n'), u"nothing"_s);
}

void Walk::beginModel(quint32 seed) {
    static const model::Program::Layouts layouts = comparison::layouts();
    store::forgetWrites();
    seam_.begin(std::make_unique<model::Program>(
        layouts, [random = QRandomGenerator(seed)]() mutable { return random.generate(); },
        store::contents()));
}

bool Walk::takeStep(const std::function<void()> &step) {
    journal_.nextStep();
    seam_.expect(Seam::Closing::Nothing);
    const int result = eventloop::run(step);
    journal_.want(result != eventloop::Hung, u"the event loop did not come back"_s,
                  u"a step that ends"_s);
    liveprogram::settle();
    compare();
    const bool runs = result == eventloop::StillRunning;
    journal_.want(runs != seam_.model().hasEnded(),
                  runs ? u"the program goes on"_s : u"the program has ended"_s,
                  u"the same as in the model"_s);
    if (runs) {
        hands_.activateLikeAWindowManager();
        lookout_.check(*program_);
    }
    return runs;
}

void Walk::compare() {
    QStringList differences = comparison::differences(seam_, journal_.takeErrors());
    if (seam_.model().alert()) {
        differences << u"the alert \"%1\" did not come"_s.arg(seam_.model().alert()->message);
    }
    journal_.want(differences.isEmpty(), differences.join(u'\n'), u"the same as in the model"_s);
    for (const QString &event : seam_.model().takeEvents()) {
        happened_ << event;
    }
}

bool Walk::eventFilter(QObject *watched, QEvent *event) {
    switch (event->type()) {
        case QEvent::Show:
            if (qobject_cast<platform::Window *>(watched) != nullptr &&
                watched->objectName() == u"MainTest") {
                intents_.quizAppears();
            }
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
