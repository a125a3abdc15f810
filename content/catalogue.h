#pragma once

#include <array>

#include <QString>
#include <QStringList>
#include <QStringView>

namespace content {

/// One of the quizzes that the learner can take.
struct Quiz {
    /// "1" to "7".
    QStringView id;
    QStringView name;
    /// The range of its questions in the bank, by number, both ends included.
    int firstQuestion = 0;
    int lastQuestion = 0;
    /// How many of them one attempt asks.
    int questionCount = 0;

    /// The numbers of its questions as text, ascending.
    QStringList questionNumbers() const;
};

/// The seven quizzes, in the order of their ids.
inline constexpr std::array<Quiz, 7> quizzes{{
    {u"1", u"Terminology", 1, 14, 14},
    {u"2", u"Variables", 15, 33, 19},
    {u"3", u"Methods", 34, 43, 10},
    {u"4", u"Functions", 44, 54, 11},
    {u"5", u"Structure", 55, 61, 7},
    {u"6", u"Syntax", 62, 77, 16},
    {u"7", u"Main Test", 1, 77, 30},
}};

/// The quiz of that id, or null.
const Quiz *quizWithId(QStringView id);

}  // namespace content
