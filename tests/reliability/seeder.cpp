#include <cstdio>

#include <QCoreApplication>

#include "progress/progressstore.h"
#include "support/storehome.h"
#include "system/preferences.h"

using namespace Qt::StringLiterals;

/// Clears all progress over and over until it is killed. In between it sets what clearing sets, in
/// the same order but each for itself, to "1". Says when it begins.
int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    StoreHome::join();
    platform::Preferences &preferences = platform::Preferences::standardUserDefaults();
    QStringList keys;
    preferences.setObserver([&keys](const QString &, const QString &key) { keys << key; });
    progressstore::seed();
    preferences.setObserver({});
    std::puts("begins");
    std::fflush(stdout);
    for (;;) {
        for (const QString &key : keys) {
            preferences.setValueForKey(u"1"_s, key);
        }
        progressstore::seed();
    }
}
