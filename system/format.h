#pragma once

#include <QString>
#include <QStringList>

namespace platform {

/// A text formatted by the C library's printf rules; "%.0f" rounds exact halves to even, which
/// the toolkit's own formatting does not.
QString stringWithFormat(const char *format, ...) Q_ATTRIBUTE_FORMAT_PRINTF(1, 2);

/// The entry at `index`; raises Exception where the list has none.
QString objectAtIndex(const QStringList &list, qsizetype index);

}  // namespace platform
