#include "mockup/DocumentMapping.h"

#include <algorithm>
#include <cmath>

#include "mockup/ArtboardDependencyGraph.h"
#include "platform/Log.h"
#include "platform/QtError.h"
#include "platform/image/ImageFile.h"
#include "sketch/render/ArtboardRenderer.h"

namespace kelvar {
namespace {

/// How many layers a message lists.
constexpr qsizetype kMaxListed = 12;

QString listed(const QList<SketchLayerRef>& layers) {
  QStringList lines;
  for (const SketchLayerRef& layer : layers.first(std::min(layers.size(), kMaxListed))) {
    const SketchLayerRef around = layer->parent();
    lines.append(QStringLiteral("%1 %2%3").arg(
        layer->kind(), layer->objectID(),
        around ? QStringLiteral(" in \"%1\"").arg(around->name()) : QString()));
  }
  const qsizetype more = layers.size() - lines.size();
  return lines.join(QStringLiteral(", ")) +
         (more > 0 ? QStringLiteral(" and %1 more").arg(more) : QString());
}

}  // namespace

QString DocumentMapping::namesThatExist(const QList<SketchLayerRef>& layers) {
  QStringList names;
  for (const SketchLayerRef& layer : layers) names.append(u'"' + layer->name() + u'"');
  names.removeDuplicates();
  const qsizetype more = names.size() - kMaxListed;
  if (more > 0) names = names.first(kMaxListed) + QStringList(QStringLiteral("%1 more").arg(more));
  const QString last = names.isEmpty() ? QString() : names.takeLast();
  if (last.isEmpty()) return QStringLiteral(", and none at all");
  return QStringLiteral(", only ") +
         (names.isEmpty() ? last
                          : names.join(QStringLiteral(", ")) + QStringLiteral(" and ") + last);
}

namespace {

/// The only one of `found`, which are of one `kind` and have one name.
Result<SketchLayerRef> only(const QList<SketchLayerRef>& found, const QString& kind,
                            const QString& name) {
  if (found.size() == 1) return found.first();
  if (found.isEmpty()) {
    return failure(Error::Kind::NotFound,
                   QStringLiteral("the document has no %1 \"%2\"").arg(kind, name));
  }
  if (found.first()->objectID() == name) {
    return failure(
        Error::Kind::Damaged,
        QStringLiteral("the document is damaged: \"%1\" is the identifier of several %2s")
            .arg(name, kind));
  }
  return failure(Error::Kind::NotFound,
                 QStringLiteral("\"%1\" fits several %2s, so take the identifier of one: %3")
                     .arg(name, kind, listed(found)));
}

bool isInShapeGroup(const SketchLayer& layer) {
  const SketchLayerRef around = layer.parent();
  return around && around->isShapeGroup();
}

/// How much to magnify an artboard to draw it as large as `size`, within the limits of images. A
/// whole number, so that what lies on whole points stays sharp.
double magnification(const QSizeF& artboard, const QSizeF& size) {
  // It cannot be drawn at all.
  if (!(artboard.width() > 0 && artboard.height() > 0)) return 1;
  double scale = std::ceil(
      std::max({1.0, size.width() / artboard.width(), size.height() / artboard.height()}));
  scale = std::min(scale, double(ImageFile::kMaxSide));
  while (scale > 1 &&
         !fitsImageLimits(artboard.width() * scale + 1, artboard.height() * scale + 1)) {
    scale = std::floor(scale / 2);
  }
  return scale;
}

tl::unexpected<Error> failureOf(const SketchLayer& layer, const Error& error) {
  const QString context = QStringLiteral("the layer \"%1\" (%2) cannot take a design")
                              .arg(layer.name(), layer.objectID());
  // Whatever is wrong with the layer, the call was right.
  return failureIn(context, {Error::Kind::Unsupported, error.message});
}

}  // namespace

Result<SketchLayerRef> DocumentMapping::layer(const QString& nameOrID) const {
  QList<SketchLayerRef> found = document_->layersNamed(nameOrID);
  if (found.size() > 1) {
    found.removeIf([](const SketchLayerRef& layer) { return isInShapeGroup(*layer); });
  }
  const Result<SketchLayerRef> layer = only(found, QStringLiteral("layer"), nameOrID);
  if (!layer) return layer;
  const Result<void> valid = LayerMapping::validateTarget(*layer);
  if (!valid) return failureOf(**layer, valid.error());
  return layer;
}

Result<SketchLayerRef> DocumentMapping::artboard(const QString& nameOrID) const {
  QList<SketchLayerRef> found = document_->layersNamed(nameOrID);
  found.removeIf([](const SketchLayerRef& layer) { return !layer->isArtboard(); });
  const Result<SketchLayerRef> artboard = only(found, QStringLiteral("artboard"), nameOrID);
  if (!found.isEmpty()) return artboard;
  const Error& error = artboard.error();
  return failure(error.kind, messageOf(error) + namesThatExist(document_->artboards()));
}

Result<void> DocumentMapping::map(const SketchLayerRef& layer, LayerSettings settings,
                                  const Design& design) {
  settings.artboard = QString();
  return mapAndFill(layer, settings, design);
}

Result<void> DocumentMapping::mapArtboard(const SketchLayerRef& layer, LayerSettings settings,
                                          const SketchLayerRef& artboard) {
  const Result<void> acyclic = checkAcyclic(layer, settings, artboard);
  if (!acyclic) return acyclic;
  settings.artboard = artboard->objectID();
  return mapAndFill(layer, settings, [&](const QSizeF& size) -> Result<ImageRef> {
    Result<ImageRef> drawn = draw(*artboard, size);
    if (!drawn) return failureOf(*layer, drawn.error());
    return drawn;
  });
}

Result<void> DocumentMapping::checkAcyclic(const SketchLayerRef& layer,
                                           const LayerSettings& settings,
                                           const SketchLayerRef& artboard) const {
  if (!settings.options.includedInArtboards) return {};
  const QStringList cycle = ArtboardDependencyGraph(*document_).findCycle(artboard, layer);
  if (cycle.isEmpty()) return {};
  return failure(Error::Kind::Unsupported,
                 QStringLiteral("the artboards would show each other in a circle: \"%1\"")
                     .arg(cycle.join(QStringLiteral("\" shows \""))));
}

Result<void> DocumentMapping::mapAndFill(const SketchLayerRef& layer, const LayerSettings& settings,
                                         const Design& design) {
  LayerMapping mapping(layer, settings);
  const Result<void> fits = mapping.validateSize();
  if (!fits) return failureOf(*layer, fits.error());
  const Result<ImageRef> drawn = design(mapping.rasterizationSize());
  if (!drawn) return tl::unexpected(drawn.error());
  if (Result<void> running = checkStop(); !running) return running;
  const Result<ImageRef> image = mapping.createImage(*drawn);
  if (!image) return failureOf(*layer, image.error());
  if (Result<void> running = checkStop(); !running) return running;
  return mapping.fill(*document_, *image);
}

Result<void> DocumentMapping::checkStop() const {
  if (stop_.stop_requested()) return failure(Error::Kind::Io, kDrawingStopped);
  return {};
}

Result<void> DocumentMapping::fill(const SketchLayerRef& layer, const LayerSettings& settings,
                                   const ImageRef& image) {
  const Result<void> valid = LayerMapping::validateTarget(layer);
  if (!valid) return failureOf(*layer, valid.error());
  if (!image || !image->isValid()) {
    return failureOf(*layer, {Error::Kind::InvalidArgument, "there is no image for it"});
  }
  if (!settings.artboard.isNull()) {
    const Result<SketchLayerRef> design = artboard(settings.artboard);
    if (!design) return tl::unexpected(design.error());
    const Result<void> acyclic = checkAcyclic(layer, settings, *design);
    if (!acyclic) return acyclic;
  }
  return LayerMapping(layer, settings).fill(*document_, image);
}

Result<ImageRef> DocumentMapping::draw(const SketchLayer& artboard, const QSizeF& size) {
  QSet<QString> excluded;
  for (const SketchLayerRef& page : document_->pages()) {
    for (const SketchLayerRef& layer : page->withDescendants()) {
      const auto settings = LayerSettings::of(*layer);
      if (settings && !settings->options.includedInArtboards) excluded.insert(layer->objectID());
    }
  }
  ArtboardRenderer renderer(document_);
  renderer.setWithoutImages(excluded);
  renderer.setStop(stop_);
  const QSizeF frame = artboard.frameRect().size();
  Result<ImageRef> image = renderer.render(artboard, magnification(frame, size));
  addWarnings(renderer.warnings());
  return image;
}

Result<QList<SketchLayerRef>> DocumentMapping::refresh() {
  QList<SketchLayerRef> layers = ArtboardDependencyGraph(*document_).topologicalOrder();
  for (const SketchLayerRef& layer : layers) {
    const Result<void> done = refreshLayer(layer);
    if (!done) return tl::unexpected(done.error());
  }
  return layers;
}

Result<void> DocumentMapping::refreshLayer(const SketchLayerRef& layer) {
  const LayerSettings settings = LayerSettings::of(*layer).value_or(LayerSettings());
  const Result<void> valid = LayerMapping::validateTarget(layer);
  if (!valid) return failureOf(*layer, valid.error());
  const Result<SketchLayerRef> design = artboard(settings.artboard);
  if (!design) {
    return failureIn(QStringLiteral("the design of the layer \"%1\" (%2) cannot be found")
                         .arg(layer->name(), layer->objectID()),
                     design.error());
  }
  return mapArtboard(layer, settings, *design);
}

void DocumentMapping::redrawPreview() {
  ArtboardRenderer renderer(document_);
  renderer.setStop(stop_);
  const Result<ImageRef> image = renderer.renderPreview();
  addWarnings(renderer.warnings());
  if (image) {
    document_->setFile(QStringLiteral("previews/preview.png"), ImageFile::toPng(**image));
  } else {
    logLine(u"DocumentMapping: no new preview: %@", {messageOf(image.error())});
  }
}

void DocumentMapping::addWarnings(const QStringList& warnings) {
  warnings_ += warnings;
  warnings_.removeDuplicates();
}

}  // namespace kelvar
