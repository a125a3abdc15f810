#pragma once

#include <QString>

namespace platform {

/// A modal message: plain text, no title, no icon. Return presses the default button; Escape
/// the alternate one, or the default where it is alone.
class Alert final {
 public:
    struct Buttons {
        QString defaultButton;
        QString alternateButton = {};
        QString otherButton = {};
    };

    static constexpr int DefaultReturn = 1;
    static constexpr int AlternateReturn = 0;
    static constexpr int OtherReturn = -1;

    Alert(QString message, Buttons buttons, QString informativeText = {});

    /// Blocks until a button is pressed and tells which.
    int runModal() const;

 private:
    QString message_;
    Buttons buttons_;
    QString informativeText_;
};

}  // namespace platform
