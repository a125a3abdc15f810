#include "system/log.h"

#include <cstdio>

#ifdef Q_OS_WIN
#include <qt_windows.h>
#endif

namespace platform {

void log(const QString &text) {
    const QByteArray line = text.toUtf8() + '\n';
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stderr);
    std::fflush(stderr);
#ifdef Q_OS_WIN
    OutputDebugStringW(qUtf16Printable(text + u'\n'));
#endif
}

}  // namespace platform
