#pragma once

#include <QPushButton>

namespace platform {

/// The button of a ButtonRow. The row draws its ground and focus; the button draws only its
/// text: on the row, or, with the property "badge", as a lettered key.
class RowButton final : public QPushButton {
    Q_OBJECT
    Q_PROPERTY(bool badge MEMBER badge_)

 public:
    using QPushButton::QPushButton;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

 protected:
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

 private:
    bool badge_ = false;
};

}  // namespace platform
