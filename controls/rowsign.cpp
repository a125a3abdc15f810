#include "controls/rowsign.h"

#include <QPainter>

#include "controls/buttonrow.h"
#include "look/theme.h"

namespace platform {

RowSign::RowSign(QWidget *parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize RowSign::sizeHint() const {
    const int side = qRound(theme::signSize * theme::unit(*this));
    return {side, side};
}

void RowSign::paintEvent(QPaintEvent *) {
    const double unit = theme::unit(*this);
    const Standing standing = ButtonRow::around(*this).standing();
    const bool filled =
        standing == Standing::Next || standing == Standing::Done || standing == Standing::Right;
    const bool crossed = standing == Standing::Wrong;
    if (!filled && !crossed && label_.isEmpty()) {
        return;
    }
    QPainter painter(this);
    if (!crossed) {
        theme::paintPanel(painter, palette(),
                          {.rect = rect(),
                           .unit = unit,
                           .radius = theme::signSize / 2,
                           .ground = filled ? theme::Ground::Accent : theme::Ground::None,
                           .edge = filled ? theme::Edge::None : theme::Edge::Outline});
    }
    const QColor ink = filled ? theme::onAccent(palette()) : palette().color(foregroundRole());
    if (standing == Standing::Done || standing == Standing::Right) {
        theme::paintSign(painter, rect(), unit, theme::Sign::Tick, ink);
    } else if (crossed) {
        theme::paintSign(painter, rect(), unit, theme::Sign::Cross, ink);
    } else {
        painter.setPen(ink);
        painter.drawText(rect(), Qt::AlignCenter, label_);
    }
}

}  // namespace platform
