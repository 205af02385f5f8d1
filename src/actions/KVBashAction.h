#pragma once

#include "actions/KVAction.h"

namespace kelvar {

/// Runs a command line with `CMD` in the current directory. Despite the name, no shell is involved.
class KELVAR_EXPORT KVBashAction : public KVAction {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  static std::shared_ptr<KVBashAction> bash(const QString& command);

  /// Asks the host application to quit. Because no shell is involved, the words after ";" are also
  /// arguments of this one program, which reads them as names of processes.
  static std::shared_ptr<KVBashAction> restart();

  /// Only prints what the user has to do.
  static std::shared_ptr<KVBashAction> nothing();

  QString command() const { return command_; }
  void setCommand(const QString& command) { command_ = command; }

  /// Waits for the program. True if its output contains "NSApplication:", which a restarted host
  /// application prints. The exit status is ignored.
  bool exec() override;

 private:
  QString command_;
};

}  // namespace kelvar
