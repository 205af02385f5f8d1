#pragma once

#include "runtime/ClassInfo.h"

namespace kelvar {

/// The host's own kind of path. Here, every path is an `NSBezierPath`.
class MSPath {
 public:
  MSPath() = delete;
  static const ClassInfo& staticClassInfo();
};

}  // namespace kelvar
