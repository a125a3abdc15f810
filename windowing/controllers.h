#pragma once

#include <functional>
#include <memory>

#include "windowing/table.h"

namespace platform {

class WindowController;

/// The controllers that are opened by name, each with the function that builds it.
Table<std::function<std::shared_ptr<WindowController>()>> &controllers();

/// Builds the controller of that name, shows its window and keeps no reference to either. Throws
/// Exception if the name is unknown.
void openWindow(const QString &name);

}  // namespace platform
