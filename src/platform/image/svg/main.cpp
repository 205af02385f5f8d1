// kelvar-svg, started by the library for each SVG: draws it within limits that end this process and
// not the caller.

#include "platform/image/renderer/RendererChild.h"
#include "platform/image/svg/SvgDrawing.h"

int main(int argc, char** argv) {
  using namespace kelvar;
  using renderer::Report;
  if (!renderer::begin(argc, argv)) return 2;
  SvgDrawing drawing;
  const Result<void> loaded = drawing.load(renderer::design());
  if (!loaded) renderer::fail(loaded.error().message.c_str());
  const QSizeF size = drawing.naturalSize();
  renderer::say(
      {.kind = Report::Opened, .pages = 1, .width = size.width(), .height = size.height()});
  for (;;) {
    QImage image = renderer::outputImage(renderer::nextWanted());
    drawing.draw(&image);
    renderer::say({.kind = Report::Done});
  }
}
