#include "platform/style.h"

#include <QPainter>
#include <QPushButton>
#include <QStyleOption>

#include "platform/theme.h"

namespace platform {

namespace {

void drawFocus(const QStyleOption &option, const QRect &rect, QPainter &painter) {
    const QPen pen = theme::focusPen(option.palette);
    const double inset = pen.widthF() / 2;
    const double radius = option.fontMetrics.height() / 6.0;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(rect).adjusted(inset, inset, -inset, -inset), radius, radius);
    painter.restore();
}

}  // namespace

void Style::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                        const QWidget *widget) const {
    QProxyStyle::drawControl(element, option, painter, widget);
    if (element == CE_PushButton && option->state.testFlag(State_HasFocus)) {
        drawFocus(*option, option->rect, *painter);
    }
}

void Style::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                          const QWidget *widget) const {
    if (element != PE_FrameFocusRect) {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    } else if (qobject_cast<const QPushButton *>(widget) == nullptr) {
        // Not upon the text.
        drawFocus(*option, option->rect.adjusted(-4, -2, 4, 2), *painter);
    }
}

QRect Style::subElementRect(SubElement element, const QStyleOption *option,
                            const QWidget *widget) const {
    return element == SE_RadioButtonClickRect
               ? option->rect
               : QProxyStyle::subElementRect(element, option, widget);
}

}  // namespace platform
