#pragma once

#include <optional>

#include <QList>
#include <QMap>
#include <QString>

/// The test's own view of the preferences, read and written without the program's code.
namespace store {

using Contents = QMap<QString, QString>;

/// What the store holds, key by key; empty if there is none.
Contents contents();
/// The text under `key`; nothing if it is absent.
std::optional<QString> value(const QString &key);

/// Makes the store hold exactly this.
void fill(const Contents &contents);
/// Adds or replaces one key.
void set(const QString &key, const QString &value);
/// Removes the store.
void wipe();
/// What a store holds after the first start.
Contents seeded();

struct Write {
    QString key;
    QString value;
    bool operator==(const Write &) const = default;
};

/// Every write that the program has asked for since forgetWrites(), in order.
QList<Write> writes();
void forgetWrites();

}  // namespace store
