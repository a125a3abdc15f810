#pragma once

#include <QIcon>

namespace platform {

/// The icon of the program's windows.
QIcon programIcon();

}  // namespace platform
