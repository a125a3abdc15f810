#include "windowing/pckeynames.h"

using namespace Qt::StringLiterals;

namespace platform {

bool PcKeyNames::isEmpty() const {
    return false;
}

QString PcKeyNames::translate(const char *, const char *sourceText, const char *, int) const {
    const QByteArrayView name(sourceText);
    return name == "Return" ? u"Enter"_s : name == "Escape" ? u"Esc"_s : QString();
}

}  // namespace platform
