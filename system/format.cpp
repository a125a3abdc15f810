#include "system/format.h"

#include <cstdarg>
#include <cstdio>

#include <QByteArray>

namespace platform {

// NOLINTNEXTLINE(cert-dcl50-cpp): the compiler checks each call against its format
QString stringWithFormat(const char *format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::va_list again;
    va_copy(again, arguments);
    QByteArray text(qMax(std::vsnprintf(nullptr, 0, format, arguments), 0), '\0');
    std::vsnprintf(text.data(), static_cast<std::size_t>(text.size()) + 1, format, again);
    va_end(again);
    va_end(arguments);
    return QString::fromUtf8(text);
}

}  // namespace platform
