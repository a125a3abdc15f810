#include "controls/imagelabel.h"

#include <QPainter>

#include "look/palette.h"

namespace platform {

void ImageLabel::setLines(int lines) {
    lines_ = lines;
    updateGeometry();
}

void ImageLabel::setImage(const QIcon &image) {
    image_ = image;
    update();
}

void ImageLabel::setColor(const QColor &color) {
    color_ = color;
    update();
}

QSize ImageLabel::sizeHint() const {
    const int side = lines_ * fontMetrics().lineSpacing();
    return {side, side};
}

QSize ImageLabel::minimumSizeHint() const {
    return sizeHint();
}

void ImageLabel::paintEvent(QPaintEvent *) {
    QPixmap drawn(size() * devicePixelRatioF());
    drawn.setDevicePixelRatio(devicePixelRatioF());
    drawn.fill(Qt::transparent);
    QPainter ink(&drawn);
    image_.paint(&ink, rect());
    ink.setCompositionMode(QPainter::CompositionMode_SourceIn);
    ink.fillRect(rect(), color_.isValid() ? color_ : look::accent(palette()));
    ink.end();
    QPainter(this).drawPixmap(0, 0, drawn);
}

}  // namespace platform
