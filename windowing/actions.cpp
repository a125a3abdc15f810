#include "windowing/actions.h"

#include <QAbstractButton>
#include <QAction>
#include <QMetaMethod>

#include "look/layoutproperties.h"
#include "system/exception.h"
#include "system/guard.h"

using namespace Qt::StringLiterals;

namespace platform {

namespace {

QString actionOf(const QObject &control) {
    return control.property(layoutproperties::action).toString();
}

struct Action {
    QObject *target;
    QMetaMethod method;

    void operator()() const {
        runGuarded([this] { method.invoke(target, Qt::DirectConnection); });
    }
};

Action find(const QObject &control, std::initializer_list<QObject *> targets) {
    const QString name = actionOf(control);
    QStringList classes;
    for (QObject *target : targets) {
        const QMetaObject &meta = *target->metaObject();
        const int index = meta.indexOfMethod((name + u"()"_s).toLatin1().constData());
        if (index >= 0) {
            return {target, meta.method(index)};
        }
        classes << QString::fromLatin1(meta.className());
    }
    throw Exception(u"\"%1\" asks for the action \"%2\", which %3 does not have"_s.arg(
        control.objectName(), name, classes.join(u", "_s)));
}

}  // namespace

void connectActions(const QObject &root, std::initializer_list<QObject *> targets) {
    for (const QAbstractButton *button : root.findChildren<QAbstractButton *>()) {
        if (!actionOf(*button).isEmpty()) {
            const Action action = find(*button, targets);
            QObject::connect(button, &QAbstractButton::clicked, action.target, action);
        }
    }
    for (const QAction *item : root.findChildren<QAction *>()) {
        if (!actionOf(*item).isEmpty()) {
            const Action action = find(*item, targets);
            QObject::connect(item, &QAction::triggered, action.target, action);
        }
    }
}

}  // namespace platform
