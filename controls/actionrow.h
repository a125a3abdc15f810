#pragma once

#include <QWidget>

class QAbstractButton;

namespace platform {

class LevelIndicator;
class TextLabel;

/// The state of a row. In a list of steps a row is open, next or done. An answer is open until one
/// has been chosen, and then right, wrong (chosen, but not right) or one of the others.
enum class RowState { Open, Next, Done, Right, Wrong, Other };

/// A row whose whole surface presses the one button in it. If the row has a TextLabel, the button's
/// accessible name is its own text and the label's. A second TextLabel shows the words for the
/// row's state; these and the value of a LevelIndicator in words are the button's accessible
/// description.
class ActionRow final : public QWidget {
    Q_OBJECT

 public:
    explicit ActionRow(QWidget *parent = nullptr);

    /// The row that contains `part`. Ends the program if there is none.
    static const ActionRow &around(const QWidget &part);

    RowState state() const { return state_; }
    void setState(RowState state, const QString &words = {});

    /// Whether the pointer is over a row that can be pressed.
    bool isHovered() const;

    QAbstractButton *button() const { return button_; }
    const LevelIndicator *level() const { return level_; }

 protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

 private:
    void adoptParts();
    void describeOnce();
    void describe();

    QAbstractButton *button_ = nullptr;
    const LevelIndicator *level_ = nullptr;
    TextLabel *words_ = nullptr;
    RowState state_ = RowState::Open;
};

}  // namespace platform
