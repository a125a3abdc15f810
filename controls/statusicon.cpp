#include "controls/statusicon.h"

#include <QPainter>

#include "controls/actionrow.h"
#include "look/metrics.h"
#include "look/painting.h"
#include "look/palette.h"

namespace platform {

StatusIcon::StatusIcon(QWidget *parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize StatusIcon::sizeHint() const {
    const int side = qRound(look::statusIconSize * look::unit(*this));
    return {side, side};
}

void StatusIcon::paintEvent(QPaintEvent *) {
    const double unit = look::unit(*this);
    const RowState state = ActionRow::around(*this).state();
    const bool filled =
        state == RowState::Next || state == RowState::Done || state == RowState::Right;
    const bool crossed = state == RowState::Wrong;
    if (!filled && !crossed && label_.isEmpty()) {
        return;
    }
    QPainter painter(this);
    if (!crossed) {
        look::paintPanel(painter, palette(),
                         {.rect = rect(),
                          .unit = unit,
                          .radius = look::statusIconSize / 2,
                          .fill = filled ? look::Fill::Accent : look::Fill::None,
                          .border = filled ? look::Border::None : look::Border::Outline});
    }
    const QColor ink = filled ? look::onAccent(palette()) : look::text(palette());
    if (state == RowState::Done || state == RowState::Right) {
        look::paintGlyph(painter, rect(), unit, look::Glyph::Tick, ink);
    } else if (crossed) {
        look::paintGlyph(painter, rect(), unit, look::Glyph::Cross, ink);
    } else {
        painter.setPen(ink);
        painter.drawText(rect(), Qt::AlignCenter, label_);
    }
}

}  // namespace platform
