#pragma once

#include <QColor>
#include <QPalette>

class QFont;
class QPainter;
class QRectF;
class QWidget;

/// The look that all windows share: every colour is derived from the live palette, every size
/// from the font.
namespace platform::theme {

/// The one colour of our own: level segments, the focus, what is under the pointer.
QColor accent(const QPalette &palette);
/// Text on the accent.
QColor onAccent(const QPalette &palette);
/// What rows and panels are made of.
QColor surface(const QPalette &palette);
/// The quiet edge of a surface.
QColor hairline(const QPalette &palette);
/// The edge of something that carries meaning, at least 3 to 1 on a surface.
QColor outline(const QPalette &palette);
/// The dark band behind white text.
QColor band(const QPalette &palette);

/// The eight-unit of the rhythm in pixels, for text of `widget`'s font.
double unit(const QWidget &widget);

/// Gives a window that was just built from its layout its type scale (the property "textStyle":
/// title, heading, question or caption) and scales the layout's distances, which are written for
/// an eight-pixel unit, to the font.
void dress(QWidget &window);

}  // namespace platform::theme
