#pragma once

#include <QWidget>

class QAbstractButton;

namespace platform {

class LevelIndicator;
class TextLabel;

/// How a row stands. In a list of steps it is open, next or done; as an answer it is open until
/// one has been chosen, and then right, wrong (the one chosen in its place) or one of the others.
enum class RowState { Open, Next, Done, Right, Wrong, Other };

/// A row whose whole surface presses the one button in it. Where a TextLabel stands beside the
/// button, the button's accessible name is its own text and the label's; a second one is filled
/// with the words for how the row stands. These and a LevelIndicator's value in words are the
/// button's accessible description.
class ActionRow final : public QWidget {
    Q_OBJECT

 public:
    explicit ActionRow(QWidget *parent = nullptr);

    /// The row that `part` stands in; ends the program where there is none.
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
