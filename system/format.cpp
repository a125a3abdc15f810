#include "system/format.h"

#include <array>
#include <cstdarg>
#include <cstdio>

namespace platform {

// NOLINTNEXTLINE(cert-dcl50-cpp): the compiler checks each call against its format
QString stringWithFormat(const char *format, ...) {
    std::array<char, 64> text{};
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text.data(), text.size(), format, arguments);
    va_end(arguments);
    return QString::fromUtf8(text.data());
}

}  // namespace platform
