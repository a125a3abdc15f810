#pragma once

#include <array>

#include <QKeyCombination>

/// The keys that a walk types.
namespace keys {

inline constexpr std::array shortcuts{
    Qt::CTRL | Qt::Key_0, Qt::CTRL | Qt::Key_1,        Qt::CTRL | Qt::Key_2,
    Qt::CTRL | Qt::Key_3, Qt::CTRL | Qt::Key_4,        Qt::CTRL | Qt::Key_5,
    Qt::CTRL | Qt::Key_6, Qt::CTRL | Qt::Key_7,        Qt::CTRL | Qt::Key_Comma,
    Qt::CTRL | Qt::Key_W, QKeyCombination(Qt::Key_F1),
};

inline constexpr std::array plain{
    Qt::Key_A,       Qt::Key_B,      Qt::Key_C,        Qt::Key_1,     Qt::Key_2,
    Qt::Key_3,       Qt::Key_0,      Qt::Key_4,        Qt::Key_9,     Qt::Key_Return,
    Qt::Key_Enter,   Qt::Key_Return, Qt::Key_Tab,      Qt::Key_Space, Qt::Key_Tab,
    Qt::Key_Backtab, Qt::Key_Escape, Qt::Key_Up,       Qt::Key_Down,  Qt::Key_Left,
    Qt::Key_Right,   Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Home,  Qt::Key_End,
};

/// Those that mean nothing anywhere.
inline constexpr std::array idle{
    QKeyCombination(Qt::Key_X),
    QKeyCombination(Qt::Key_F5),
    QKeyCombination(Qt::Key_Insert),
    QKeyCombination(Qt::Key_Shift),
    Qt::CTRL | Qt::Key_K,
    Qt::CTRL | Qt::Key_9,
    Qt::SHIFT | Qt::Key_F1,
    QKeyCombination(Qt::Key_Question),
};

}  // namespace keys
