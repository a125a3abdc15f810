#include "platform/imagelabel.h"

#include <QPainter>

namespace platform {

void ImageLabel::setLines(int lines) {
    lines_ = lines;
    updateGeometry();
}

void ImageLabel::setImage(const QIcon &image) {
    image_ = image;
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
    QPainter painter(this);
    image_.paint(&painter, rect());
}

}  // namespace platform
