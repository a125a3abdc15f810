#include "controls/rowbutton.h"

#include <QMouseEvent>
#include <QPainter>
#include <QtMath>

#include "controls/buttonrow.h"
#include "look/theme.h"

namespace platform {

RowButton::RowButton(const QString &text, QWidget *parent) : RowButton(parent) {
    setText(text);
}

QSize RowButton::sizeHint() const {
    const int side = qRound(theme::unit(*this) * theme::smallestTarget);
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
    const ButtonRow &row = ButtonRow::around(*this);
    const bool right = row.standing() == Standing::Right;
    if (!isEnabled() && !right) {
        painter.setOpacity(theme::disabledOpacity);
    }
    const QColor text = palette().color(QPalette::Active, QPalette::WindowText);
    if (!badge_) {
        painter.setPen(text);
        painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter, this->text());
        return;
    }
    const bool filled = right || isDown() || row.isLit();
    theme::paintPanel(painter, palette(),
                      {.rect = rect(),
                       .unit = theme::unit(*this),
                       .radius = theme::controlRadius,
                       .ground = filled ? theme::Ground::Accent : theme::Ground::None,
                       .edge = filled ? theme::Edge::None : theme::Edge::Outline});
    painter.setPen(filled ? theme::onAccent(palette()) : text);
    painter.drawText(rect(), Qt::AlignCenter, this->text());
}

}  // namespace platform
