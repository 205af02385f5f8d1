#pragma once

#include <QString>
#include <stdexcept>

#include "platform/Export.h"

namespace kelvar {

/// An exception that callers, also scripts, tell from others by its name.
class KELVAR_EXPORT NamedException : public std::runtime_error {
 public:
  explicit NamedException(const QString& reason) : std::runtime_error(reason.toStdString()) {}
  ~NamedException() override;
  virtual const char* name() const = 0;
};

}  // namespace kelvar
