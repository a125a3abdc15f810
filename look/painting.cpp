#include "look/painting.h"

#include <QPainter>
#include <QPen>

namespace platform::look {

namespace {

QPen borderPen(const QPalette &palette, Border border, double unit) {
    switch (border) {
        case Border::None:
            break;
        case Border::Hairline:
            return {hairline(palette), 1};
        case Border::Outline:
            return {outline(palette), borderWidth * unit};
        case Border::Accent:
            return {accent(palette), borderWidth * unit};
        case Border::Focus:
            return {accent(palette), focusWidth * unit};
    }
    return Qt::NoPen;
}

/// `rect` with its edges on whole device pixels.
QRectF snapped(const QPainter &painter, const QRectF &rect) {
    const QTransform toDevice = painter.deviceTransform();
    const QRectF there = toDevice.mapRect(rect);
    const QPointF topLeft(qRound(there.left()), qRound(there.top()));
    const QPointF bottomRight(qRound(there.right()), qRound(there.bottom()));
    return toDevice.inverted().mapRect(QRectF(topLeft, bottomRight));
}

}  // namespace

void paintPanel(QPainter &painter, const QPalette &palette, const Panel &panel) {
    QPen pen = borderPen(palette, panel.border, panel.unit);
    double width = 0;
    if (pen.style() != Qt::NoPen) {
        const double pixel = 1 / painter.deviceTransform().m11();
        const double pixels = pen.widthF() / pixel;
        // A hairline is rounded down: it must never be wider than a border that carries meaning.
        width = qMax(1, panel.border == Border::Hairline ? int(pixels) : qRound(pixels)) * pixel;
        pen.setWidthF(width);
    }
    const QRectF outer = snapped(painter, panel.rect);
    const auto draw = [&](double inset, const QPen &outline, const QBrush &inside) {
        const double radius = panel.radius * panel.unit - inset;
        painter.setPen(outline);
        painter.setBrush(inside);
        painter.drawRoundedRect(outer.adjusted(inset, inset, -inset, -inset), radius, radius);
    };
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor inside = fillColor(palette, panel.fill);
    if (inside.alpha() == 0) {
        draw(width / 2, pen, Qt::NoBrush);
    } else {
        // Two fills, one on the other: drawing a line takes several times as long as filling.
        if (width > 0) {
            draw(0, Qt::NoPen, pen.color());
        }
        draw(width, Qt::NoPen, inside);
    }
    painter.restore();
}

Panel controlPanel(const QStyleOption &option, const QRectF &rect) {
    return {.rect = rect,
            .unit = look::unit(option),
            .radius = controlRadius,
            .fill = Fill::None,
            .border = Border::None};
}

void paintGlyph(QPainter &painter, const QRectF &square, double unit, Glyph glyph,
                const QColor &color) {
    const auto at = [&](double x, double y) {
        return QPointF(square.x() + x * square.width(), square.y() + y * square.height());
    };
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, glyphWidth * unit, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    switch (glyph) {
        case Glyph::Tick:
            painter.drawPolyline(QPolygonF{at(0.27, 0.53), at(0.43, 0.69), at(0.73, 0.34)});
            break;
        case Glyph::Cross:
            painter.drawLine(at(0.32, 0.32), at(0.68, 0.68));
            painter.drawLine(at(0.68, 0.32), at(0.32, 0.68));
            break;
        case Glyph::Chevron:
            painter.drawPolyline(QPolygonF{at(0.4, 0.25), at(0.65, 0.5), at(0.4, 0.75)});
            break;
    }
    painter.restore();
}

}  // namespace platform::look
