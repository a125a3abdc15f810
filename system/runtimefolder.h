#pragma once

namespace platform {

/// Gives the session a runtime folder where it has none, as for root outside a login. Qt would make
/// one too, and say so on standard error, where a reader looks for the program's own lines. Call it
/// before the application is made.
void provideRuntimeFolder();

}  // namespace platform
