#pragma once

#include <QColor>
#include <QIcon>
#include <QLabel>

namespace platform {

/// A square picture, whose property "lines" is its height in lines of text. Only the opacity of the
/// image is used, at its best resolution for the screen; the colour is set separately.
class ImageLabel final : public QLabel {
    Q_OBJECT
    Q_PROPERTY(int lines READ lines WRITE setLines)

 public:
    using QLabel::QLabel;

    int lines() const { return lines_; }
    void setLines(int lines);

    /// A null image empties the label.
    void setImage(const QIcon &image);
    const QIcon &image() const { return image_; }

    /// An invalid colour stands for the accent.
    void setColor(const QColor &color);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

 protected:
    void paintEvent(QPaintEvent *event) override;

 private:
    int lines_ = 1;
    QIcon image_;
    QColor color_;
};

}  // namespace platform
