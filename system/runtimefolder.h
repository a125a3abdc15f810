#pragma once

namespace platform {

/// Provides a runtime folder if the session has none, as for root outside a login. Qt would make
/// one too, but with a warning on standard error, which is meant for the program's own lines. To be
/// called before the application is made.
void provideRuntimeFolder();

}  // namespace platform
