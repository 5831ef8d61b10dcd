#pragma once

#include <string>

namespace nbscore {

/// To be called in a handler for everything, around a call into a plug-in: throws what the plug-in threw again,
/// as an exception of this program's own, which stays good when the plug-in is unloaded.
///
/// A VeskException stays one, also where it was thrown as a pointer, which is freed, and so does std::bad_alloc;
/// anything else becomes an InputOutputError that says what was being done.
[[noreturn]] void RethrowPluginFailure(const std::string& whatWasDone);

}  // namespace nbscore
