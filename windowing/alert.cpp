#include "windowing/alert.h"

#include <chrono>
#include <memory>
#include <utility>

#include <QApplication>
#include <QEventLoop>
#include <QPointer>
#include <QTimer>
#include <QWindow>

#include "controls/messagebox.h"
#include "look/polish.h"
#include "system/repeatingtimer.h"
#include "windowing/application.h"
#include "windowing/bringtofront.h"
#include "windowing/window.h"

namespace platform {

namespace {

/// Keeps the program's windows from being used until the alert that blocks them is there.
class InputBlock final : public QObject {
 public:
    InputBlock() { qApp->installEventFilter(this); }

    bool eventFilter(QObject *, QEvent *event) override {
        switch (event->type()) {
            case QEvent::MouseButtonPress:
            case QEvent::MouseButtonRelease:
            case QEvent::MouseButtonDblClick:
            case QEvent::Wheel:
            case QEvent::TouchBegin:
            case QEvent::KeyPress:
            case QEvent::ShortcutOverride:
            case QEvent::Shortcut:
                return true;
            case QEvent::Close:
                event->ignore();
                return true;
            default:
                return false;
        }
    }
};

void askForAttention(Window &window) {
    QApplication::alert(&window);
#if QT_VERSION < QT_VERSION_CHECK(6, 8, 0)
    // Before Qt 6.8 alert() has no effect on Wayland. Asking for the keyboard with a token that
    // the desktop does not know gets attention there.
    if (QGuiApplication::platformName().startsWith(u"wayland")) {
        qputenv("XDG_ACTIVATION_TOKEN", "attention");
        window.activateWindow();
    }
#endif
    // Otherwise the request would wait until something else is sent.
    QGuiApplication::sync();
}

/// Waits for the user to come back from another program, and has the desktop draw attention to
/// `window`.
void waitForTheUser(Window *window) {
    // A desktop may never give the keyboard to any window; the wait would not end there.
    if (QGuiApplication::focusWindow() != nullptr || window == nullptr ||
        !window->hasBeenActive()) {
        return;
    }
    const InputBlock block;
    askForAttention(*window);
    QEventLoop loop;
    QObject::connect(qApp, &QGuiApplication::focusWindowChanged, &loop,
                     [&loop](const QWindow *focused) {
                         if (focused != nullptr) {
                             loop.quit();
                         }
                     });
    // Asking takes events, and the user may have come back with one of them.
    if (QGuiApplication::focusWindow() == nullptr) {
        loop.exec();
    }
}

/// What exec() returns if the box has to be shown again.
constexpr int Covered = -70;

/// Gives the keyboard back to the alert when a window that it blocks gets it, and raises the
/// alert's owner too: not every desktop knows that an alert blocks more than its owner.
void keepInFront(MessageBox &box) {
    const auto follow = [&box, hadIt = false](const QWindow *focused) mutable {
        if (focused == nullptr) {
            return;
        }
        if (QWidget *owner = box.parentWidget(); hadIt && owner != nullptr) {
            owner->raise();
        }
        if (focused != box.windowHandle()) {
            bringToFront(box);
        } else if (hadIt) {
            box.raise();
        }
        hadIt = hadIt || focused == box.windowHandle();
        // Not every desktop gives the keyboard to a window that asks for it, or to the second of
        // two that appear at once, but each gives it to one that appears alone.
        constexpr std::chrono::milliseconds untilItMayHave(300);
        QTimer::singleShot(untilItMayHave, &box, [&box, hadIt] {
            if (QGuiApplication::focusWindow() != nullptr && !box.isActiveWindow() &&
                (hadIt || box.windowHandle()->isExposed())) {
                box.done(Covered);
            }
        });
    };
    QObject::connect(qApp, &QGuiApplication::focusWindowChanged, &box, follow);
}

}  // namespace

Alert::Alert(QString message, Buttons buttons, QString informativeText)
    : message_(std::move(message)),
      buttons_(std::move(buttons)),
      informativeText_(std::move(informativeText)) {}

MessageBox *Alert::newBox(Window *over) const {
    auto *box = new MessageBox(message_, informativeText_, over);
    box->setAccessibleName(message_);
    box->addButton(buttons_.defaultButton, QDialogButtonBox::AcceptRole, DefaultReturn);
    if (!buttons_.alternateButton.isEmpty()) {
        box->addButton(buttons_.alternateButton, QDialogButtonBox::RejectRole, AlternateReturn);
    }
    if (!buttons_.otherButton.isEmpty()) {
        box->addButton(buttons_.otherButton, QDialogButtonBox::DestructiveRole, OtherReturn);
    }
    look::keepPolished(*box);
    return box;
}

int Alert::runModal(Window *owner, Cause cause) const {
    const TickHold hold;
    const QPointer<Window> over =
        owner != nullptr && owner->isVisible() ? owner : Window::inFront();
    if (cause == Cause::Event) {
        waitForTheUser(over);
    }
    if (!over.isNull()) {
        over->comeForward();
    }
    int answer = Covered;
    while (answer == Covered) {
        const QPointer<MessageBox> box = newBox(over);
        keepInFront(*box);
        answer = box->exec();
        if (box.isNull()) {
            // It was freed with its owner.
            answer = buttons_.alternateButton.isEmpty() ? DefaultReturn : AlternateReturn;
        }
        std::unique_ptr<MessageBox>(box.data()).reset();
    }
    Application::shared().keepTheKeyboard();
    return answer;
}

}  // namespace platform
