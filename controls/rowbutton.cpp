#include "controls/rowbutton.h"

#include <QMouseEvent>
#include <QPainter>
#include <QtMath>

#include "controls/actionrow.h"
#include "look/metrics.h"
#include "look/painting.h"
#include "look/palette.h"

namespace platform {

RowButton::RowButton(const QString &text, QWidget *parent) : RowButton(parent) {
    setText(text);
}

QSize RowButton::sizeHint() const {
    const int side = qRound(look::unit(*window()) * look::smallestTarget);
    return {badge_ ? side : qCeil(QFontMetricsF(font()).horizontalAdvance(text())), side};
}

QSize RowButton::minimumSizeHint() const {
    return sizeHint();
}

void RowButton::mouseDoubleClickEvent(QMouseEvent *event) {
    event->ignore();
}

void RowButton::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    const ActionRow &row = ActionRow::around(*this);
    const bool right = row.state() == RowState::Right;
    const bool faded = !isEnabled() && !right;
    if (faded) {
        painter.setOpacity(look::disabledOpacity);
    }
    const QColor text = faded ? look::fadedText(palette()) : look::text(palette());
    if (!badge_) {
        painter.setPen(text);
        painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter, this->text());
        return;
    }
    const bool filled = right || isDown() || row.isHovered();
    look::paintPanel(painter, palette(),
                     {.rect = rect(),
                      .unit = look::unit(*this),
                      .radius = look::controlRadius,
                      .fill = filled ? look::Fill::Accent : look::Fill::None,
                      .border = filled ? look::Border::None : look::Border::Outline});
    painter.setPen(filled ? look::onAccent(palette()) : text);
    painter.drawText(rect(), Qt::AlignCenter, this->text());
}

}  // namespace platform
