#include "actions/KVBashAction.h"

#include "actions/CMD.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&KVBashAction::staticClassInfo);

}  // namespace

const ClassInfo& KVBashAction::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<KVBashAction, KVAction>("KVBashAction")
          .initializer(
              "init", [] { return std::make_shared<KVBashAction>(); },
              "Creates an action without a command.")
          .classOperation("bash:", &KVBashAction::bash,
                          "Creates an action that runs a command line, without a shell.")
          .classOperation("restart", &KVBashAction::restart,
                          "Creates an action that asks the host application to quit.")
          .classOperation("nothing", &KVBashAction::nothing,
                          "Creates an action that only tells the user to restart.")
          .property("command", &KVBashAction::command, &KVBashAction::setCommand,
                    "The command line; words are separated by single spaces.");
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
