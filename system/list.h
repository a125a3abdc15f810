#pragma once

#include <QStringList>

namespace platform {

/// The entry at `index`; raises Exception where the list has none.
QString objectAtIndex(const QStringList &list, qsizetype index);

}  // namespace platform
