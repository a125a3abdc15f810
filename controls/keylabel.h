#pragma once

#include <QLabel>

namespace platform {

/// A text that names keys, such as "A, B or Ctrl+C", with each of them drawn as a key.
class KeyLabel final : public QLabel {
    Q_OBJECT

 public:
    explicit KeyLabel(QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

 protected:
    void paintEvent(QPaintEvent *event) override;

 private:
    struct Piece;

    QList<Piece> pieces() const;
};

}  // namespace platform
