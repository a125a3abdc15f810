#include <memory>

#include <QTest>
#include <qt_windows.h>

#include "support/standarderror.h"
#include "support/testmain.h"
#include "system/log.h"

using namespace Qt::StringLiterals;

namespace {

struct Close {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, Close>;

/// Stands in for a debugger: Windows hands over what programs say through these.
struct Debugger {
    static constexpr DWORD size = 4096;

    const Handle ready{CreateEventW(nullptr, FALSE, TRUE, L"DBWIN_BUFFER_READY")};
    const Handle said{CreateEventW(nullptr, FALSE, FALSE, L"DBWIN_DATA_READY")};
    const Handle memory{CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, size,
                                           L"DBWIN_BUFFER")};

    /// The text that was said, after the number of the process that said it.
    QString text() const {
        constexpr DWORD milliseconds = 10'000;
        if (WaitForSingleObject(said.get(), milliseconds) != WAIT_OBJECT_0) {
            return u"(nothing)"_s;
        }
        const void *view = MapViewOfFile(memory.get(), FILE_MAP_READ, 0, 0, size);
        const QString text =
            QString::fromLocal8Bit(static_cast<const char *>(view) + sizeof(DWORD));
        UnmapViewOfFile(view);
        return text;
    }
};

}  // namespace

class tst_debuggerlog final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void lineReachesDebuggerAndStandardError() {
        const StandardError standardError;
        const Debugger debugger;
        platform::log(u"Finished Starting"_s);
        QCOMPARE(debugger.text(), u"Finished Starting\n"_s);
        QCOMPARE(standardError.lines(), QStringList{u"Finished Starting"_s});
    }
};

ZORVAN_TEST(tst_debuggerlog)
#include "tst_debuggerlog.moc"
