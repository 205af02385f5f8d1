#pragma once

namespace kelvar {

/// The function `name` of the library of the file name `library`, which lies beside the one that
/// this code is in and is loaded with the first call. Null, and a line in the log, when there is no
/// such library. For what costs every start something and few runs need. Safe from any thread.
void* functionBeside(const char* library, const char* name);

}  // namespace kelvar
