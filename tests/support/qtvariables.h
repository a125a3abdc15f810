#pragma once

#include <QProcessEnvironment>

/// The variables of the environment that Qt reads.
namespace qtvariables {

/// Sets those that were handed over with "TEST_" before their names: Wine keeps the others from
/// programs.
inline void take() {
    const QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const QString handedOver = QStringLiteral("TEST_");
    for (const QString &name : environment.keys()) {
        if (name.startsWith(handedOver + QStringLiteral("QT_"))) {
            qputenv(name.sliced(handedOver.size()).toLatin1().constData(),
                    environment.value(name).toLocal8Bit());
        }
    }
}

}  // namespace qtvariables
