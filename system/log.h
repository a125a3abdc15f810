#pragma once

#include <QString>

namespace platform {

/// Writes `text` to standard error on a line of its own. On Windows, where a program with windows
/// has a standard error only if somebody redirects it, a debugger shows the line too.
void log(const QString &text);

}  // namespace platform
