#pragma once

#include <QIcon>

namespace platform {

/// The icon that windows have.
QIcon programIcon();

}  // namespace platform
