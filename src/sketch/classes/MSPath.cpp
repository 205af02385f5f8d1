#include "sketch/classes/MSPath.h"

#include "platform/image/BezierPath.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&MSPath::staticClassInfo);

}  // namespace

const ClassInfo& MSPath::staticClassInfo() {
  static const ClassInfo kClass = ClassInfoBuilder<MSPath>("MSPath").classOperation(
      "pathWithBezierPath:", [](const BezierPath& path) { return path; },
      "Returns the same path, which all operations take as it is.");
  return kClass;
}

}  // namespace kelvar
