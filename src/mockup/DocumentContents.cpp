#include "mockup/DocumentContents.h"

#include <algorithm>

#include "mockup/DocumentMapping.h"
#include "platform/QtError.h"
#include "platform/files/FileName.h"
#include "sketch/document/Layer.h"
#include "sketch/render/ArtboardRenderer.h"

namespace kelvar {
namespace {

/// Pixels of an image that is drawn again at every step.
constexpr double kMaxWindowPixels = 24e6;

/// The artboard that shows the layer, or else its page.
SketchLayerRef backdropLayerOf(const SketchLayerRef& layer) {
  const SketchLayerRef artboard = layer->artboard();
  return artboard ? artboard : layer->page();
}

bool isVisibleOn(const SketchLayerRef& layer, const SketchLayerRef& backdrop) {
  if (backdropLayerOf(layer) != backdrop) return false;
  SketchLayerRef ancestor = layer;
  while (ancestor != backdrop && ancestor->isVisible()) ancestor = ancestor->parent();
  return ancestor == backdrop;
}

/// The layer's own identifier, with a suffix if it is in use.
QString makeUniqueId(const QString& id, QHash<QString, int>* used) {
  const QString base = id.isEmpty() ? QStringLiteral("unnamed") : id;
  QString unique = base;
  while (used->contains(unique)) unique = base + u'+' + QString::number(++(*used)[base]);
  used->insert(unique, 1);
  return unique;
}

/// The visible layers that can take a design, the lowest first.
QList<SketchLayerRef> layersForDesigns(const SketchLayerRef& backdrop) {
  QList<SketchLayerRef> layers = backdrop->withDescendants();
  layers.removeIf([&](const SketchLayerRef& layer) {
    return !isVisibleOn(layer, backdrop) || !LayerMapping::canMapOnto(layer);
  });
  return layers;
}

/// Mockups are rarely made for an upright rectangle.
bool isInPerspective(const Arrangement::Shape& shape) {
  const auto isStraight = [&](size_t i) {
    const QPointF side = shape.corners[(i + 1) % 4] - shape.corners[i];
    return qFuzzyIsNull(side.x()) || qFuzzyIsNull(side.y());
  };
  return !(isStraight(0) && isStraight(1) && isStraight(2) && isStraight(3));
}

}  // namespace

DocumentContents::DocumentContents(SketchDocumentRef document, const QString& path)
    : document_(std::move(document)) {
  arrangement_.photo = absoluteFileName(path);
  readBackdrops();
  readDesigns();
  for (const Backdrop& backdrop : backdrops_) readShapes(backdrop);
}

void DocumentContents::readBackdrops() {
  const bool hasArtboards = !document_->artboards().isEmpty();
  for (const SketchLayerRef& page : document_->pages()) {
    for (const SketchLayerRef& layer : page->children()) {
      if (layer->isArtboard()) addBackdrop(layer);
    }
    if (!hasArtboards || !layersForDesigns(page).isEmpty()) addBackdrop(page);
  }
}

void DocumentContents::addBackdrop(const SketchLayerRef& layer) {
  const ArtboardRenderer renderer(document_);
  Backdrop backdrop{
      .artboard = {.id = makeUniqueId(layer->objectID(), &backdropIds_), .name = layer->name()},
      .layer = layer};
  const bool hasPages = document_->pages().size() > 1;
  if (!layer->isPage() && hasPages) {
    backdrop.artboard.name += QStringLiteral(" – ") + layer->page()->name();
  }
  const QRect plain = renderer.imageRect(*layer, 1);
  const bool isHuge = !(double(plain.width()) * plain.height() * 4 <= kMaxWindowPixels);
  backdrop.scale = isHuge ? 1 : 2;
  const QPointF origin = renderer.imageRect(*layer, backdrop.scale).topLeft();
  backdrop.toImage = QTransform::fromScale(backdrop.scale, backdrop.scale) *
                     QTransform::fromTranslate(-origin.x(), -origin.y());
  if (!plain.isEmpty() || layer->isArtboard()) backdrops_.append(backdrop);
}

void DocumentContents::readDesigns() {
  for (const SketchLayerRef& artboard : document_->artboards()) addDesign(artboard);
  QSet<QString> images;
  for (const SketchLayerRef& page : document_->pages()) {
    for (const SketchLayerRef& layer : page->withDescendants()) {
      if (layer->kind() != u"bitmap") continue;
      const QString image = layer->node().properties().image.name;
      if (images.contains(image)) continue;
      if (!image.isNull()) images.insert(image);
      addDesign(layer);
    }
  }
}

void DocumentContents::addDesign(const SketchLayerRef& layer) {
  const QString id = layer->objectID();
  if (id.isEmpty() || designLayers_.contains(id)) return;
  designLayers_.insert(id, layer);
  arrangement_.designs.append({id, layer->name(), QString()});
}

void DocumentContents::readShapes(const Backdrop& backdrop) {
  for (const SketchLayerRef& layer : layersForDesigns(backdrop.layer)) {
    const auto mockupLayer =
        std::make_shared<const MockupLayer>(layer, backdrop.layer, backdrop.toImage);
    const Arrangement::Shape shape = readShape(*mockupLayer, backdrop);
    layers_.insert(shape.id, mockupLayer);
    arrangement_.shapes.append(shape);
  }
}

Arrangement::Shape DocumentContents::readShape(const MockupLayer& layer, const Backdrop& backdrop) {
  Arrangement::Shape shape = layer.shape();
  shape.id = makeUniqueId(shape.id, &shapeIds_);
  shape.artboard = backdrop.artboard.id;
  const auto& settings = layer.settings();
  if (!settings) return shape;
  const bool isKnown = designLayers_.contains(settings->artboard);
  shape.design = isKnown ? settings->artboard : settings->image;
  if (!isKnown && !settings->image.isEmpty() && !arrangement_.design(settings->image)) {
    arrangement_.designs.append(
        {settings->image, QStringLiteral("Mapped onto %1 before").arg(shape.name), QString()});
  }
  return shape;
}

Result<QStringList> DocumentContents::choose(const DocumentChoice& choice) {
  if (backdrops_.isEmpty()) {
    return failure(Error::Kind::NotFound, QStringLiteral("the document has nothing to show"));
  }
  const Result<QList<SketchLayerRef>> layers = layersNamed(choice.layers);
  if (!layers) return tl::unexpected(layers.error());
  const Result<QString> artboard = artboardFor(choice, *layers);
  if (!artboard) return tl::unexpected(artboard.error());
  arrangement_.artboard = *artboard;
  QStringList shapes;
  for (const SketchLayerRef& layer : *layers) {
    const Arrangement::Shape* shape = arrangement_.shape(shapeOf(layer));
    if (!shape || shape->artboard != *artboard) {
      return failure(Error::Kind::NotFound,
                     QStringLiteral("the layer \"%1\" is not visible on the artboard \"%2\"")
                         .arg(layer->name(), backdrop(*artboard)->layer->name()));
    }
    shapes.append(shape->id);
  }
  return shapes;
}

Result<QList<SketchLayerRef>> DocumentContents::layersNamed(const QStringList& names) const {
  const DocumentMapping mapping(document_);
  QList<SketchLayerRef> layers;
  for (const QString& name : names) {
    const Result<SketchLayerRef> layer = mapping.layer(name);
    if (!layer) return tl::unexpected(layer.error());
    layers.append(*layer);
  }
  return layers;
}

Result<QString> DocumentContents::artboardFor(const DocumentChoice& choice,
                                              const QList<SketchLayerRef>& layers) const {
  if (!choice.artboard.isEmpty()) {
    const Result<SketchLayerRef> artboard = DocumentMapping(document_).artboard(choice.artboard);
    if (!artboard) return tl::unexpected(artboard.error());
    const QString id = backdropOf(*artboard);
    if (!id.isNull()) return id;
    return failure(
        Error::Kind::NotFound,
        QStringLiteral("the artboard \"%1\" lies within another").arg((*artboard)->name()));
  }
  const QString id =
      layers.isEmpty() ? choice.artboardBefore : backdropOf(backdropLayerOf(layers.first()));
  return backdrop(id) ? id : mostLikelyArtboard();
}

QString DocumentContents::backdropOf(const SketchLayerRef& layer) const {
  const auto found = std::find_if(backdrops_.begin(), backdrops_.end(),
                                  [&](const Backdrop& each) { return each.layer == layer; });
  return found == backdrops_.end() ? QString() : found->artboard.id;
}

QString DocumentContents::shapeOf(const SketchLayerRef& layer) const {
  const auto found = std::find_if(layers_.begin(), layers_.end(),
                                  [&](const auto& each) { return each->layer() == layer; });
  return found == layers_.end() ? QString() : found.key();
}

const DocumentContents::Backdrop* DocumentContents::backdrop(const QString& id) const {
  const auto found = std::find_if(backdrops_.begin(), backdrops_.end(),
                                  [&](const Backdrop& each) { return each.artboard.id == id; });
  return found == backdrops_.end() ? nullptr : &*found;
}

const MockupLayer* DocumentContents::layer(const QString& shape) const {
  return layers_.value(shape).get();
}

QString DocumentContents::mostLikelyArtboard() const {
  for (const Arrangement::Shape& shape : arrangement_.shapes) {
    if (isInPerspective(shape)) return shape.artboard;
  }
  return arrangement_.shapes.isEmpty() ? backdrops_.first().artboard.id
                                       : arrangement_.shapes.first().artboard;
}

}  // namespace kelvar
