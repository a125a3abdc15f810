#pragma once

class QAccessibleInterface;
class QObject;
class QString;

namespace platform {

/// What a screen reader is told of our own controls beyond what the toolkit tells by itself; null
/// where that is enough. To be installed with QAccessible::installFactory().
QAccessibleInterface *describeControl(const QString &className, QObject *object);

}  // namespace platform
