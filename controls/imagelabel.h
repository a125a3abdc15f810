#pragma once

#include <QIcon>
#include <QLabel>

namespace platform {

/// A square picture, as many lines of text high as its property "lines" says. The image gives its
/// shape, by its opacity, from its best resolution for the screen; the colour is that of the Banner
/// that it stands on, so that it follows the palette.
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

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

 protected:
    void paintEvent(QPaintEvent *event) override;

 private:
    int lines_ = 1;
    QIcon image_;
};

}  // namespace platform
