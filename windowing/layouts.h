#pragma once

#include <map>

#include <QString>

class QMainWindow;

namespace platform {

/// Fills an empty window with one layout's controls.
using LayoutBuilder = void (*)(QMainWindow &window);

/// The layouts that windows are built from, by name.
using LayoutTable = std::map<QString, LayoutBuilder>;
LayoutTable &layouts();

/// The layout of that name; raises Exception, naming the layouts there are, where it is unknown.
LayoutBuilder layoutNamed(const QString &name);

}  // namespace platform
