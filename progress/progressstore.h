#pragma once

#include <QString>
#include <QStringView>

/// What the program remembers between runs: eleven keys of the preferences, whose values are
/// short texts that are only ever compared with literals, never converted to numbers.
namespace progressstore {

/// The quiz chosen last, "1" to "7"; "0" after seeding or clearing.
inline const QString currentTest = QStringLiteral("currentTest");
/// How the last finished attempt ended, "pass" or "fail"; "0" after seeding or clearing.
inline const QString currentStatus = QStringLiteral("currentStatus");
/// "quiz1" to "quiz7": how often that quiz was passed, "0" to "3"; "3" means mastered.
QString passCount(QStringView quizId);
/// Whether quizzes run against the clock, "yes" or "no"; absent, and "no", until chosen.
inline const QString timedQuizzes = QStringLiteral("timedQuizzes");
/// "false"; its presence alone tells that the store was seeded.
inline const QString firstRun = QStringLiteral("firstRun");

/// Writes the first value of every key but timedQuizzes.
void seed();

/// A quiz's pass count as a level, 0 to 3; a count other than "1", "2" or "3" is 0.
float passLevel(QStringView quizId);

}  // namespace progressstore
