#pragma once

#include <QRectF>

#include "look/metrics.h"
#include "look/palette.h"

class QPainter;
class QStyleOption;

namespace platform::look {

/// How the border of a panel is drawn.
enum class Border { None, Hairline, Outline, Accent, Focus };

/// A rounded rectangle whose edges lie on whole device pixels.
struct Panel {
    /// In pixels.
    QRectF rect;
    double unit = 8;
    /// In units.
    double radius = panelRadius;
    Fill fill = Fill::Surface;
    Border border = Border::Hairline;
};
void paintPanel(QPainter &painter, const QPalette &palette, const Panel &panel);

/// The panel of a control, without a fill and a border. `rect` is in pixels.
Panel controlPanel(const QStyleOption &option, const QRectF &rect);

/// Glyphs are told apart by shape, and are drawn within a square.
enum class Glyph { Tick, Cross, Chevron };
void paintGlyph(QPainter &painter, const QRectF &square, double unit, Glyph glyph,
                const QColor &color);

}  // namespace platform::look
