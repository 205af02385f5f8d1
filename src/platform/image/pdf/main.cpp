// kelvar-pdf, started by the library for each PDF: draws its first page, or gives the outlines or
// the text of any page, within limits that end this process and not the caller.

#include <QDataStream>
#include <QIODevice>

#include "platform/image/pdf/PdfDrawing.h"
#include "platform/image/renderer/RendererChild.h"

namespace {

using namespace kelvar::renderer;

void answer(const Wanted& wanted, kelvar::PdfDrawing* drawing) {
  if (wanted.page < 0 || wanted.page >= drawing->pages()) fail("a page of the PDF is missing");
  if (wanted.what == Wanted::Text) return sayData(drawing->text(wanted.page).toUtf8());
  if (wanted.what == Wanted::Outlines) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << drawing->outlines(wanted.page);
    return sayData(bytes);
  }
  QImage image = outputImage(wanted);
  if (!drawing->draw(wanted.page, &image)) fail("the PDF is damaged");
  say({.kind = Report::Done});
}

}  // namespace

int main(int argc, char** argv) {
  if (!begin(argc, argv)) return 2;
  kelvar::PdfDrawing drawing;
  if (!drawing.load(design())) fail("the PDF is damaged or locked");
  const QSizeF size = drawing.sizeOf(0);
  say({.kind = Report::Opened,
       .pages = drawing.pages(),
       .width = size.width(),
       .height = size.height()});
  for (;;) answer(nextWanted(), &drawing);
}
