#pragma once

#include <QString>

class QMessageBox;

namespace platform {

class Window;

/// A modal message: plain text, no title, no icon. Return presses the button with the focus, at
/// first the default one; Escape the alternate one, or the default where it is alone.
class Alert final {
 public:
    struct Buttons {
        QString defaultButton;
        QString alternateButton = {};
        QString otherButton = {};
    };

    /// What an alert comes of: something that the user does, or something that happens by itself.
    enum class Cause { UserAction, Event };

    static constexpr int DefaultReturn = 1;
    static constexpr int AlternateReturn = 0;
    static constexpr int OtherReturn = -1;

    Alert(QString message, Buttons buttons, QString informativeText = {});

    /// Blocks until a button is pressed and tells which. The alert stands over `owner`, which comes
    /// to the front with it; where that is null or not on screen, over the window in front. After
    /// an event it does not take the keyboard from another program: it asks for attention, and
    /// appears when the user comes back. No RepeatingTimer ticks until the caller has returned to
    /// the event loop. An alert whose owner is freed under it is answered as by Escape.
    int runModal(Window *owner, Cause cause = Cause::UserAction) const;

 private:
    QMessageBox *newBox(Window *over) const;
    /// A box that is null has been freed.
    int resultOf(const QMessageBox *box) const;

    QString message_;
    Buttons buttons_;
    QString informativeText_;
};

}  // namespace platform
