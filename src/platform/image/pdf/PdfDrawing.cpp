#include "platform/image/pdf/PdfDrawing.h"

#include <GlobalParams.h>
#include <PDFDoc.h>
#include <poppler-qt6.h>

#include <QPainter>

#include "platform/image/pdf/OutlineDevice.h"

namespace kelvar {
namespace {

constexpr double kPointsPerInch = 72;

}  // namespace

PdfDrawing::PdfDrawing() = default;
PdfDrawing::~PdfDrawing() = default;

bool PdfDrawing::load(const QByteArray& file) {
  file_ = file;
  globalParams = std::make_unique<GlobalParams>();
  // Owned by the document.
  auto* const stream = new MemStream(file_.constData(), 0, file_.size(), Object(objNull));
  pdf_ = std::make_unique<PDFDoc>(stream);
  return pdf_->isOk() && pdf_->getNumPages() > 0;
}

int PdfDrawing::pages() const { return pdf_->getNumPages(); }

QSizeF PdfDrawing::sizeOf(int page) const {
  return {pdf_->getPageCropWidth(page + 1), pdf_->getPageCropHeight(page + 1)};
}

PageOutlines PdfDrawing::outlines(int page) {
  if (!outlines_) {
    outlines_ = std::make_unique<OutlineDevice>();
    outlines_->startDoc(pdf_.get());
  }
  pdf_->displayPage(outlines_.get(), page + 1, kPointsPerInch, kPointsPerInch, 0, false, true,
                    false);
  return outlines_->page();
}

Poppler::Document* PdfDrawing::document() {
  if (!document_) {
    document_ = Poppler::Document::loadFromData(file_);
    document_->setRenderBackend(Poppler::Document::QPainterBackend);
    document_->setRenderHint(Poppler::Document::Antialiasing);
    document_->setRenderHint(Poppler::Document::TextAntialiasing);
  }
  return document_.get();
}

bool PdfDrawing::draw(int page, QImage* image) {
  const std::unique_ptr<Poppler::Page> content = document()->page(page);
  if (!content) return false;
  const QSizeF size = content->pageSizeF();
  const double across = kPointsPerInch * image->width() / size.width();
  const double down = kPointsPerInch * image->height() / size.height();
  QPainter painter(image);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
  return content->renderToPainter(&painter, across, down);
}

QString PdfDrawing::text(int page) {
  const std::unique_ptr<Poppler::Page> content = document()->page(page);
  return content ? content->text({}) : QString();
}

}  // namespace kelvar
