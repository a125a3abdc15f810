#include "system/format.h"

#include <cstdarg>
#include <cstdio>
#include <string>

namespace platform {

// NOLINTNEXTLINE(cert-dcl50-cpp): the compiler checks each call against its format
QString stringWithFormat(const char *format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    std::string text(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, again);
    va_end(again);
    va_end(arguments);
    return QString::fromStdString(text);
}

}  // namespace platform
