#pragma once

class QFont;
class QWidget;

/// Every size of the look, in units that follow from the font. docs/design-language.md gives the
/// reasons.
namespace platform::look {

/// The unit of the rhythm in pixels, for text of `widget`'s font: half a line, eight pixels where
/// a line has sixteen.
double unit(const QWidget &widget);

/// How wide a character is meant to be, in pixels: what widths of texts are counted in. It follows
/// from the size of the font alone: the average that a font states may be anything.
double characterWidth(const QFont &font);

/// Gives the font `times` the size of the other.
void setSize(QFont &font, const QFont &other, double times = 1);

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

}  // namespace platform::look
