#pragma once

#include <QIcon>

class QString;

namespace platform::look {

/// The program's image of that file name; a null one where there is none.
QIcon imageNamed(const QString &fileName);

}  // namespace platform::look
