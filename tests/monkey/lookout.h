#pragma once

#include <QPointer>
#include <QStringList>

class LiveProgram;

/// Looks after what no model knows: which objects live, which windows are on screen, and where the
/// keyboard is. Each function tells what is wrong.
namespace lookout {

QStringList faults(const LiveProgram &program);
/// What is left of a program that has ended and consisted of these objects.
QStringList remains(const QList<QPointer<QObject>> &objects);

}  // namespace lookout
