#include "platform/levelindicator.h"

#include <QPainter>

#include "platform/theme.h"

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
    value_ = value;
    describe();
    update();
}

void LevelIndicator::setMaxValue(double maximum) {
    setMaximum(qRound(maximum));
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
    // Few segments are read one by one, many as a whole.
    const double segment = maximum() > 3 ? 2 : 3;
    const double unit = theme::unit(*this);
    return QSizeF(unit * segment * qMax(3, maximum()), unit * 1.25).toSize();
}

QSize LevelIndicator::minimumSizeHint() const {
    const double unit = theme::unit(*this);
    return QSizeF(unit * qMax(3, maximum()), unit * 1.25).toSize();
}

void LevelIndicator::paintEvent(QPaintEvent *) {
    const int segments = maximum();
    if (segments <= 0) {
        return;
    }
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double gap = theme::unit(*this) / (segments > 10 ? 4 : 2);
    const double width = (this->width() + gap) / segments - gap;
    const double radius = qMin(width, double(height())) / 3;
    constexpr double outlineWidth = 1.5;
    constexpr double inset = outlineWidth / 2;
    for (int segment = 0; segment < segments; ++segment) {
        const double x = segment * (width + gap);
        const QRectF box = QRectF(x, 0, width, height()).adjusted(inset, inset, -inset, -inset);
        const bool filled = segment < value_;
        painter.setPen(
            QPen(filled ? theme::accent(palette()) : theme::outline(palette()), outlineWidth));
        painter.setBrush(filled ? QBrush(theme::accent(palette())) : Qt::NoBrush);
        painter.drawRoundedRect(box, radius, radius);
    }
}

}  // namespace platform
