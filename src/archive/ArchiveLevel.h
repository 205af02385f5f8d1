#pragma once

#include "archive/HRCoder.h"

namespace kelvar {

/// Counts a container of an archive while it is being written or read. The coder fails beyond
/// `HRCoder::kMaxDepth`.
class ArchiveLevel {
 public:
  explicit ArchiveLevel(HRCoder& coder) : coder_(coder) {
    if (++coder_.depth_ > HRCoder::kMaxDepth) {
      coder_.fail(QStringLiteral("it is nested more than %1 deep").arg(HRCoder::kMaxDepth));
    }
  }
  ~ArchiveLevel() { --coder_.depth_; }
  ArchiveLevel(const ArchiveLevel&) = delete;
  ArchiveLevel& operator=(const ArchiveLevel&) = delete;

 private:
  HRCoder& coder_;
};

}  // namespace kelvar
