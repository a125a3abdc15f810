#pragma once

#include <array>

#include <QStringView>

namespace content {

inline constexpr int questionsInBank = 77;

/// Whether a question switches the third answer button off or leaves it as it is.
enum class ThirdButton { AsItIs, Off };

struct Question {
    int number = 0;
    QStringView text;
    /// The third is empty if the question offers only two.
    std::array<QStringView, 3> answers;
    /// 1, 2 or 3.
    int rightAnswer = 0;
    ThirdButton thirdButton = ThirdButton::AsItIs;
};

/// The question of that number, 1 to 77. Throws std::out_of_range for any other.
const Question &question(int number);

}  // namespace content
