#include "platform/rowbutton.h"

#include <QMouseEvent>
#include <QPainter>

#include "platform/theme.h"

namespace platform {

QSize RowButton::sizeHint() const {
    const int side = qRound(theme::unit(*this) * theme::smallestTarget);
    if (badge_) {
        return {side, side};
    }
    return {fontMetrics().horizontalAdvance(text()) + side / 4, side};
}

QSize RowButton::minimumSizeHint() const {
    return sizeHint();
}

void RowButton::mouseDoubleClickEvent(QMouseEvent *event) {
    event->ignore();
}

void RowButton::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(isEnabled() ? 1.0 : 0.5);
    const QColor text = palette().color(QPalette::Active, QPalette::WindowText);
    if (!badge_) {
        painter.setPen(text);
        painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter, this->text());
        return;
    }
    const bool lit = isEnabled() && (isDown() || hasFocus() || parentWidget()->underMouse());
    const double radius = theme::unit(*this);
    const QColor accent = theme::accent(palette());
    painter.setPen(QPen(lit ? accent : theme::outline(palette()), 1.5));
    painter.setBrush(lit ? QBrush(accent) : Qt::NoBrush);
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), radius, radius);
    painter.setPen(lit ? theme::onAccent(palette()) : text);
    painter.drawText(rect(), Qt::AlignCenter, this->text());
}

}  // namespace platform
