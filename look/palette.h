#pragma once

#include <QColor>
#include <QPalette>

/// Every colour of the look, derived from the live palette. docs/design-language.md gives the
/// reasons.
namespace platform::look {

/// The only colour of our own. It marks what is earned, what is chosen or next, and the focus.
QColor accent(const QPalette &palette);
/// Text and glyphs on the accent.
QColor onAccent(const QPalette &palette);
/// What is read: the palette's text, or more than that where a fill would make it harder to read
/// than on the window.
QColor text(const QPalette &palette);
/// Text that explains other text.
QColor secondaryText(const QPalette &palette);
/// Text that is going to be drawn at half opacity.
QColor fadedText(const QPalette &palette);
/// A border that carries meaning: its contrast is at least 3 to 1 on every fill.
QColor outline(const QPalette &palette);

/// The faint border of a surface; with high contrast it is the outline.
QColor hairline(const QPalette &palette);

/// How opaque a disabled control is.
inline constexpr double disabledOpacity = 0.5;

/// What a panel is filled with: Window on a panel within a panel. Band is dark, for white text.
/// Faded is behind what is drawn at half opacity: it is transparent, except on a window on which no
/// such text could be read.
enum class Fill {
    None,
    Window,
    Faded,
    Surface,
    Hovered,
    Pressed,
    Prominent,
    Accent,
    HoveredAccent,
    Outline,
    Band
};
QColor fillColor(const QPalette &palette, Fill fill);

}  // namespace platform::look
