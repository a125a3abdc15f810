#pragma once

#include <functional>
#include <optional>

#include <QList>
#include <QObject>
#include <QStringList>

namespace platform {
class MessageBox;
}

/// What an alert showed. The program's alerts have nothing but a message, buttons and a window.
struct ShownAlert {
    QString message;
    /// Starting with the default button.
    QStringList buttons;
    /// The layout of the window that it stood over; empty if there was none.
    QString over;
    QString informativeText = {};
    QString title = {};
    bool hasIcon = false;
    bool operator==(const ShownAlert &) const = default;
};

/// How Qt Test prints one.
char *toString(const ShownAlert &alert);

/// Answers the alerts that a test expects, in order, and keeps what they showed. An alert that
/// was not expected is dismissed and fails verify().
class Alerts final : public QObject {
    Q_OBJECT

 public:
    Alerts();
    ~Alerts() override;

    /// Presses the button of that text in the next alert; `meanwhile` runs while the alert is up.
    void answer(const QString &button, std::function<void()> meanwhile = {});
    /// Presses a key in the next alert.
    void press(Qt::Key key);

    const QList<ShownAlert> &shown() const { return shown_; }
    QStringList messages() const;

    /// True if every answer was used and no alert came unexpectedly; otherwise the test's output
    /// says what is wrong.
    bool verify() const;

 protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

 private:
    struct Answer {
        QString button;
        std::optional<Qt::Key> key;
        std::function<void()> meanwhile;
    };

    void handle(platform::MessageBox &box);

    QList<Answer> answers_;
    QList<ShownAlert> shown_;
    QStringList unexpected_;
};
