#include "actions/KVAction.h"

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&KVAction::theClass);

}  // namespace

KVAction::~KVAction() = default;

const ClassInfo& KVAction::theClass() {
  static const ClassInfo kClass =
      Description<KVAction>("KVAction").operation("exec", &KVAction::exec);
  return kClass;
}

}  // namespace kelvar
