#pragma once

#include <CLI/App.hpp>
#include <string>
#include <vector>

#include "platform/UserDialog.h"

namespace kelvar::cli {

/// The user of `kelvar run`, for scripts that show something or ask.
///
/// Messages are lines on standard error. A question is answered by the next --answer; otherwise by
/// the user, if standard input and standard error are a terminal; otherwise by what nobody's answer
/// means, which is reported. Main thread.
class TerminalDialog {
 public:
  /// Adds --answer.
  void addOptions(CLI::App& program);
  /// Must outlive the scripts.
  void install();
  /// Reports answers that no question used.
  void finish() const;

 private:
  Result<QString> ask(const UserDialog::Question& question);
  Result<QString> takeAnswer(const UserDialog::Question& question);

  std::vector<std::string> answers_;
  size_t used_ = 0;
};

}  // namespace kelvar::cli
