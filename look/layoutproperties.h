#pragma once

#include <array>

/// The properties that a layout may set on any control, besides those that the control's class
/// declares. Any other property is logged when the layout is loaded.
namespace platform::layoutproperties {

/// On a button or menu item: the method that it calls.
inline constexpr auto action = "action";
/// On a button: the keys that press it, separated by spaces, such as "A 1".
inline constexpr auto shortcuts = "shortcuts";
/// On the window: whether Escape closes it.
inline constexpr auto escapeCloses = "escapeCloses";
/// On the window: whether it is on screen before windowDidLoad(), so that an alert raised there
/// appears over it.
inline constexpr auto visibleAtLoad = "visibleAtLoad";
/// On a menu: whether it lists the open windows below its own items.
inline constexpr auto listsWindows = "listsWindows";
/// "title", "heading", "question" or "caption"; without it, text is body text.
inline constexpr auto textStyle = "textStyle";
/// The margins and gaps of a widget's layout: "window", "flush", "section", "panel", "row", "step",
/// "list", "edge", "page", "text", "foot", "dialog", "figures" or "levels"; without it, plain gaps.
inline constexpr auto spacing = "spacing";
/// Whether a control keeps its space while it is hidden.
inline constexpr auto keepsRoom = "keepsRoom";
/// The maximum width, in characters as look::characterWidth() measures them.
inline constexpr auto widest = "widest";

inline constexpr std::array all{action,    shortcuts, escapeCloses, visibleAtLoad, listsWindows,
                                textStyle, spacing,   keepsRoom,    widest};

}  // namespace platform::layoutproperties
