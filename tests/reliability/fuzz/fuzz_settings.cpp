#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include <QString>

#include "trial.h"

/// Edits the settings files that the fuzzer makes up, and ends with the first of which it loses
/// something.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    // Qt tells of every value that it cannot make anything of.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    const QByteArray input(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QByteArray fault = faultIn(input);
    if (!fault.isEmpty()) {
        std::fwrite(fault.constData(), 1, static_cast<std::size_t>(fault.size()), stderr);
        std::abort();
    }
    return 0;
}
