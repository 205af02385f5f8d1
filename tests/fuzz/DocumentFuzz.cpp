#include <QGuiApplication>
#include <algorithm>

#include "fuzz/Fuzz.h"
#include "geometry/PointList.h"
#include "host/ArtboardRenderer.h"
#include "host/DocumentMapping.h"
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

double longest(const QSizeF& size) { return std::max(size.width(), size.height()); }

/// Whether what is mapped onto the layer has few pixels.
bool isSmall(const SketchLayerRef& layer, double quality) {
  double far = longest(layer->frameRect().size());
  for (const QString& corner : LayerMapping::cornersOf(layer)) {
    const QPointF point = pointFromString(corner);
    far = std::max({far, std::abs(point.x()), std::abs(point.y())});
  }
  return far * quality <= kMostPixels;
}

void map(const SketchDocumentRef& document, const SketchLayerRef& layer) {
  const QString objection = LayerMapping::objectionTo(layer);
  if (!objection.isNull() || !isSmall(layer, 1)) return;
  QImage pixels(3, 2, QImage::Format_ARGB32_Premultiplied);
  pixels.fill(Qt::red);
  const auto design = [&](const QSizeF&, QString*) { return std::make_shared<Image>(pixels); };
  QString error;
  const bool isMapped = DocumentMapping(document).map(layer, {.rotation = 1}, design, &error);
  check(isMapped == error.isEmpty(), "it is mapped or there is a sentence");
  check(!isMapped || LayerSettings::of(*layer)->rotation == 1, "what was mapped is remembered");
}

void refresh(const SketchDocumentRef& document) {
  for (const SketchLayerRef& artboard : document->artboards()) {
    if (!(longest(artboard->frameRect().size()) <= kMostPixels)) return;
  }
  for (const SketchLayerRef& page : document->pages()) {
    for (const SketchLayerRef& layer : page->withDescendants()) {
      const auto settings = LayerSettings::of(*layer);
      if (settings && !isSmall(layer, settings->quality)) return;
    }
  }
  QString error;
  QList<SketchLayerRef> layers;
  check(DocumentMapping(document).refresh(&layers, &error) == error.isEmpty(),
        "all is mapped again or there is a sentence");
}

void look(const SketchDocumentRef& document, const SketchLayerRef& layer) {
  check(layer->valueForKeyPath(QStringLiteral("layers.style.fills")).isValid() ||
            layer->layers().isEmpty(),
        "a list of layers gives a list");
  const double side = longest(layer->frameRect().size());
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
  refresh(document);
  for (const SketchLayerRef& page : document->pages()) {
    for (const SketchLayerRef& layer : page->withDescendants()) map(document, layer);
  }
  const QByteArray saved = document->bytes(&error);
  // A damaged file that nobody looked at is found when it is copied.
  check(saved.isEmpty() != error.isEmpty(), "there are bytes or a sentence");
  if (saved.isEmpty()) return 0;
  const auto again = SketchDocument::read(saved, QStringLiteral("saved"), &error);
  check(again && again->bytes(&error) == saved, "what is saved can be read");
  const auto kept = [](const SketchDocument& each) {
    QStringList names = each.fileNames();
    // A picture goes when another one takes its place.
    names.removeIf([](const QString& name) { return name.startsWith(u"images/"); });
    return names;
  };
  check(kept(*again) == kept(*document), "all files are kept");
  return 0;
}
