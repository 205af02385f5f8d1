#include "archive/HRCoderAliasPlaceholder.h"

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&HRCoderAliasPlaceholder::staticClassInfo);

}  // namespace

const ClassInfo& HRCoderAliasPlaceholder::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<HRCoderAliasPlaceholder>("HRCoderAliasPlaceholder")
          .classOperation(
              "placeholder", &HRCoderAliasPlaceholder::placeholder,
              "Returns the one object that stands for a reference that is not decoded yet.");
  return kClass;
}

ObjectRef HRCoderAliasPlaceholder::placeholder() {
  static const auto kPlaceholder = std::make_shared<HRCoderAliasPlaceholder>();
  return kPlaceholder;
}

}  // namespace kelvar
