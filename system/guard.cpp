#include "system/guard.h"

#include <exception>

#include "system/log.h"

using namespace Qt::StringLiterals;

namespace platform {

void runGuarded(const std::function<void()> &body) {
    try {
        body();
    } catch (const std::exception &exception) {
        const QString what = QString::fromUtf8(exception.what()).simplified();
        log(u"Uncaught exception: %1"_s.arg(what));
    } catch (...) {
        log(u"Uncaught exception of an unknown class"_s);
    }
}

}  // namespace platform
