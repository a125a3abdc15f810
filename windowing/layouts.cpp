#include "windowing/layouts.h"

#include <QStringList>

#include "system/exception.h"

using namespace Qt::StringLiterals;

namespace platform {

LayoutTable &layouts() {
    static LayoutTable table;
    return table;
}

LayoutBuilder layoutNamed(const QString &name) {
    const auto found = layouts().find(name);
    if (found != layouts().end()) {
        return found->second;
    }
    QStringList known;
    for (const auto &[knownName, builder] : layouts()) {
        known << knownName;
    }
    throw Exception(u"No layout \"%1\"; there are: %2"_s.arg(name, known.join(u", "_s)));
}

}  // namespace platform
