#pragma once

#include <QColor>
#include <QPalette>
#include <QPen>

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
/// The same, with a breath of the accent.
QColor prominentSurface(const QPalette &palette);
/// The quiet edge of a surface.
QColor hairline(const QPalette &palette);
/// The edge of something that carries meaning, at least 3 to 1 on a surface.
QColor outline(const QPalette &palette);
/// The dark band behind white text.
QColor band(const QPalette &palette);

/// The least height of anything that can be pressed, in units.
inline constexpr double smallestTarget = 4.5;

/// The eight-unit of the rhythm in pixels, for text of `widget`'s font.
double unit(const QWidget &widget);

/// What draws the focus around a control.
QPen focusPen(const QPalette &palette);

/// How the edge of a panel is drawn.
enum class Edge { Resting, Lit, Focused };
/// Draws the rounded panel that fills `widget`. To be called from its paint event.
void paintPanel(QWidget &widget, const QColor &ground, Edge edge);

/// Gives a window that was just built from its layout its type scale, scales the layout's
/// distances, which are written for a unit of eight pixels, to the font, and makes every button
/// large enough to hit. Layouts say by property what else a control needs:
///   textStyle  title, heading, question or caption
///   keepsRoom  keeps its room while it is hidden
///   widest     is never wider than so many average characters
void dress(QWidget &window);

}  // namespace platform::theme
