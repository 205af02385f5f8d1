#include "mockup/DocumentMockup.h"

#include <algorithm>

#include "mockup/DocumentContents.h"
#include "mockup/DocumentMapping.h"
#include "platform/Log.h"
#include "platform/QtError.h"
#include "sketch/document/Layer.h"
#include "sketch/render/ArtboardRenderer.h"

namespace kelvar {

DocumentMockup::DocumentMockup(SketchDocumentRef document, const QString& path)
    : document_(std::move(document)),
      contents_(std::make_unique<DocumentContents>(document_, path)) {
  for (const Arrangement::Shape& shape : contents_->arrangement().shapes) {
    shown_.insert(shape.id, {shape, nullptr, {}, {}});
  }
}

DocumentMockup::~DocumentMockup() = default;

Arrangement DocumentMockup::arrangement() const { return contents_->arrangement(); }

Result<std::shared_ptr<DocumentMockup>> DocumentMockup::open(const QString& path,
                                                             const DocumentChoice& choice) {
  const Result<SketchDocumentRef> document = SketchDocument::open(path);
  if (!document) return tl::unexpected(document.error());
  std::shared_ptr<DocumentMockup> mockup(new DocumentMockup(*document, path));
  const Result<QStringList> chosen = mockup->contents_->choose(choice);
  if (!chosen) return tl::unexpected(chosen.error());
  mockup->chosen_ = *chosen;
  return mockup;
}

QList<Mockup::Artboard> DocumentMockup::artboards() const {
  QList<Artboard> artboards;
  for (const auto& backdrop : contents_->backdrops()) artboards.append(backdrop.artboard);
  return artboards;
}

void DocumentMockup::apply(const Arrangement& arrangement, const std::stop_token& stop) {
  QList<Arrangement::Shape> shapes = arrangement.shapes;
  // A shape that is not included in artboards may have its own artboard, with the others on it, as
  // its design: so it comes after them.
  std::stable_partition(shapes.begin(), shapes.end(),
                        [](const auto& one) { return one.options.includedInArtboards; });
  for (const Arrangement::Shape& shape : shapes) {
    if (stop.stop_requested()) return;
    if (!contents_->layer(shape.id)) continue;
    const Result<ImageRef> read = fileImage(arrangement, shape);
    const Result<void> isCurrent =
        read ? Result<void>() : Result<void>(tl::unexpected(read.error()));
    const ImageRef image = read ? *read : files_.lastRead(arrangement.design(shape.design)->file);
    const auto shown = shown_.find(shape.id);
    if (shown != shown_.end() && shown->shape == shape && shown->image == image) {
      shown->isCurrent = isCurrent;
      continue;
    }
    isPreviewOutdated_ = true;
    const Result<void> mapped = show(shape, image, stop);
    if (stop.stop_requested()) {
      // The layer is in an unknown state: map it again next time.
      shown_.remove(shape.id);
      return;
    }
    shown_.insert(shape.id, {shape, image, mapped || isCurrent ? mapped : isCurrent, isCurrent});
  }
}

Result<ImageRef> DocumentMockup::fileImage(const Arrangement& arrangement,
                                           const Arrangement::Shape& shape) {
  const Arrangement::Design* design = arrangement.design(shape.design);
  if (!design || design->file.isEmpty()) return nullptr;
  const MockupLayer& layer = *contents_->layer(shape.id);
  const LayerMapping mapping(layer.layer(), {.options = shape.options});
  return files_.read(design->file, mapping.rasterizationSize());
}

Result<void> DocumentMockup::show(const Arrangement::Shape& shape, const ImageRef& fileImage,
                                  const std::stop_token& stop) {
  const MockupLayer& layer = *contents_->layer(shape.id);
  layer.restore(*document_);
  const bool isAsOpened = *contents_->arrangement().shape(shape.id) == shape;
  if (isAsOpened && !refreshed_.contains(shape.id)) return {};
  if (shape.design.isEmpty()) {
    LayerMapping::clear(*document_, *layer.layer());
    return {};
  }
  return map(layer, shape, fileImage, stop);
}

Result<void> DocumentMockup::map(const MockupLayer& layer, const Arrangement::Shape& shape,
                                 const ImageRef& fileImage, const std::stop_token& stop) {
  const SketchLayerRef designLayer = contents_->designLayer(shape.design);
  if (!designLayer && contents_->arrangement().design(shape.design)) {
    return keepImage(layer, shape);
  }
  DocumentMapping mapping(document_);
  mapping.setStop(stop);
  const LayerSettings settings{.options = shape.options};
  const auto image = [&](const QSizeF&) -> Result<ImageRef> {
    ImageRef found =
        designLayer ? document_->image(designLayer->node().properties().image) : fileImage;
    if (!found) return failure(Error::Kind::Io, QStringLiteral("its image cannot be read"));
    return found;
  };
  const Result<void> mapped = designLayer && designLayer->isArtboard()
                                  ? mapping.mapArtboard(layer.layer(), settings, designLayer)
                                  : mapping.map(layer.layer(), settings, image);
  for (const QString& warning : mapping.warnings()) logLine(u"DocumentMockup: %@", {warning});
  return mapped;
}

Result<void> DocumentMockup::keepImage(const MockupLayer& layer,
                                       const Arrangement::Shape& shape) const {
  Arrangement::Shape same = *contents_->arrangement().shape(shape.id);
  same.options.includedInArtboards = shape.options.includedInArtboards;
  if (same != shape) {
    return failure(Error::Kind::Unsupported,
                   QStringLiteral("the document has its image only as it was mapped: choose a "
                                  "design again"));
  }
  LayerSettings settings = layer.settings().value_or(LayerSettings());
  settings.options.includedInArtboards = shape.options.includedInArtboards;
  settings.rememberOn(*layer.layer());
  return {};
}

Mockup::Drawing DocumentMockup::makeDrawing(const Arrangement& arrangement, Purpose purpose,
                                            const std::stop_token& stop) {
  apply(arrangement, stop);
  if (stop.stop_requested()) return {failure(Error::Kind::Stopped, QString(kDrawingStopped))};
  Drawing drawing;
  for (const Arrangement::Shape& shape : arrangement.shapes) {
    const auto shown = shown_.constFind(shape.id);
    if (shown == shown_.cend()) continue;
    const Result<void>& problem = shown->mapped ? shown->isCurrent : shown->mapped;
    if (!problem) drawing.shapeProblems.insert(shape.id, messageOf(problem.error()));
  }
  const auto* const found = contents_->backdrop(arrangement.artboard);
  const auto& backdrop = found ? *found : contents_->backdrops().first();
  const double scale = purpose == Purpose::Window ? backdrop.scale : exportScale(arrangement);
  ArtboardRenderer renderer(document_);
  renderer.setStop(stop);
  drawing.image = renderer.render(*backdrop.layer, scale);
  return drawing;
}

double DocumentMockup::exportScale(const Arrangement& arrangement) const {
  double scale = 1;
  for (const Arrangement::Shape& shape : arrangement.shapesOnArtboard()) {
    if (contents_->layer(shape.id) && !shape.design.isEmpty()) {
      scale = std::max(scale, shape.options.scale());
    }
  }
  return scale;
}

Result<ImageRef> DocumentMockup::makeDesignImage(const Arrangement::Design& design, int side,
                                                 const std::stop_token& stop) {
  if (!design.file.isEmpty()) return files_.read(design.file, {});
  const SketchLayerRef layer = contents_->designLayer(design.id);
  if (layer && layer->isArtboard()) {
    const QSizeF size = layer->frameRect().size();
    const double longest = std::max({size.width(), size.height(), 1.0});
    ArtboardRenderer renderer(document_);
    renderer.setStop(stop);
    return renderer.render(*layer, std::min(1.0, side / longest));
  }
  const ImageRef image = document_->image(layer ? layer->node().properties().image
                                                : ImageReference{.name = design.id});
  if (image) return image;
  return failure(Error::Kind::Damaged,
                 QStringLiteral("the image of \"%1\" cannot be read").arg(design.name));
}

void DocumentMockup::refresh(const Arrangement::Design& design) {
  if (!design.file.isEmpty()) return files_.invalidate(design.file);
  if (!contents_->designLayer(design.id)) return;
  for (auto shown = shown_.begin(); shown != shown_.end();) {
    const bool isShowing = shown->shape.design == design.id;
    if (isShowing) refreshed_.insert(shown.key());
    shown = isShowing ? shown_.erase(shown) : std::next(shown);
  }
}

Result<void> DocumentMockup::save(const Arrangement& arrangement, const QString& path) {
  apply(arrangement, {});
  for (const Arrangement::Shape& shape : arrangement.shapes) {
    const auto shown = shown_.constFind(shape.id);
    if (shown == shown_.cend() || shown->mapped) continue;
    return failure(Error::Kind::Unsupported,
                   QStringLiteral("\"%1\" in \"%2\" cannot be saved: %3")
                       .arg(shape.name, contents_->backdrop(shape.artboard)->layer->name(),
                            messageOf(shown->mapped.error())));
  }
  if (isPreviewOutdated_) DocumentMapping(document_).redrawPreview();
  isPreviewOutdated_ = false;
  return document_->save(path);
}

bool DocumentMockup::hasChangedOnDisk(const QString& path) const {
  return document_->hasChangedOnDisk(path);
}

void DocumentMockup::acceptDiskVersion() { document_->acceptDiskVersion(); }

}  // namespace kelvar
