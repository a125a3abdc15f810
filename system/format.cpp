#include "system/format.h"

#include <array>
#include <cstdarg>
#include <cstdio>

#include "system/exception.h"

using namespace Qt::StringLiterals;

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

QString objectAtIndex(const QStringList &list, qsizetype index) {
    if (index < 0 || index >= list.size()) {
        throw Exception(u"Index %1 is beyond a list of %2"_s.arg(index).arg(list.size()));
    }
    return list.at(index);
}

}  // namespace platform
