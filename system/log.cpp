#include "system/log.h"

#include <cstdio>

namespace platform {

void log(const QString &text) {
    const QByteArray line = text.toUtf8() + '\n';
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stderr);
    std::fflush(stderr);
}

}  // namespace platform
