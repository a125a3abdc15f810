#pragma once

#include <QList>

class QTimer;

/// The clocks of the process, and time that passes without being waited for.
namespace clocks {

/// The toolkit's timers that tick once a second, over and over.
QList<QTimer *> running();
/// A second goes by: the event loop delivers what the running clocks have coming.
void passSecond();

}  // namespace clocks
