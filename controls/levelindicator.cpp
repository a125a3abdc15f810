#include "controls/levelindicator.h"

#include <QPainter>

#include "look/metrics.h"
#include "look/palette.h"

using namespace Qt::StringLiterals;

namespace platform {

LevelIndicator::LevelIndicator(QWidget *parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void LevelIndicator::setCaption(const QString &caption) {
    caption_ = caption;
    describe();
}

void LevelIndicator::setCounted(const QString &counted) {
    counted_ = counted;
    describe();
}

void LevelIndicator::setDoubleValue(double value) {
    if (value == value_) {
        return;
    }
    value_ = value;
    describe();
    update();
}

void LevelIndicator::setMaximum(int maximum) {
    maximum_ = maximum;
    updateGeometry();
    describe();
    update();
}

QString LevelIndicator::valueInWords() const {
    return u"%1 of %2 %3"_s.arg(qRound(value_)).arg(maximum()).arg(counted_);
}

void LevelIndicator::describe() {
    const QString words = valueInWords();
    setAccessibleName(u"%1, %2"_s.arg(caption_, words));
    Q_EMIT valueInWordsChanged(words);
}

QSize LevelIndicator::sizeHint() const {
    const double segment = maximum() > 3 ? look::narrowSegment : look::wideSegment;
    const double unit = look::unit(*this);
    return QSizeF(unit * segment * qMax(3, maximum()), unit * look::segmentHeight).toSize();
}

QSize LevelIndicator::minimumSizeHint() const {
    const double unit = look::unit(*this);
    return QSizeF(unit * look::leastSegment * qMax(3, maximum()), unit * look::segmentHeight)
        .toSize();
}

void LevelIndicator::paintEvent(QPaintEvent *) {
    const int segments = maximum();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    // In whole device pixels, so that every edge is sharp at every scale.
    const QTransform toDevice = painter.deviceTransform();
    const QRect area = toDevice.mapRect(QRectF(rect())).toRect();
    const double unit = look::unit(*this) * toDevice.m11();
    const int gap = qMax(1, qRound(unit * look::segmentGap));
    const int line = qMax(1, qRound(unit * look::emptySegmentHeight));
    const int length = area.width() - gap * (segments - 1);
    painter.setWorldTransform(toDevice.inverted() * painter.worldTransform());
    for (int segment = 0; segment < segments; ++segment) {
        const int left = segment * length / segments;
        const int right = (segment + 1) * length / segments;
        QRect box(area.left() + segment * gap + left, area.top(), right - left, area.height());
        if (segment < value_) {
            const double radius = unit * look::segmentRadius;
            painter.setBrush(look::accent(palette()));
            painter.drawRoundedRect(box, radius, radius);
        } else {
            box.setTop(box.top() + (box.height() - line) / 2);
            box.setHeight(line);
            painter.fillRect(box, look::outline(palette()));
        }
    }
}

}  // namespace platform
