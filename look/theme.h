#pragma once

#include <functional>

#include <QColor>
#include <QPalette>

class QFont;
class QPainter;
class QWidget;

/// The look that all windows share: every colour is derived from the live palette, every size
/// from the font. docs/design-language.md gives the reasons.
namespace platform::look {

/// The one colour of our own: what is earned, what is meant, where the focus is.
QColor accent(const QPalette &palette);
/// Text and glyphs on the accent.
QColor onAccent(const QPalette &palette);
/// Text that explains other text.
QColor secondaryText(const QPalette &palette);
/// A border that carries meaning: at least 3 to 1 on every fill.
QColor outline(const QPalette &palette);

/// How opaque a thing is that cannot be used.
inline constexpr double disabledOpacity = 0.5;

// Sizes in units.

/// The least height of anything that can be pressed.
inline constexpr double smallestTarget = 4.5;
/// The status icon of a row.
inline constexpr double statusIconSize = 3.5;
/// A key in a text that names keys.
inline constexpr double keyHeight = 2.8;
inline constexpr double keyPadding = 0.7;
inline constexpr double keyRadius = 0.5;
inline constexpr double keyGap = 0.4;
/// The circle of an option, and a scroll bar.
inline constexpr double optionSize = 2.2;
inline constexpr double scrollBarWidth = 2;
/// Strokes: the border of a control, and a tick or a cross.
inline constexpr double borderWidth = 0.14;
inline constexpr double glyphWidth = 0.3;
inline constexpr double focusWidth = 0.35;
/// Between the focus and a fill that it would not be seen on.
inline constexpr double focusGap = 0.3;
/// Around the lines of code in a text, and beside the text on a band.
inline constexpr double codeSideMargin = 1.5;
inline constexpr double codeEndMargin = 1;
inline constexpr double bandSideMargin = 2;
/// The segments of a level: a filled one is a block, an empty one a line. Few are read one by one
/// and are wide, many as a whole.
inline constexpr double wideSegment = 3;
inline constexpr double narrowSegment = 2;
inline constexpr double leastSegment = 1;
inline constexpr double segmentHeight = 1;
inline constexpr double emptySegmentHeight = 0.3;
inline constexpr double segmentGap = 0.5;
inline constexpr double segmentRadius = 0.25;
/// How round the corners of panels and of the controls in them are.
inline constexpr double panelRadius = 1.25;
inline constexpr double controlRadius = 0.8;

/// The unit of the rhythm in pixels, for text of `widget`'s font: half a line, eight pixels where
/// a line has sixteen.
double unit(const QWidget &widget);

/// How wide a character is meant to be, in pixels: what widths of texts are counted in. It follows
/// from the size of the font alone: the average that a font states may be anything.
double characterWidth(const QFont &font);

/// Gives the font `times` the size of the other.
void setSize(QFont &font, const QFont &other, double times = 1);

/// What a panel is made of; Band is dark, for white text.
enum class Fill {
    None,
    Surface,
    Hovered,
    Pressed,
    Prominent,
    Accent,
    HoveredAccent,
    Outline,
    Band
};
/// How its border is drawn.
enum class Border { None, Hairline, Outline, Accent, Focus };

/// A rounded rectangle whose edges lie on whole pixels of the device.
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
/// The colour of that fill, for shapes that are no panels.
QColor fillColor(const QPalette &palette, Fill fill);

/// Signs that are told apart by their shape, within a square.
enum class Glyph { Tick, Cross };
void paintGlyph(QPainter &painter, const QRectF &square, double unit, Glyph glyph,
                const QColor &color);

/// Gives a window its type scale and its distances, and makes every button large enough to hit; the
/// same however often it is done. Layouts say by property what a control needs:
///   textStyle  title, heading, question, caption, or nothing for body text
///   spacing    margins around and gaps between what stands in it: window, flush, section, panel,
///              row, step, list, edge, page, text, foot, or nothing for plain gaps
///   keepsRoom  keeps its room while it is hidden
///   widest     is never wider than so many characters
void polish(QWidget &window);

/// Dresses a window, and again whenever its font, its style or the resolution of its screen has
/// changed; `polishedAgain` is called after each of these times.
void keepPolished(QWidget &window, std::function<void()> polishedAgain = {});

}  // namespace platform::look
