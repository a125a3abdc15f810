#pragma once

#include <QString>

namespace platform {

/// Writes `text` to standard error as a line of its own.
void log(const QString &text);

}  // namespace platform
