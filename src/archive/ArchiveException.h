#pragma once

#include <QString>

#include "runtime/NamedException.h"

extern "C" {

/// The name of the exception that `HRCoder::initForReadingWithData` throws.
KELVAR_EXPORT extern const char HRCoderException[];
}

namespace kelvar {

/// Thrown by `HRCoder::initForReadingWithData` for data that it cannot read.
class KELVAR_EXPORT ArchiveException : public NamedException {
 public:
  explicit ArchiveException(const QString& reason) : NamedException(reason) {}
  ~ArchiveException() override;
  const char* name() const override { return HRCoderException; }
};

}  // namespace kelvar
