#pragma once

#include <QString>

namespace platform {

class MessageBox;
class Window;

/// A modal message in plain text, without a title or an icon. Return presses the focused button,
/// which at first is the default one. Escape presses the alternate button, or the default one if
/// there is no alternate.
class Alert final {
 public:
    struct Buttons {
        QString defaultButton;
        QString alternateButton = {};
        QString otherButton = {};
    };

    /// What causes an alert: something that the user does, or something that happens by itself.
    enum class Cause { UserAction, Event };

    static constexpr int DefaultReturn = 1;
    static constexpr int AlternateReturn = 0;
    static constexpr int OtherReturn = -1;

    Alert(QString message, Buttons buttons, QString informativeText = {});

    /// Blocks until a button is pressed, and returns which. The alert is shown over `owner`, which
    /// comes to the front with it, or over the window in front if `owner` is null or not on screen.
    /// An alert caused by an event does not take the keyboard from another program: it asks for
    /// attention, and appears when the user comes back. No RepeatingTimer ticks until the caller
    /// has returned to the event loop. If the owner is freed while the alert is open, the answer is
    /// the same as for Escape.
    int runModal(Window *owner, Cause cause = Cause::UserAction) const;

 private:
    MessageBox *newBox(Window *over) const;

    QString message_;
    Buttons buttons_;
    QString informativeText_;
};

}  // namespace platform
