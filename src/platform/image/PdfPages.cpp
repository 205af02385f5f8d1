#include "platform/image/PdfPages.h"

namespace kelvar {

using renderer::Wanted;

PdfPages::PdfPages() : process_({KELVAR_PDF_PROGRAM, "PDF"}, {}) {}

Result<void> PdfPages::open(const QByteArray& file) {
  if (const auto started = process_.start(file); !started) return started;
  return process_.open().map([&](const renderer::Report& opened) { count_ = opened.pages; });
}

Result<PageOutlines> PdfPages::outlines(int page) {
  const auto bytes = process_.data({.what = Wanted::Outlines, .page = page});
  if (!bytes) return tl::unexpected(bytes.error());
  PageOutlines outlines;
  QDataStream stream(*bytes);
  stream >> outlines;
  if (stream.status() == QDataStream::Ok) return outlines;
  return failure(Error::Kind::Damaged, "the PDF cannot be drawn");
}

Result<QString> PdfPages::text(int page) {
  return process_.data({.what = Wanted::Text, .page = page}).map([](const QByteArray& text) {
    return QString::fromUtf8(text);
  });
}

}  // namespace kelvar
