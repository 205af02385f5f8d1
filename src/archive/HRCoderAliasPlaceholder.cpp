#include "archive/HRCoderAliasPlaceholder.h"

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&HRCoderAliasPlaceholder::theClass);

}  // namespace

const ClassInfo& HRCoderAliasPlaceholder::theClass() {
  static const ClassInfo kClass =
      Description<HRCoderAliasPlaceholder>("HRCoderAliasPlaceholder")
          .classOperation("placeholder", &HRCoderAliasPlaceholder::placeholder);
  return kClass;
}

ObjectRef HRCoderAliasPlaceholder::placeholder() {
  static const auto kPlaceholder = std::make_shared<HRCoderAliasPlaceholder>();
  return kPlaceholder;
}

}  // namespace kelvar
