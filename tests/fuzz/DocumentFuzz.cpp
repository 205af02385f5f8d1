#include <QGuiApplication>
#include <algorithm>

#include "fuzz/Fuzz.h"
#include "host/ArtboardRenderer.h"
#include "host/LayerMapping.h"
#include "host/SketchDocument.h"
#include "platform/ZipArchive.h"

namespace kelvar {
namespace {

/// Larger pictures find nothing that smaller ones do not.
constexpr double kMostPixels = 64;

QByteArray packed(const QByteArray& page) {
  QString error;
  return ZipArchive::read({}, &error)
      ->written({{QStringLiteral("document.json"), R"({"pages":[{"_ref":"pages/p"}]})"},
                 {QStringLiteral("meta.json"), R"({"version":136,"build":1})"},
                 {QStringLiteral("pages/p.json"), page}},
                {}, &error);
}

/// Fonts want an application, and one for each picture would take most of the time.
void makeApplication() {
  static int count = 3;
  static char name[] = "fuzz", option[] = "-platform", platform[] = "offscreen";
  static char* arguments[] = {name, option, platform, nullptr};
  static const QGuiApplication kApplication(count, arguments);
}

void look(const SketchDocumentRef& document, const SketchLayerRef& layer) {
  LayerMapping::objectionTo(layer);
  check(layer->valueForKeyPath(QStringLiteral("layers.style.fills")).isValid() ||
            layer->layers().isEmpty(),
        "a list of layers gives a list");
  const QSizeF size = layer->frameRect().size();
  const double side = std::max(size.width(), size.height());
  if (!layer->isArtboard() || !(side > 0)) return;
  QString error;
  const ImageRef picture =
      ArtboardRenderer(document).render(*layer, std::min(1.0, kMostPixels / side), &error);
  check(bool(picture) == error.isEmpty(), "there is a picture or a sentence");
}

}  // namespace
}  // namespace kelvar

/// A document, or the JSON of the only page of one: checksums keep changes out of an archive.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace kelvar;
  makeApplication();
  const QByteArray input = bytesOf(data, size);
  QString error;
  const auto document = SketchDocument::read(input.startsWith('{') ? packed(input) : input,
                                             QStringLiteral("input"), &error);
  check(bool(document) == error.isEmpty(), "there is a document or a sentence");
  if (!document) return 0;
  for (const SketchLayerRef& page : document->pages()) {
    page->edit();
    for (const SketchLayerRef& layer : page->withDescendants()) look(document, layer);
  }
  const QByteArray saved = document->bytes(&error);
  // A damaged file that nobody looked at is found when it is copied.
  check(saved.isEmpty() != error.isEmpty(), "there are bytes or a sentence");
  if (saved.isEmpty()) return 0;
  const auto again = SketchDocument::read(saved, QStringLiteral("saved"), &error);
  check(again && again->bytes(&error) == saved, "what is saved can be read");
  check(again->fileNames() == document->fileNames(), "all files are kept");
  return 0;
}
