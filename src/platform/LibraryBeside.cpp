#include "platform/LibraryBeside.h"

#include <dlfcn.h>

#include <string>

#include "platform/Log.h"

namespace kelvar {

void* functionBeside(const char* library, const char* name) {
  Dl_info here{};
  dladdr(reinterpret_cast<const void*>(&functionBeside), &here);
  const std::string file = here.dli_fname ? here.dli_fname : "";
  const std::string path = file.substr(0, file.rfind('/') + 1) + library;
  void* const opened = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  void* const function = opened ? dlsym(opened, name) : nullptr;
  if (!function) logLine(u"Cannot load a library: %@", {QString::fromLocal8Bit(dlerror())});
  return function;
}

}  // namespace kelvar
