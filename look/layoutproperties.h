#pragma once

#include <array>

/// The properties that a layout may give to any control, beside those that the control's own class
/// declares. One that is neither is logged when the layout is loaded.
namespace platform::layoutproperties {

/// On a button or menu item: the method that it calls.
inline constexpr auto action = "action";
/// On a button: the keys that press it, separated by blanks, such as "A 1".
inline constexpr auto shortcuts = "shortcuts";
/// On the window: whether Escape closes it.
inline constexpr auto escapeCloses = "escapeCloses";
/// On the window: whether it is on screen before windowDidLoad(), so that an alert raised there
/// appears over it.
inline constexpr auto visibleAtLoad = "visibleAtLoad";
/// On a menu: whether it lists the open windows below its own items.
inline constexpr auto listsWindows = "listsWindows";
/// "title", "heading", "question" or "caption"; without it a text is body text.
inline constexpr auto textStyle = "textStyle";
/// The margins around and the gaps between what stands in a widget: "window", "flush", "section",
/// "panel", "row", "step", "list", "edge", "page", "text" or "foot"; without it, plain gaps.
inline constexpr auto spacing = "spacing";
/// Whether a control keeps its room while it is hidden.
inline constexpr auto keepsRoom = "keepsRoom";
/// The greatest width, in characters as look::characterWidth() counts them.
inline constexpr auto widest = "widest";

inline constexpr std::array all{action,    shortcuts, escapeCloses, visibleAtLoad, listsWindows,
                                textStyle, spacing,   keepsRoom,    widest};

}  // namespace platform::layoutproperties
