#pragma once

#include <QString>

#include "platform/image/RendererProcess.h"
#include "platform/image/renderer/PageOutlines.h"

namespace kelvar {

/// The pages of a PDF as outlines and as text, which a process of kelvar-pdf reads one at a time,
/// within the limits of `readPdf`. Use it from one thread.
class PdfPages {
 public:
  PdfPages();

  Result<void> open(const QByteArray& file);
  /// 0 before `open`.
  int count() const { return count_; }
  /// Pages count from 0. Fails if the page cannot be read.
  Result<PageOutlines> outlines(int page);
  Result<QString> text(int page);

 private:
  RendererProcess process_;
  int count_ = 0;
};

}  // namespace kelvar
