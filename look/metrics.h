#pragma once

class QFont;
class QStyleOption;
class QWidget;

/// Every size in the look, in units derived from the font. docs/design-language.md gives the
/// reasons.
namespace platform::look {

/// The unit of all sizes in pixels, for the font of a widget or of what is drawn: half the height
/// of a line, so eight pixels if a line has sixteen.
double unit(const QWidget &widget);
double unit(const QStyleOption &option);

/// The nominal width of a character in pixels, in which widths of texts are counted. It depends
/// only on the size of the font, because the average width that a font states is not reliable.
double characterWidth(const QFont &font);

/// Sets the font's size to `times` the size of the other.
void setSize(QFont &font, const QFont &other, double times = 1);

// Sizes in units.

/// The minimum height of anything that can be pressed.
inline constexpr double smallestTarget = 4.5;
/// The status icon of a row.
inline constexpr double statusIconSize = 3.5;
/// The icon beside a message.
inline constexpr double messageIconSize = 8;
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
/// Between the focus ring and a fill on which it would not be visible.
inline constexpr double focusGap = 0.3;
/// Around a question on its panel.
inline constexpr double questionMargin = 2;
/// Around the lines of code in a text, and beside the text on a band.
inline constexpr double codeSideMargin = 1.5;
inline constexpr double codeEndMargin = 1;
inline constexpr double bandSideMargin = 2;
/// Menus. An item's highlight is inset from the menu, and its text from the highlight.
inline constexpr double menuItemHeight = 3.25;
inline constexpr double menuSeparatorHeight = 1.1;
inline constexpr double menuInset = 0.5;
inline constexpr double menuPadding = 1.25;
inline constexpr double menuMarkSize = 2;
inline constexpr double menuGlyphScale = 0.7;
inline constexpr double menuShortcutGap = 4;
inline constexpr double menuBarItemHeight = 3.4;
inline constexpr double menuBarPadding = 1;
/// The segments of a level: a filled one is a block, an empty one a line. A few segments are wide,
/// to be read one by one; many are narrow, to be read as a whole.
inline constexpr double wideSegment = 3;
inline constexpr double narrowSegment = 2;
inline constexpr double leastSegment = 1;
inline constexpr double segmentHeight = 1;
inline constexpr double emptySegmentHeight = 0.3;
inline constexpr double segmentGap = 0.5;
inline constexpr double segmentRadius = 0.25;
/// The corner radius of panels and of the controls in them.
inline constexpr double panelRadius = 1.25;
inline constexpr double controlRadius = 0.8;

}  // namespace platform::look
