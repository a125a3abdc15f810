#pragma once

#include <QStringList>

namespace platform {

/// The entry at `index`. Throws Exception if the index is out of range.
QString objectAtIndex(const QStringList &list, qsizetype index);

}  // namespace platform
