#pragma once

#include <initializer_list>

class QObject;

namespace platform {

/// Connects every button and menu item below `root` that carries the property "action" to the
/// invokable method of that name, taken from the first of `targets` that has one. Throws
/// Exception for a name that none of them has.
void connectActions(const QObject &root, std::initializer_list<QObject *> targets);

}  // namespace platform
