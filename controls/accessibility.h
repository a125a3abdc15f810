#pragma once

class QAccessibleInterface;
class QObject;
class QString;

namespace platform {

/// What a screen reader is told about our own controls, beyond what Qt tells it; null if that is
/// enough. To be installed with QAccessible::installFactory().
QAccessibleInterface *describeControl(const QString &className, QObject *object);

}  // namespace platform
