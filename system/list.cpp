#include "system/list.h"

#include "system/exception.h"

using namespace Qt::StringLiterals;

namespace platform {

QString objectAtIndex(const QStringList &list, qsizetype index) {
    if (index < 0 || index >= list.size()) {
        throw Exception(u"Index %1 is beyond a list of %2"_s.arg(index).arg(list.size()));
    }
    return list.at(index);
}

}  // namespace platform
