#pragma once

#include <string>

namespace kelvar {

/// The path of the file `name` in the folder of the library that this code is in, else in `folder`
/// as seen from there. It need not be there.
std::string fileBeside(const char* name, const char* folder);

/// The function `name` of the library of the file name `library`, which lies beside the one that
/// this code is in and is loaded with the first call. Null, and a line in the log, when there is no
/// such library. For what costs every start something and few runs need. Safe from any thread.
void* functionBeside(const char* library, const char* name);

}  // namespace kelvar
