#pragma once

#include "windowing/table.h"

class QMainWindow;

namespace platform {

/// Fills an empty window with one layout's controls.
using LayoutBuilder = void (*)(QMainWindow &window);

/// The layouts that windows are built from, by name.
Table<LayoutBuilder> &layouts();

/// The layout of that name. Throws Exception if it is unknown.
LayoutBuilder layoutNamed(const QString &name);

/// Fills an empty window. Logs each unknown property in the layout.
void fillWindow(QMainWindow &window, LayoutBuilder layout);

}  // namespace platform
