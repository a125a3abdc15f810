#pragma once

#include <QString>

namespace platform {

/// Formats text by the C library's printf rules: "%.0f" rounds exact halves to even, which Qt's
/// own formatting does not do.
QString stringWithFormat(const char *format, ...) Q_ATTRIBUTE_FORMAT_PRINTF(1, 2);

}  // namespace platform
