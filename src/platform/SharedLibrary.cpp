#include "platform/SharedLibrary.h"

#include <dlfcn.h>
#include <unistd.h>

#include <filesystem>
#include <system_error>

#include "platform/Log.h"

namespace kelvar {

namespace {

/// The folder of the library that contains this code, with a final slash. Looked up at load time:
/// the path may be relative to a working directory that the program leaves later.
const std::string kFolder = [] {
  Dl_info here{};
  dladdr(reinterpret_cast<const void*>(&resolveSymbol), &here);
  const std::filesystem::path file = here.dli_fname ? here.dli_fname : "";
  std::error_code ignored;
  return (std::filesystem::absolute(file, ignored).parent_path() / "").string();
}();

}  // namespace

std::string fileBeside(const char* name, const char* folder) {
  const std::string beside = kFolder + name;
  return ::access(beside.c_str(), F_OK) == 0 ? beside : kFolder + folder + '/' + name;
}

void* resolveSymbol(const char* library, const char* name) {
  const std::string path = kFolder + library;
  void* const opened = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  void* const function = opened ? dlsym(opened, name) : nullptr;
  if (!function) logLine(u"Cannot load a library: %@", {QString::fromLocal8Bit(dlerror())});
  return function;
}

}  // namespace kelvar
