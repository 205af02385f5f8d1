#include "actions/KVAction.h"

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&KVAction::staticClassInfo);

class ScriptedAction : public KVAction, public Implemented {
 public:
  using Implemented::Implemented;
  bool exec() override { return call<bool>("exec"); }
};

}  // namespace

KVAction::~KVAction() = default;

const ClassInfo& KVAction::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<KVAction>("KVAction")
          .operation("exec", &KVAction::exec, "Runs the action and returns whether it succeeded.")
          .implementable<ScriptedAction>({QStringLiteral("exec")});
  return kClass;
}

}  // namespace kelvar
