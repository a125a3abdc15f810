#pragma once

#include <QString>

namespace platform {

/// Writes `text` to standard error on a line of its own.
void log(const QString &text);

}  // namespace platform
