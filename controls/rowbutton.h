#pragma once

#include <QAbstractButton>

namespace platform {

/// The button of an ActionRow. The row draws its panel and focus; the button draws only its text,
/// either directly on the row or, with the property "badge", as a lettered key.
class RowButton final : public QAbstractButton {
    Q_OBJECT
    Q_PROPERTY(bool badge MEMBER badge_)

 public:
    explicit RowButton(QWidget *parent = nullptr) : QAbstractButton(parent) {}
    explicit RowButton(const QString &text, QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

 protected:
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

 private:
    bool badge_ = false;
};

}  // namespace platform
