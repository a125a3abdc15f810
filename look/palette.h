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
/// Text that explains other text.
QColor secondaryText(const QPalette &palette);
/// A border that carries meaning: its contrast is at least 3 to 1 on every fill.
QColor outline(const QPalette &palette);

/// The faint border of a surface.
QColor hairline(const QPalette &palette);

/// How opaque a disabled control is.
inline constexpr double disabledOpacity = 0.5;

/// What a panel is filled with: Window on a panel within a panel. Band is dark, for white text.
enum class Fill {
    None,
    Window,
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
