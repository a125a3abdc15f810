#include "monkey/walk.h"

#include <algorithm>
#include <array>

#include <QAbstractButton>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QStyle>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <QWindow>

#include "support/clocks.h"
#include "support/drawing.h"
#include "windowing/layouts.h"

using namespace Qt::StringLiterals;

using platform::Window;

namespace {

constexpr int mostWindows = 12;

struct KnownAlert {
    QStringView start;
    QStringView name;
    QStringList buttons;
};

const std::array knownAlerts{
    KnownAlert{u"Welcome to Zorvan", u"the greeting", {u"OK"_s}},
    KnownAlert{u"The time is up", u"time is up", {u"OK"_s}},
    KnownAlert{u"This will end your current progress", u"leaving a quiz", {u"Yes"_s, u"No"_s}},
    KnownAlert{u"This will reset all progress", u"clearing", {u"Yes"_s, u"No"_s}},
    KnownAlert{u"All progress on quizzes has been reset", u"cleared", {u"OK"_s}},
};

/// The ways to answer an alert.
const std::array answers{u"mouse"_s, u"Return"_s, u"Escape"_s, u"close"_s, u"Tab, Space"_s};

const std::array shortcuts{
    Qt::CTRL | Qt::Key_0, Qt::CTRL | Qt::Key_1,        Qt::CTRL | Qt::Key_2,
    Qt::CTRL | Qt::Key_3, Qt::CTRL | Qt::Key_4,        Qt::CTRL | Qt::Key_5,
    Qt::CTRL | Qt::Key_6, Qt::CTRL | Qt::Key_7,        Qt::CTRL | Qt::Key_Comma,
    Qt::CTRL | Qt::Key_W, QKeyCombination(Qt::Key_F1),
};

const std::array plainKeys{
    Qt::Key_A,       Qt::Key_B,      Qt::Key_C,        Qt::Key_1,     Qt::Key_2,
    Qt::Key_3,       Qt::Key_0,      Qt::Key_4,        Qt::Key_9,     Qt::Key_Return,
    Qt::Key_Enter,   Qt::Key_Return, Qt::Key_Tab,      Qt::Key_Space, Qt::Key_Tab,
    Qt::Key_Backtab, Qt::Key_Escape, Qt::Key_Up,       Qt::Key_Down,  Qt::Key_Left,
    Qt::Key_Right,   Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Home,  Qt::Key_End,
};

/// Whether it drives a clock: nothing else in the program repeats every second.
bool ticks(const QObject *object) {
    const auto *timer = qobject_cast<const QTimer *>(object);
    return timer != nullptr && !timer->isSingleShot() && timer->interval() == 1000;
}

const std::array idleKeys{
    QKeyCombination(Qt::Key_X),
    QKeyCombination(Qt::Key_F5),
    QKeyCombination(Qt::Key_Insert),
    QKeyCombination(Qt::Key_Shift),
    Qt::CTRL | Qt::Key_K,
    Qt::CTRL | Qt::Key_9,
    Qt::SHIFT | Qt::Key_F1,
    QKeyCombination(Qt::Key_Question),
};

QString nameOf(QKeyCombination key) {
    return QKeySequence(key).toString();
}

QString nameOf(const QWidget &widget) {
    const auto *button = qobject_cast<const QAbstractButton *>(&widget);
    const QString text = button == nullptr ? widget.windowTitle() : button->text();
    return u"%1 \"%2\" %3"_s.arg(QLatin1StringView(widget.metaObject()->className()),
                                 widget.objectName(), text);
}

QString actionOf(const QObject &control) {
    return control.property("action").toString();
}

bool isAlert(const QWidget &window) {
    return qobject_cast<const QMessageBox *>(&window) != nullptr && window.isModal();
}

/// Whether Tab reaches it.
bool takesFocus(const QWidget &widget) {
    return widget.isVisible() && widget.isEnabled() &&
           (widget.focusPolicy() & Qt::TabFocus) != Qt::NoFocus;
}

QList<QWidget *> visibleControls(const QWidget &window) {
    QList<QWidget *> controls;
    for (QWidget *control : window.findChildren<QWidget *>()) {
        if (control->window() == &window && control->isVisible() && control->isEnabled() &&
            !control->visibleRegion().isEmpty()) {
            controls << control;
        }
    }
    return controls;
}

}  // namespace

Walk::Walk(quint32 seed, int steps, bool verbose)
    : seed_(seed), steps_(steps), verbose_(verbose), random_(seed) {}

void Walk::run() {
    while (step_ < steps_) {
        runSession();
    }
}

QString Walk::summary() const {
    return u"%1 steps\n%2"_s.arg(step_).arg(account_.table());
}

QString Walk::digest() const {
    return QString::fromLatin1(digest_.result().toHex());
}

// The session.

void Walk::runSession() {
    prepareStore();
    const bool small = oneIn(4);
    liveprogram::chooseScreen(small);
    say(u"starts the program on a %1 screen"_s.arg(small ? u"small"_s : u"large"_s));
    program_ = std::make_unique<LiveProgram>([this] { return random_.generate(); });
    qApp->installEventFilter(this);
    if (step_ == 0) {
        expectEverything();
    }
    account_.count(u"session"_s);
    intent_ = Intent::Wander;
    used_.clear();

    bool runs = takeStep([this] { program_->delegate().applicationDidFinishLaunching(); });
    while (runs && step_ < steps_) {
        runs = takeStep([this] { act(); });
    }
    if (!runs) {
        account_.count(u"session ended by the learner"_s);
    }

    qApp->removeEventFilter(this);
    for (Window *window : LiveObjects::all<Window>()) {
        window->closeUnasked();
    }
    program_.reset();
    const auto left = LiveObjects::all<platform::WindowController>();
    QStringList names;
    for (const platform::WindowController *controller : left) {
        names << QString::fromLatin1(controller->metaObject()->className());
    }
    want(left.isEmpty(), u"%1 outlive the program"_s.arg(names.join(u", "_s)), u"no controller"_s);
    const auto widgets = LiveObjects::all<QWidget>();
    want(widgets.isEmpty(), u"%1 widgets outlive the program"_s.arg(widgets.size()), u"none"_s);
    want(clocks::running().isEmpty(), u"a clock outlives the program"_s, u"none"_s);
    checkErrors();
}

void Walk::prepareStore() {
    const int kind = below(8);
    if (kind == 0 || step_ == 0) {
        account_.count(u"session on no store"_s);
        store::wipe();
        before_.clear();
        return;
    }
    if (kind == 1) {
        account_.count(u"session on a store without timedQuizzes"_s);
        before_.remove(u"timedQuizzes"_s);
        store::fill(before_);
    } else if (kind == 2) {
        account_.count(u"session on a store of random progress"_s);
        for (int quiz = 1; quiz <= 7; ++quiz) {
            before_.insert(u"quiz%1"_s.arg(quiz), QString::number(below(4)));
        }
        store::fill(before_);
    }
}

void Walk::expectEverything() {
    for (const QString &session :
         {u"no store"_s, u"a store without timedQuizzes"_s, u"a store of random progress"_s}) {
        account_.expect(u"session on "_s + session);
    }
    account_.expect(u"session ended by the learner"_s);
    for (const auto &[name, build] : platform::layouts()) {
        account_.expect(u"window "_s + name);
        account_.expect(u"closed "_s + name);
        QMainWindow window;
        build(window);
        for (const QAbstractButton *button : window.findChildren<QAbstractButton *>()) {
            if (!actionOf(*button).isEmpty()) {
                account_.expect(u"button %1.%2"_s.arg(name, actionOf(*button)));
            }
        }
        for (const QAction *item : window.findChildren<QAction *>()) {
            if (!actionOf(*item).isEmpty()) {
                account_.expect(u"item "_s + actionOf(*item));
            }
        }
    }
    for (const KnownAlert &alert : knownAlerts) {
        for (const QString &button : alert.buttons) {
            account_.expect(u"alert %1: %2"_s.arg(alert.name, button));
        }
    }
    for (const QString &way : answers) {
        account_.expect(u"alert answered by "_s + way);
    }
    for (const QKeyCombination key : shortcuts) {
        account_.expect(u"key "_s + nameOf(key));
    }
    for (const Qt::Key key : plainKeys) {
        account_.expect(u"key "_s + nameOf(key));
    }
    account_.expect(u"key "_s + nameOf(Qt::CTRL | Qt::Key_Q));
    for (const QString &thing :
         {u"attempt passed"_s, u"attempt failed"_s, u"attempt timed out"_s, u"attempt abandoned"_s,
          u"quiz mastered"_s, u"key held"_s, u"double click"_s, u"click somewhere"_s,
          u"menu opened by mouse"_s, u"menu opened by key"_s, u"menu item clicked"_s, u"second"_s,
          u"palette changed"_s, u"window resized"_s, u"store edited: quiz"_s,
          u"store edited: timedQuizzes"_s, u"tried behind an alert"_s, u"about box"_s}) {
        account_.expect(thing);
    }
}

bool Walk::takeStep(const std::function<void()> &step) {
    ++step_;
    cleared_ = false;
    timeWasUp_ = false;
    resultsOpened_ = 0;
    const int result = eventloop::run(step);
    want(result != eventloop::Hung, u"the event loop did not come back"_s, u"a step that ends"_s);
    liveprogram::settle();
    if (result != eventloop::StillRunning) {
        checkStore();
        checkErrors();
        return false;
    }
    activateLikeAWindowManager();
    check();
    return true;
}

bool Walk::eventFilter(QObject *watched, QEvent *event) {
    switch (event->type()) {
        case QEvent::Show:
            if (auto *box = qobject_cast<QMessageBox *>(watched)) {
                if (box->isModal()) {
                    QTimer::singleShot(0, box, [this, box] { answerAlert(*box); });
                } else {
                    account_.count(u"about box"_s);
                }
            } else if (auto *window = qobject_cast<Window *>(watched)) {
                windowAppears(*window);
            } else if (auto *menu = qobject_cast<QMenu *>(watched)) {
                QTimer::singleShot(0, menu, [this, menu] { leaveBlockingMenu(*menu); });
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

void Walk::windowAppears(Window &window) {
    const QString layout = window.objectName();
    account_.count(u"window "_s + layout);
    if (layout == u"QuizComplete") {
        ++resultsOpened_;
    }
    if (layout == u"MainTest") {
        constexpr std::array intents{Intent::Pass,        Intent::Pass,   Intent::Fail,
                                     Intent::LetTimePass, Intent::Wander, Intent::Wander};
        intent_ = pick(intents);
    }
    if (window.property("watched").toBool()) {
        return;
    }
    window.setProperty("watched", true);
    for (const QAbstractButton *button : window.findChildren<QAbstractButton *>()) {
        if (const QString action = actionOf(*button); !action.isEmpty()) {
            connect(button, &QAbstractButton::clicked, this, [this, layout, action] {
                account_.count(u"button %1.%2"_s.arg(layout, action));
            });
        }
    }
    for (QAction *item : window.menuBar()->actions()) {
        for (QAction *shared : item->menu()->actions()) {
            if (const QString action = actionOf(*shared);
                !action.isEmpty() && !shared->property("watched").toBool()) {
                shared->setProperty("watched", true);
                connect(shared, &QAction::triggered, this,
                        [this, action] { account_.count(u"item "_s + action); });
            }
        }
    }
}

// The steps.

void Walk::act() {
    if (QWidget *menu = QApplication::activePopupWidget(); menu != nullptr && !oneIn(4)) {
        useOpenMenu(*menu);
        return;
    }
    const int open = int(windows().size());
    if (open > mostWindows || (open > mostWindows / 2 && oneIn(4))) {
        closeOne();
        return;
    }
    if (intent_ != Intent::Wander && !oneIn(8) && pursueIntent()) {
        return;
    }
    const int choice = below(1000);
    if (choice < 420) {
        clickAnything();
    } else if (choice < 490) {
        clickAnywhere();
    } else if (choice < 740) {
        typeAnything();
    } else if (choice < 830) {
        useMenu();
    } else if (choice < 880) {
        closeOne();
    } else if (choice < 930) {
        activateOne();
    } else if (choice < 970) {
        letSecondsPass(1);
    } else if (choice < 975) {
        letSecondsPass(below(600));
    } else if (choice < 990) {
        changeDesktop();
    } else if (choice < 997) {
        editStore();
    } else {
        say(u"means to close everything"_s);
        intent_ = Intent::CloseAll;
    }
}

bool Walk::pursueIntent() {
    if (intent_ == Intent::CloseAll) {
        if (windows().constFirst()->objectName() == u"MainLayout") {
            intent_ = Intent::Wander;
            return false;
        }
        closeOne();
        return true;
    }
    QWidget *quiz = nullptr;
    for (QWidget *window : windows()) {
        if (window->objectName() == u"MainTest") {
            quiz = window;
        }
    }
    if (quiz == nullptr) {
        intent_ = Intent::Wander;
        return false;
    }
    if (intent_ == Intent::LetTimePass) {
        if (clocks::running().isEmpty()) {
            intent_ = Intent::Pass;
        }
        letSecondsPass(20 + below(200));
        return true;
    }
    activated(*quiz);
    QWidget &next = desk::control(quiz, u"btnNextQuestion"_s);
    if (next.isVisible()) {
        oneIn(2) ? type(Qt::Key_Return) : clickControl(next);
        return true;
    }
    const int right = quizRun().correctAnswerNumber;
    const int answer = (intent_ == Intent::Pass) != oneIn(12) ? right : right == 1 ? 2 : 1;
    if (oneIn(3)) {
        type(QKeyCombination(Qt::Key(Qt::Key_A + answer - 1)));
    } else {
        clickControl(
            desk::control(quiz, (oneIn(2) ? u"btnAnswer%1"_s : u"rowAnswer%1"_s).arg(answer)));
    }
    return true;
}

void Walk::clickAnything() {
    const QWidget &window = activated(anyWindow());
    QList<QWidget *> controls = visibleControls(window);
    if (!oneIn(4)) {
        QList<QWidget *> buttons;
        for (QWidget *control : controls) {
            if (qobject_cast<QAbstractButton *>(control) != nullptr) {
                buttons << control;
            }
        }
        controls = buttons.isEmpty() ? controls : buttons;
    }
    if (!controls.isEmpty()) {
        clickControl(*pick(controls));
    }
}

void Walk::clickAnywhere() {
    QWidget &window = activated(anyWindow());
    const QPoint at(1 + below(window.width() - 1), 1 + below(window.height() - 1));
    say(u"clicks at %1, %2 of %3"_s.arg(at.x()).arg(at.y()).arg(nameOf(window)));
    account_.count(u"click somewhere"_s);
    click(window, at);
}

void Walk::typeAnything() {
    activated(anyWindow());
    const int kind = below(100);
    if (kind < 2) {
        type(Qt::CTRL | Qt::Key_Q);
    } else if (kind < 12) {
        type(pick(idleKeys));
    } else if (kind < 25) {
        type(pick(shortcuts));
    } else if (kind < 30) {
        type(pick(shortcuts), true);
    } else {
        type(QKeyCombination(pick(plainKeys)), oneIn(12));
    }
}

void Walk::useMenu() {
    auto *window = qobject_cast<Window *>(&activated(anyWindow()));
    if (window == nullptr) {
        return;
    }
    QMenuBar &bar = *window->menuBar();
    const QList<QAction *> menus = bar.actions();
    QAction &menu = *pick(menus);
    if (oneIn(2)) {
        say(u"clicks the menu "_s + menu.text());
        account_.count(u"menu opened by mouse"_s);
        click(*window, bar.mapTo(window, bar.actionGeometry(&menu).center()));
    } else {
        const QChar letter = menu.text().at(menu.text().indexOf(u'&') + 1).toUpper();
        account_.count(u"menu opened by key"_s);
        type(Qt::ALT | Qt::Key(letter.unicode()));
    }
    if (QWidget *open = QApplication::activePopupWidget(); open != nullptr && !oneIn(4)) {
        useOpenMenu(*open);
    }
}

void Walk::useOpenMenu(QWidget &menu) {
    const auto *open = qobject_cast<QMenu *>(&menu);
    if (open == nullptr || oneIn(8)) {
        type(QKeyCombination(oneIn(2) ? Qt::Key_Escape : pick(plainKeys)));
        return;
    }
    QList<QAction *> items;
    for (QAction *item : open->actions()) {
        if (!item->isSeparator() && (actionOf(*item) != u"quit" || oneIn(8))) {
            items << item;
        }
    }
    QAction &item = *pick(items);
    if (oneIn(2)) {
        say(u"clicks the item "_s + item.text());
        account_.count(u"menu item clicked"_s);
        click(menu, open->actionGeometry(&item).center());
        return;
    }
    for (int keys = 0; open->activeAction() != &item && keys < 10; ++keys) {
        type(Qt::Key_Down);
    }
    type(Qt::Key_Return);
}

void Walk::leaveBlockingMenu(QMenu &menu) {
    // If a menu bar is too narrow, its remaining menus open in an event loop of their own, which
    // keeps the step from ending.
    if (QThread::currentThread()->loopLevel() < 2 || !menu.isVisible()) {
        return;
    }
    useOpenMenu(menu);
    menu.close();
}

void Walk::closeOne() {
    QWidget &window = anyWindow();
    say(u"closes "_s + nameOf(window));
    account_.count(u"closed "_s + window.objectName());
    window.close();
}

void Walk::activateOne() {
    QWidget &window = *pick(windows());
    say(u"brings %1 to the front"_s.arg(nameOf(window)));
    activated(window);
}

void Walk::letSecondsPass(int seconds) {
    say(u"waits %1 s"_s.arg(seconds));
    account_.count(u"second"_s, seconds);
    for (int second = 0; second < seconds && !timeWasUp_; ++second) {
        clocks::passSecond();
    }
}

void Walk::changeDesktop() {
    if (oneIn(3)) {
        say(u"changes the desktop's colours"_s);
        account_.count(u"palette changed"_s);
        QApplication::setPalette(oneIn(2) ? drawing::darkPalette()
                                          : QApplication::style()->standardPalette());
        return;
    }
    QWidget &window = anyWindow();
    const QSize size(200 + below(1000), 150 + below(900));
    say(u"resizes %1 to %2 x %3"_s.arg(nameOf(window)).arg(size.width()).arg(size.height()));
    account_.count(u"window resized"_s);
    window.resize(size);
}

void Walk::editStore() {
    store::Contents contents = store::contents();
    QString key = u"timedQuizzes"_s;
    if (oneIn(3)) {
        key = u"quiz%1"_s.arg(1 + below(7));
        contents[key] = QString::number(qMin(3, contents[key].toInt() + 1));
        account_.count(u"store edited: quiz"_s);
    } else {
        contents[key] = oneIn(3) ? u"no"_s : u"yes"_s;
        account_.count(u"store edited: timedQuizzes"_s);
    }
    say(u"has %1=%2 written by another copy of the program"_s.arg(key, contents[key]));
    store::fill(contents);
    before_ = contents;
}

// The alerts.

void Walk::answerAlert(QMessageBox &box) {
    const auto *known = std::ranges::find_if(knownAlerts, [&box](const KnownAlert &alert) {
        return box.text().startsWith(alert.start);
    });
    want(known != knownAlerts.end(), u"the alert \"%1\""_s.arg(box.text()), u"a known one"_s);
    const QString name = known->name.toString();
    timeWasUp_ |= name == u"time is up";

    want(QTest::qWaitFor([&box] { return QGuiApplication::focusWindow() == box.windowHandle(); }),
         u"the alert %1 does not come to the front"_s.arg(name), u"an alert in front"_s);
    if (oneIn(3)) {
        tryInVain(box);
    }
    if (oneIn(4)) {
        type(pick(idleKeys));
        want(box.isVisible(), u"the alert %1 goes at a key without meaning"_s.arg(name),
             u"an alert that stays"_s);
    }

    const QString way = pick(answers);
    const QStringList &buttons = known->buttons;
    QString expected;
    if (way == u"mouse") {
        const QList<QAbstractButton *> all = box.buttons();
        QAbstractButton &button = *pick(all);
        expected = button.text();
        clickControl(button);
    } else if (way == u"Return") {
        expected = buttons.first();
        type(Qt::Key_Return);
    } else if (way == u"Escape") {
        expected = buttons.last();
        type(Qt::Key_Escape);
    } else if (way == u"close") {
        expected = buttons.last();
        say(u"closes the alert "_s + name);
        box.close();
    } else {
        // Tab moves from the default button, the first, to the last.
        expected = buttons.last();
        type(Qt::Key_Tab);
        type(Qt::Key_Space);
    }
    want(!box.isVisible(), u"the alert %1 stays after %2"_s.arg(name, way), u"an answered alert"_s);
    const QString pressed =
        box.clickedButton() == nullptr ? QString() : box.clickedButton()->text();
    want(pressed == expected, u"%1 answers the alert %2 with \"%3\""_s.arg(way, name, pressed),
         u"\"%1\""_s.arg(expected));

    account_.count(u"alert answered by "_s + way);
    account_.count(u"alert %1: %2"_s.arg(name, pressed));
    cleared_ |= name == u"clearing" && pressed == u"Yes";
    if (name == u"leaving a quiz" && pressed == u"Yes") {
        account_.count(u"attempt abandoned"_s);
    }
}

void Walk::tryInVain(const QMessageBox &box) {
    const QString before = state();
    account_.count(u"tried behind an alert"_s);
    for (int tries = 1 + below(4); tries > 0; --tries) {
        QList<QWidget *> behind = windows();
        behind.removeIf([&box](const QWidget *window) { return window == &box; });
        if (oneIn(4) || behind.isEmpty()) {
            letSecondsPass(1 + below(5));
            continue;
        }
        QWidget &window = *pick(behind);
        if (oneIn(2)) {
            const QPoint at(1 + below(window.width() - 1), 1 + below(window.height() - 1));
            say(u"clicks at %1, %2 of %3, behind an alert"_s.arg(at.x()).arg(at.y()).arg(
                nameOf(window)));
            click(window, at);
        } else {
            const QKeyCombination key = oneIn(3) ? Qt::CTRL | Qt::Key_Q : pick(shortcuts);
            say(u"types %1 to %2, behind an alert"_s.arg(nameOf(key), nameOf(window)));
            QTest::keyPress(window.windowHandle(), key.key(), key.keyboardModifiers());
            QTest::keyRelease(window.windowHandle(), key.key(), key.keyboardModifiers());
        }
    }
    want(box.isVisible(), u"the alert \"%1\" went unanswered"_s.arg(box.text()), u"it stays"_s);
    const QString after = state();
    want(after == before, u"behind an alert the state became\n%1"_s.arg(after), before);
}

// Mouse, keyboard and windows.

QList<QWidget *> Walk::windows() const {
    QList<QWidget *> windows;
    for (const QWindow *handle : QGuiApplication::topLevelWindows()) {
        QWidget *widget = handle->isVisible() ? QWidget::find(handle->winId()) : nullptr;
        if (qobject_cast<Window *>(widget) != nullptr ||
            qobject_cast<QMessageBox *>(widget) != nullptr) {
            windows << widget;
        }
    }
    return windows;
}

QWidget &Walk::anyWindow() {
    QWidget *active = QApplication::activeWindow();
    const QList<QWidget *> all = windows();
    return active != nullptr && all.contains(active) && !oneIn(4) ? *active : *pick(all);
}

QWidget &Walk::activated(QWidget &window) {
    if (!window.isActiveWindow()) {
        window.activateWindow();
        QCoreApplication::processEvents();
    }
    return window;
}

void Walk::click(QWidget &window, const QPoint &at, bool twice) {
    if (twice) {
        QTest::mouseDClick(window.windowHandle(), Qt::LeftButton, {}, at);
    } else {
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, at);
    }
}

void Walk::clickControl(QWidget &control) {
    const QRect place = control.visibleRegion().boundingRect();
    if (place.isEmpty()) {
        // Scrolled out of sight.
        return;
    }
    const QPoint at = oneIn(2)
                          ? place.center()
                          : place.topLeft() + QPoint(below(place.width()), below(place.height()));
    const bool twice = oneIn(20);
    say(u"clicks %1%2 of %3"_s.arg(nameOf(control), twice ? u" twice"_s : QString(),
                                   nameOf(*control.window())));
    if (twice) {
        account_.count(u"double click"_s);
    }
    click(*control.window(), control.mapTo(control.window(), at), twice);
}

void Walk::type(QKeyCombination key, bool held) {
    say(u"types %1%2"_s.arg(nameOf(key), held ? u", held"_s : QString()));
    account_.count(u"key "_s + nameOf(key));
    const QString text = QTest::keyToAscii(key.key()) == 0
                             ? QString()
                             : QString(QLatin1Char(QTest::keyToAscii(key.key())));
    press(key, text, false);
    if (held) {
        account_.count(u"key held"_s);
        for (int repetition = 0; repetition < 3; ++repetition) {
            press(key, text, true);
        }
    }
    if (QWindow *last = QGuiApplication::focusWindow()) {
        QTest::simulateEvent(last, false, key.key(), key.keyboardModifiers(), text, false);
    }
}

void Walk::press(QKeyCombination key, const QString &text, bool repetition) {
    // A held key goes on to the window that has come to the front.
    if (QWindow *window = QGuiApplication::focusWindow()) {
        QTest::simulateEvent(window, true, key.key(), key.keyboardModifiers(), text, repetition);
    }
}

void Walk::activateLikeAWindowManager() {
    used_.removeIf(
        [](const QPointer<QWidget> &window) { return window.isNull() || !window->isVisible(); });
    QWidget *active = QApplication::activeWindow();
    const QList<QWidget *> open = windows();
    if ((active == nullptr || !active->isVisible()) && !open.isEmpty()) {
        active = used_.isEmpty() ? open.last() : used_.last().data();
        if (active->windowHandle() == QGuiApplication::focusWindow()) {
            // The window got the keyboard while a menu was closing, and Qt missed that: the
            // keyboard has to go elsewhere first.
            QWindow elsewhere;
            elsewhere.show();
            QCoreApplication::processEvents();
        }
        activated(*active);
    }
    used_.removeAll(active);
    used_ << active;
}

// The checks after each step.

QString Walk::state() const {
    QStringList state;
    for (const QWidget *window : windows()) {
        state << nameOf(*window);
    }
    const QRect place = QApplication::activeWindow() == nullptr
                            ? QRect()
                            : QApplication::activeWindow()->geometry();
    state << u"%1 x %2"_s.arg(place.width()).arg(place.height());
    const store::Contents contents = store::contents();
    for (auto entry = contents.begin(); entry != contents.end(); ++entry) {
        state << entry.key() + u'=' + entry.value();
    }
    const QuizRun &run = quizRun();
    state << u"question %1 of %2, %3 right, %4:%5 left, clocks: %6"_s.arg(run.questionIndex)
                 .arg(run.questionCount)
                 .arg(run.correctCount)
                 .arg(run.minutesLeft)
                 .arg(run.secondsLeft)
                 .arg(clocks::running().size());
    return state.join(u'\n');
}

void Walk::check() {
    const QWidget *focus = QApplication::focusWidget();
    digest_.addData(state().toUtf8());
    digest_.addData((focus == nullptr ? QString() : nameOf(*focus)).toUtf8());
    checkStore();
    checkClocks();
    checkWindows();
    checkFocus();
    checkErrors();
}

void Walk::checkStore() {
    static const QStringList flags{u"0"_s, u"pass"_s, u"fail"_s};
    static const QMap<QString, QStringList> allowed = [] {
        QMap<QString, QStringList> values{
            {u"currentTest"_s, u"0 1 2 3 4 5 6 7"_s.split(u' ')},
            {u"currentStatus"_s, flags},
            {u"timedQuizzes"_s, {u"yes"_s, u"no"_s}},
            {u"firstRun"_s, {u"false"_s}},
        };
        for (int quiz = 1; quiz <= 7; ++quiz) {
            values.insert(u"quiz%1"_s.arg(quiz), u"0 1 2 3"_s.split(u' '));
        }
        return values;
    }();

    static const QStringList keys = allowed.keys();
    const store::Contents now = store::contents();
    for (auto entry = now.begin(); entry != now.end(); ++entry) {
        want(allowed.contains(entry.key()), u"the store holds the key \"%1\""_s.arg(entry.key()),
             keys.join(u", "_s));
        want(allowed[entry.key()].contains(entry.value()),
             u"the store holds %1=%2"_s.arg(entry.key(), entry.value()),
             allowed[entry.key()].join(u", "_s));
    }
    for (const QString &key : keys) {
        want(now.contains(key) || key == u"timedQuizzes", u"the store has lost "_s + key,
             u"every key from the first start on"_s);
    }
    checkProgress(now);
    before_ = now;
}

void Walk::checkProgress(const store::Contents &now) {
    const QuizRun &run = quizRun();
    const bool ended = resultsOpened_ > 0 && !timeWasUp_;
    const bool passed = ended && run.correctCount * 5 >= run.questionCount * 4;
    want(resultsOpened_ <= 1, u"%1 results windows opened in one step"_s.arg(resultsOpened_),
         u"one at most"_s);
    if (resultsOpened_ > 0) {
        account_.count(timeWasUp_ ? u"attempt timed out"_s
                       : passed   ? u"attempt passed"_s
                                  : u"attempt failed"_s);
        want(now[u"currentStatus"_s] == (passed ? u"pass"_s : u"fail"_s),
             u"currentStatus=%1 after %2 right answers of %3"_s.arg(now[u"currentStatus"_s])
                 .arg(run.correctCount)
                 .arg(run.questionCount),
             passed ? u"pass"_s : u"fail"_s);
    }
    for (int quiz = 1; quiz <= 7; ++quiz) {
        const QString key = u"quiz%1"_s.arg(quiz);
        const int was = before_[key].toInt();
        const bool counts = passed && run.currentTestId == QString::number(quiz);
        const int wanted = cleared_ ? 0 : counts ? qMin(3, was + 1) : was;
        want(now[key].toInt() == wanted, u"%1=%2 after %3"_s.arg(key, now[key]).arg(was),
             QString::number(wanted));
        if (counts && was == 2) {
            account_.count(u"quiz mastered"_s);
        }
    }
}

void Walk::checkClocks() {
    const auto running = clocks::running().size();
    const auto quizzes = desk::windows(u"MainTest"_s).size();
    want(running <= 1, u"%1 clocks run"_s.arg(running), u"one at most"_s);
    want(running == 0 || quizzes > 0, u"a clock runs without a quiz"_s, u"none"_s);
}

void Walk::checkWindows() {
    const auto controllers = LiveObjects::all<platform::WindowController>();
    QSet<const QWidget *> owned;
    for (platform::WindowController *controller : controllers) {
        if (controller->window() != nullptr) {
            owned << controller->window();
        }
    }
    int wayBack = 0;
    int others = 0;
    int alive = 0;
    for (const QWidget *widget : QApplication::topLevelWidgets()) {
        const bool isWindow = qobject_cast<const Window *>(widget) != nullptr;
        const bool isWayBack = isWindow && widget->objectName() == u"MainLayout";
        alive += isWindow && !isWayBack ? 1 : 0;
        if (!widget->isVisible()) {
            continue;
        }
        wayBack += isWayBack ? 1 : 0;
        others += isWindow && !isWayBack ? 1 : 0;
        want(isWayBack || owned.contains(widget) ||
                 qobject_cast<const QMenu *>(widget) != nullptr ||
                 (qobject_cast<const QMessageBox *>(widget) != nullptr && !isAlert(*widget)) ||
                 widget->inherits("QTipLabel"),
             u"%1 is on screen by itself"_s.arg(nameOf(*widget)),
             u"windows of live controllers, menus, tool tips and the About box"_s);
    }
    want(alive == owned.size(), u"%1 windows live"_s.arg(alive),
         u"%1, as many as controllers hold"_s.arg(owned.size()));
    want(wayBack == (others == 0 ? 1 : 0),
         u"%1 ways back beside %2 open windows"_s.arg(wayBack).arg(others),
         u"one where no other window is open, and none otherwise"_s);
    const auto used = program_->used(controllers);
    want(used.size() == controllers.size(), u"%1 controllers live"_s.arg(controllers.size()),
         u"%1: those on screen and those that are held"_s.arg(used.size()));
}

void Walk::checkFocus() {
    if (QApplication::activePopupWidget() != nullptr) {
        return;
    }
    const QWidget *active = QApplication::activeWindow();
    const QWindow *front = QGuiApplication::focusWindow();
    want(active != nullptr && active->isVisible(),
         u"no window is active, though the keys go to %1"_s.arg(
             front == nullptr ? u"none"_s : front->objectName()),
         u"one that is"_s);
    const auto controls = active->findChildren<QWidget *>();
    if (std::ranges::none_of(controls, [&](const QWidget *one) {
            return one->window() == active && takesFocus(*one);
        })) {
        return;
    }
    const QWidget *focus = QApplication::focusWidget();
    want(focus != nullptr && focus->window() == active && focus->isVisible() && focus->isEnabled(),
         u"in %1 the focus is on %2"_s.arg(nameOf(*active),
                                           focus == nullptr ? u"nothing"_s : nameOf(*focus)),
         u"one of its visible enabled controls"_s);
}

void Walk::checkErrors() {
    static const QStringList allowed{u"Finished Starting"_s, u"Going Home"_s};
    for (const QString &line : errors_.take()) {
        const bool isTest = line.size() == 1 && line.front() >= u'0' && line.front() <= u'7';
        want(allowed.contains(line) || isTest, u"on standard error: "_s + line,
             u"the program's own lines"_s);
    }
}

void Walk::say(const QString &words) {
    const QString line = u"%1: %2"_s.arg(step_).arg(words);
    digest_.addData(line.toUtf8());
    lastSteps_ << line;
    if (lastSteps_.size() > 20) {
        lastSteps_.removeFirst();
    }
    if (verbose_) {
        std::fprintf(errors_.terminal(), "%s\n", qUtf8Printable(line));
        std::fflush(errors_.terminal());
    }
}

void Walk::want(bool holds, const QString &found, const QString &wanted) {
    if (!holds) {
        fail(found, wanted);
    }
}

void Walk::fail(const QString &found, const QString &wanted) {
    std::fprintf(errors_.terminal(),
                 "The last steps:\n%s\n\nNow:\n%s\n\nStep %d of seed %u: found %s\nWanted: %s\n"
                 "To see it again: %s --seed %u --steps %d --verbose\n",
                 qUtf8Printable(lastSteps_.join(u'\n')), qUtf8Printable(state()), step_, seed_,
                 qUtf8Printable(found), qUtf8Printable(wanted), "tests/monkey/monkey", seed_,
                 step_);
    std::fflush(errors_.terminal());
    std::_Exit(1);
}
