#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>
#include <memory>

#include "platform/image/OffscreenGuiApplication.h"
#include "platform/image/renderer/PageOutlines.h"

class PDFDoc;
namespace Poppler {
class Document;
}

namespace kelvar {

class OutlineDevice;

/// Draws the pages of a PDF, which count from 0. The caller must limit time and memory.
class PdfDrawing {
 public:
  PdfDrawing();
  ~PdfDrawing();

  /// False if the file is damaged, locked or empty. Its bytes must outlive this object.
  bool load(const QByteArray& file);
  int pages() const;
  QSizeF sizeOf(int page) const;
  /// Draws the page over all of `*image`, which must be transparent. False if it is damaged.
  bool draw(int page, QImage* image);
  PageOutlines outlines(int page);
  QString text(int page);

 private:
  Poppler::Document* document();

  const OffscreenGuiApplication fonts_;
  QByteArray file_;
  std::unique_ptr<PDFDoc> pdf_;
  std::unique_ptr<OutlineDevice> outlines_;
  std::unique_ptr<Poppler::Document> document_;
};

}  // namespace kelvar
