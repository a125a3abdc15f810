#include "windowing/layouts.h"

#include <QByteArrayList>
#include <QMainWindow>

#include "look/layoutproperties.h"
#include "system/log.h"

using namespace Qt::StringLiterals;

namespace platform {

namespace {

void reportUnknownProperties(const QObject &object, const QString &layout) {
    static const QByteArrayList known(layoutproperties::all.begin(), layoutproperties::all.end());
    for (const QByteArray &property : object.dynamicPropertyNames()) {
        // Qt sets dynamic properties of its own.
        if (property.startsWith("_q_") || known.contains(property)) {
            continue;
        }
        log(u"The layout \"%1\" gives \"%2\" the unknown property \"%3\"; there are: %4"_s.arg(
            layout, object.objectName(), QString::fromLatin1(property),
            QString::fromLatin1(known.join(", "))));
    }
}

}  // namespace

Table<LayoutBuilder> &layouts() {
    static Table<LayoutBuilder> table;
    return table;
}

LayoutBuilder layoutNamed(const QString &name) {
    return entryNamed(name, layouts(), u"layout"_s);
}

void fillWindow(QMainWindow &window, LayoutBuilder layout) {
    layout(window);
    reportUnknownProperties(window, window.objectName());
    for (const QObject *object : window.findChildren<QObject *>()) {
        reportUnknownProperties(*object, window.objectName());
    }
}

}  // namespace platform
