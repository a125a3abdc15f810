#pragma once

#include <QIcon>

class QString;

namespace platform::look {

/// The program's image with that file name, or a null icon if there is none.
QIcon imageNamed(const QString &fileName);

}  // namespace platform::look
