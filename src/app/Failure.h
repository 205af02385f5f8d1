#pragma once

#include <QString>
#include <stdexcept>

#include "platform/FileName.h"

namespace kelvar::app {

/// Ends the program early: one sentence for whoever called it, and the exit status.
class Failure : public std::runtime_error {
 public:
  static constexpr int kFailed = 1;
  static constexpr int kMisuse = 2;

  Failure(int status, const QString& sentence)
      : std::runtime_error(readableFileName(sentence).toStdString()), status_(status) {}
  int status() const { return status_; }

 private:
  int status_;
};

}  // namespace kelvar::app
