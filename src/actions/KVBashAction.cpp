#include "actions/KVBashAction.h"

#include "actions/CMD.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&KVBashAction::theClass);

}  // namespace

const ClassInfo& KVBashAction::theClass() {
  static const ClassInfo kClass =
      Description<KVBashAction, KVAction>("KVBashAction")
          .initialiser("init", [] { return std::make_shared<KVBashAction>(); })
          .classOperation("bash:", &KVBashAction::bash)
          .classOperation("restart", &KVBashAction::restart)
          .classOperation("nothing", &KVBashAction::nothing)
          .property("command", &KVBashAction::command, &KVBashAction::setCommand);
  return kClass;
}

std::shared_ptr<KVBashAction> KVBashAction::bash(const QString& command) {
  const auto action = std::make_shared<KVBashAction>();
  action->setCommand(command);
  return action;
}

std::shared_ptr<KVBashAction> KVBashAction::restart() {
  return bash(QStringLiteral("killall Sketch ; echo 'COScript.app(\"Sketch\")' | coscript"));
}

std::shared_ptr<KVBashAction> KVBashAction::nothing() {
  return bash(QStringLiteral("echo please restart manually"));
}

bool KVBashAction::exec() {
  CMD runner;
  runner.setCd(QStringLiteral("."));
  return runner.exec(command_).contains(u"NSApplication:");
}

}  // namespace kelvar
