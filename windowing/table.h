#pragma once

#include <map>

#include <QString>
#include <QStringList>

#include "system/exception.h"

namespace platform {

/// Entries by name.
template <class Entry>
using Table = std::map<QString, Entry>;

/// The entry of that name. Throws Exception if there is none, with a list of the names that there
/// are; `kind` says what the table holds, such as "layout".
template <class Entry>
const Entry &entryNamed(const QString &name, const Table<Entry> &table, const QString &kind) {
    const auto found = table.find(name);
    if (found == table.end()) {
        QStringList names;
        for (const auto &[known, entry] : table) {
            names << known;
        }
        throw Exception(QStringLiteral("No %1 \"%2\"; there are: %3")
                            .arg(kind, name, names.join(QStringLiteral(", "))));
    }
    return found->second;
}

}  // namespace platform
