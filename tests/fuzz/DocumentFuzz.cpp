#include <QGuiApplication>
#include <algorithm>

#include "fuzz/Fuzz.h"
#include "geometry/PointList.h"
#include "mockup/DocumentMapping.h"
#include "platform/files/ZipArchive.h"
#include "sketch/render/ArtboardRenderer.h"

namespace kelvar {
namespace {

/// Larger images find nothing that smaller ones do not.
constexpr double kMaxPixels = 64;

QByteArray packed(const QByteArray& page) {
  return *ZipArchive::read({}).value()->written(
      {{QStringLiteral("document.json"), R"({"pages":[{"_ref":"pages/p"}]})"},
       {QStringLiteral("meta.json"), R"({"version":136,"build":1})"},
       {QStringLiteral("pages/p.json"), page}},
      {});
}

/// Fonts require an application, and creating one per input would take most of the time.
void makeApplication() {
  static int count = 3;
  static char name[] = "fuzz", option[] = "-platform", platform[] = "offscreen";
  static char* arguments[] = {name, option, platform, nullptr};
  static const QGuiApplication kApplication(count, arguments);
}

double longest(const QSizeF& size) { return std::max(size.width(), size.height()); }

/// Whether an image mapped onto the layer has few pixels.
bool isSmall(const SketchLayerRef& layer, double quality) {
  double far = longest(layer->frameRect().size());
  for (const warp::Point& corner : LayerMapping::cornersOf(layer)) {
    far = std::max({far, std::abs(corner.x), std::abs(corner.y)});
  }
  return far * quality <= kMaxPixels;
}

void map(const SketchDocumentRef& document, const SketchLayerRef& layer) {
  if (!LayerMapping::canMapOnto(layer) || !isSmall(layer, 1)) return;
  QImage pixels(3, 2, QImage::Format_ARGB32_Premultiplied);
  pixels.fill(Qt::red);
  const auto design = [&](const QSizeF&) { return std::make_shared<Image>(pixels); };
  const Result<void> mapped =
      DocumentMapping(document).map(layer, {.options = {.rotation = 1}}, design);
  check(mapped || !mapped.error().message.empty(), "there is either a mapping or an error");
  check(!mapped || LayerSettings::of(*layer)->options.rotation == 1, "the mapping is recorded");
}

void refresh(const SketchDocumentRef& document) {
  for (const SketchLayerRef& artboard : document->artboards()) {
    if (!(longest(artboard->frameRect().size()) <= kMaxPixels)) return;
  }
  for (const SketchLayerRef& page : document->pages()) {
    for (const SketchLayerRef& layer : page->withDescendants()) {
      const auto settings = LayerSettings::of(*layer);
      if (settings && !isSmall(layer, settings->options.quality)) return;
    }
  }
  const auto refreshed = DocumentMapping(document).refresh();
  check(refreshed || !refreshed.error().message.empty(), "there is either a mapping or an error");
}

void look(const SketchDocumentRef& document, const SketchLayerRef& layer) {
  check(layer->valueForKeyPath(QStringLiteral("layers.style.fills")).isValid() ||
            layer->layers().isEmpty(),
        "a key path over layers gives a list");
  const double side = longest(layer->frameRect().size());
  if (!layer->isArtboard() || !(side > 0)) return;
  const auto image = ArtboardRenderer(document).render(*layer, std::min(1.0, kMaxPixels / side));
  check(image ? bool(*image) : !image.error().message.empty(),
        "there is either an image or an error");
}

}  // namespace
}  // namespace kelvar

/// A document, or the JSON of its only page: in an archive, checksums would reject most mutations.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace kelvar;
  makeApplication();
  const QByteArray input = bytesOf(data, size);
  const auto read =
      SketchDocument::read(input.startsWith('{') ? packed(input) : input, QStringLiteral("input"));
  check(read ? bool(*read) : !read.error().message.empty(),
        "there is either a document or an error");
  if (!read) return 0;
  const SketchDocumentRef& document = *read;
  for (const SketchLayerRef& page : document->pages()) {
    page->edit();
    for (const SketchLayerRef& layer : page->withDescendants()) look(document, layer);
  }
  refresh(document);
  for (const SketchLayerRef& page : document->pages()) {
    for (const SketchLayerRef& layer : page->withDescendants()) map(document, layer);
  }
  const auto saved = document->bytes();
  // Damage in a file that was not read so far is noticed when the file is copied.
  check(saved ? !saved->isEmpty() : !saved.error().message.empty(),
        "there are either bytes or an error");
  if (!saved) return 0;
  const auto again = SketchDocument::read(*saved, QStringLiteral("saved"));
  check(again && (*again)->bytes().value() == *saved, "a saved document can be read");
  const auto kept = [](const SketchDocument& each) {
    QStringList names = each.fileNames();
    // An image is removed when another one replaces it.
    names.removeIf([](const QString& name) { return name.startsWith(u"images/"); });
    return names;
  };
  check(kept(**again) == kept(*document), "all other files are preserved");
  return 0;
}
