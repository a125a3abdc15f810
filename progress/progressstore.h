#pragma once

#include <array>
#include <optional>

#include <QString>
#include <QStringView>

#include "content/catalogue.h"

/// What the program remembers between runs: eleven keys of the preferences, whose values are
/// short texts that are only ever compared with literals, never converted to numbers.
namespace progressstore {

/// The quiz chosen last, "1" to "7"; "0" after seeding or clearing.
inline const QString currentTest = QStringLiteral("currentTest");
/// How the last finished attempt ended, "pass" or "fail"; "0" after seeding or clearing.
inline const QString currentStatus = QStringLiteral("currentStatus");
/// "quiz1" to "quiz7": how often that quiz was passed, "0" to "3"; "3" means mastered.
QString passCountKey(QStringView quizId);
/// Whether quizzes run against the clock, "yes" or "no"; absent, and "no", until chosen.
inline const QString timedQuizzes = QStringLiteral("timedQuizzes");
/// Always "false"; that the key exists tells that the store was seeded.
inline const QString firstRun = QStringLiteral("firstRun");

/// Writes the initial value of every key except timedQuizzes.
void seed();

/// A quiz that was passed this often is mastered, and its count rises no further.
inline constexpr int passesToMaster = 3;

/// How often a quiz was passed, 0 to 3; nothing if the quiz is unknown or the store has no such
/// count.
std::optional<int> passCount(QStringView quizId);
/// Raises the pass count by one, up to 3. Writes nothing if there is none.
void recordPass(QStringView quizId);

/// The pass counts of all quizzes as levels, in the catalogue's order; 0 if there is no count.
std::array<float, content::quizzes.size()> passLevels();

}  // namespace progressstore
