#pragma once

#include <functional>
#include <memory>

#include "windowing/table.h"

namespace platform {

class WindowController;

/// The controllers that are opened by name, each with the way to build one.
Table<std::function<std::shared_ptr<WindowController>()>> &controllers();

/// Builds the controller of that name, shows its window and keeps no reference to either. Raises
/// Exception where the name is unknown.
void openWindow(const QString &name);

}  // namespace platform
