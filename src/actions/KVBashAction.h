#pragma once

#include "actions/KVAction.h"

namespace kelvar {

/// Runs a command line with `CMD` in the current directory. No shell is involved, whatever the name
/// says.
class KELVAR_EXPORT KVBashAction : public KVAction {
 public:
  static const ClassInfo& theClass();
  const ClassInfo& classInfo() const override { return theClass(); }

  static std::shared_ptr<KVBashAction> bash(const QString& command);

  /// Asks the host application to quit. The words from ";" on are names of further processes to the
  /// one program that runs.
  static std::shared_ptr<KVBashAction> restart();

  /// Only says what the user has to do.
  static std::shared_ptr<KVBashAction> nothing();

  QString command() const { return command_; }
  void setCommand(const QString& command) { command_ = command; }

  /// Waits for the program. True when what it printed contains "NSApplication:", the words of a
  /// host that was restarted; its exit status does not count.
  bool exec() override;

 private:
  QString command_;
};

}  // namespace kelvar
