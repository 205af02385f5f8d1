#pragma once

#include <string>

namespace kelvar {

/// The path of the file `name` in the folder of the library that contains this code, or else in
/// `folder`, which is relative to that. The file need not exist.
std::string fileBeside(const char* name, const char* folder);

/// The function `name` of the library with the file name `library`, which is in the same folder as
/// the one that contains this code, and is loaded by the first call. Null, with a log line, if
/// there is no such library. Used for dependencies that would slow down every start. Safe from any
/// thread.
void* resolveSymbol(const char* library, const char* name);

}  // namespace kelvar
