#pragma once

#include <QWidget>

class QAbstractButton;

namespace platform {

/// A row whose whole surface presses the one button in it. Where a TextLabel stands beside the
/// button, the button's accessible name is its own text and the label's; where a LevelIndicator
/// does, its value in words is the button's accessible description.
class ButtonRow final : public QWidget {
    Q_OBJECT
    /// Sets the row apart from its neighbours.
    Q_PROPERTY(bool prominent MEMBER prominent_)

 public:
    explicit ButtonRow(QWidget *parent = nullptr);

 protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

 private:
    void adoptButton();

    QAbstractButton *button_ = nullptr;
    bool prominent_ = false;
};

}  // namespace platform
