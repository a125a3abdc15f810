#pragma once

#include <QColor>
#include <QIcon>
#include <QLabel>

namespace platform {

/// A square picture, as many lines of text high as its property "lines" says. The image gives its
/// shape, by its opacity, from its best resolution for the screen.
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

    /// An invalid colour draws in the accent.
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
