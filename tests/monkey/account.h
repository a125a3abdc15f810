#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

/// How often a walk reached each thing.
class Account final {
 public:
    /// Makes it something that a long walk has to reach.
    void expect(const QString &thing) { counts_[thing]; }
    void count(const QString &thing, int times = 1) { counts_[thing] += times; }

    QStringList missing() const { return counts_.keys(0); }

    QString table() const {
        QString table;
        for (auto entry = counts_.begin(); entry != counts_.end(); ++entry) {
            table += QStringLiteral("%1  %2\n").arg(entry.value(), 8).arg(entry.key());
        }
        return table;
    }

 private:
    QMap<QString, int> counts_;
};
