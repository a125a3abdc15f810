#pragma once

#include <QByteArray>

/// Reads and edits a settings file, and returns an account of what is wrong with that; empty if
/// nothing is.
///
/// The first line of the input tells which values to write, all else is the file. Each byte names a
/// key: 1 to 7 the quizzes, and 8 9 : ; the others. The text of a key is the number of times that
/// it is named. What follows an equals sign is the text of the last key instead, where | stands for
/// a line break; if nothing follows, what was read is written back.
QByteArray faultIn(const QByteArray &input);
