#include "host/DocumentMockup.h"

#include <algorithm>

#include "host/ArtboardRenderer.h"
#include "host/LayerMapping.h"
#include "host/MockupLayer.h"
#include "host/SketchJson.h"
#include "platform/FileName.h"
#include "platform/Log.h"

namespace kelvar {
namespace {

/// Pixels of a picture that is drawn again at every step.
constexpr double kMostWindowPixels = 24e6;

/// What shows the layer: its artboard, or else its page.
SketchLayerRef groundLayerOf(const SketchLayerRef& layer) {
  const SketchLayerRef artboard = layer->artboard();
  return artboard ? artboard : layer->page();
}

bool isSeenOn(const SketchLayerRef& layer, const SketchLayerRef& ground) {
  if (groundLayerOf(layer) != ground) return false;
  SketchLayerRef around = layer;
  while (around != ground && around->isVisible()) around = around->parent();
  return around == ground;
}

/// An identifier that nobody has yet, as like the layer's own as can be.
QString freeId(const QString& id, QHash<QString, int>* taken) {
  const QString wanted = id.isEmpty() ? QStringLiteral("unnamed") : id;
  QString free = wanted;
  while (taken->contains(free)) free = wanted + u'+' + QString::number(++(*taken)[wanted]);
  taken->insert(free, 1);
  return free;
}

/// The layers that can be seen and can take a design, the lowest first.
QList<SketchLayerRef> layersForDesigns(const SketchLayerRef& ground) {
  QList<SketchLayerRef> layers = ground->withDescendants();
  layers.removeIf([&](const SketchLayerRef& layer) {
    return !isSeenOn(layer, ground) || !LayerMapping::canMapOnto(layer);
  });
  return layers;
}

/// A rectangle that lies straight on its artboard is rarely what a mockup is made for.
bool isInPerspective(const Arrangement::Shape& shape) {
  const auto isStraight = [&](size_t i) {
    const QPointF side = shape.corners[(i + 1) % 4] - shape.corners[i];
    return qFuzzyIsNull(side.x()) || qFuzzyIsNull(side.y());
  };
  return !(isStraight(0) && isStraight(1) && isStraight(2) && isStraight(3));
}

}  // namespace

DocumentMockup::~DocumentMockup() = default;

std::shared_ptr<DocumentMockup> DocumentMockup::open(const QString& path, const Choice& choice,
                                                     QString* error) {
  const std::shared_ptr<DocumentMockup> mockup(new DocumentMockup);
  mockup->document_ = SketchDocument::open(path, error);
  if (!mockup->document_) return nullptr;
  mockup->opened_.photo = absoluteFileName(path);
  mockup->readGrounds();
  mockup->readDesigns();
  for (const Ground& ground : mockup->grounds_) mockup->readShapes(ground);
  const QString objection = mockup->choose(choice);
  if (objection.isNull()) return mockup;
  *error = objection;
  return nullptr;
}

void DocumentMockup::readGrounds() {
  const bool hasArtboards = !document_->artboards().isEmpty();
  for (const SketchLayerRef& page : document_->pages()) {
    for (const SketchLayerRef& layer : page->children()) {
      if (layer->isArtboard()) addGround(layer);
    }
    if (!hasArtboards || !layersForDesigns(page).isEmpty()) addGround(page);
  }
}

void DocumentMockup::addGround(const SketchLayerRef& layer) {
  const ArtboardRenderer renderer(document_);
  Ground ground{.artboard = {.id = freeId(layer->objectID(), &groundIds_), .name = layer->name()},
                .layer = layer};
  const bool hasPages = document_->pages().size() > 1;
  if (!layer->isPage() && hasPages)
    ground.artboard.name += QStringLiteral(" – ") + layer->page()->name();
  const QRect plain = renderer.pictureRect(*layer, 1);
  const bool isHuge = !(double(plain.width()) * plain.height() * 4 <= kMostWindowPixels);
  ground.scale = isHuge ? 1 : 2;
  const QPointF origin = renderer.pictureRect(*layer, ground.scale).topLeft();
  ground.toPicture = QTransform::fromScale(ground.scale, ground.scale) *
                     QTransform::fromTranslate(-origin.x(), -origin.y());
  if (!plain.isEmpty() || layer->isArtboard()) grounds_.append(ground);
}

QList<Mockup::Artboard> DocumentMockup::artboards() const {
  QList<Artboard> artboards;
  for (const Ground& ground : grounds_) artboards.append(ground.artboard);
  return artboards;
}

QString DocumentMockup::choose(const Choice& choice) {
  if (grounds_.isEmpty()) return QStringLiteral("there is nothing in the document to show");
  const DocumentMapping mapping(document_);
  QString error;
  QList<SketchLayerRef> layers;
  for (const QString& name : choice.layers) {
    const SketchLayerRef layer = mapping.layer(name, &error);
    if (!layer) return error;
    layers.append(layer);
  }
  SketchLayerRef shown = layers.isEmpty() ? nullptr : groundLayerOf(layers.first());
  if (!choice.artboard.isEmpty()) {
    shown = mapping.artboard(choice.artboard, &error);
    if (!shown) return error;
    if (groundOf(shown).isNull()) {
      return QStringLiteral("the artboard \"%1\" lies within another").arg(shown->name());
    }
  }
  opened_.artboard = shown ? groundOf(shown) : choice.artboardBefore;
  if (!ground(opened_.artboard)) opened_.artboard = mostLikelyArtboard();
  for (const SketchLayerRef& layer : layers) {
    const Arrangement::Shape* shape = opened_.shape(shapeOf(layer));
    if (!shape || shape->artboard != opened_.artboard) {
      return QStringLiteral("the layer \"%1\" cannot be seen on the artboard \"%2\"")
          .arg(layer->name(), ground(opened_.artboard)->layer->name());
    }
    chosen_.append(shape->id);
  }
  return {};
}

QString DocumentMockup::groundOf(const SketchLayerRef& artboard) const {
  const auto found = std::find_if(grounds_.begin(), grounds_.end(),
                                  [&](const Ground& ground) { return ground.layer == artboard; });
  return found == grounds_.end() ? QString() : found->artboard.id;
}

QString DocumentMockup::shapeOf(const SketchLayerRef& layer) const {
  const auto found = std::find_if(layers_.begin(), layers_.end(),
                                  [&](const auto& each) { return each->layer() == layer; });
  return found == layers_.end() ? QString() : found.key();
}

const DocumentMockup::Ground* DocumentMockup::ground(const QString& id) const {
  const auto found = std::find_if(grounds_.begin(), grounds_.end(),
                                  [&](const Ground& ground) { return ground.artboard.id == id; });
  return found == grounds_.end() ? nullptr : &*found;
}

QString DocumentMockup::mostLikelyArtboard() const {
  for (const Arrangement::Shape& shape : opened_.shapes) {
    if (isInPerspective(shape)) return shape.artboard;
  }
  return opened_.shapes.isEmpty() ? grounds_.first().artboard.id : opened_.shapes.first().artboard;
}

void DocumentMockup::readDesigns() {
  const auto add = [this](const SketchLayerRef& layer) {
    const QString id = layer->objectID();
    if (id.isEmpty() || designLayers_.contains(id)) return;
    designLayers_.insert(id, layer);
    opened_.designs.append({id, layer->name(), QString()});
  };
  for (const SketchLayerRef& artboard : document_->artboards()) add(artboard);
  QSet<QString> pictures;
  for (const SketchLayerRef& page : document_->pages()) {
    for (const SketchLayerRef& layer : page->withDescendants()) {
      if (layer->kind() != u"bitmap") continue;
      const QString picture = textIn(memberOf(layer->json(), "image"), "_ref");
      if (pictures.contains(picture)) continue;
      if (!picture.isNull()) pictures.insert(picture);
      add(layer);
    }
  }
}

void DocumentMockup::readShapes(const Ground& ground) {
  for (const SketchLayerRef& layer : layersForDesigns(ground.layer)) {
    const auto mockupLayer = std::make_shared<MockupLayer>(layer, ground.layer, ground.toPicture);
    const Arrangement::Shape shape = readShape(*mockupLayer, ground);
    layers_.insert(shape.id, mockupLayer);
    shown_.insert(shape.id, {shape, nullptr, {}, {}});
    opened_.shapes.append(shape);
  }
}

Arrangement::Shape DocumentMockup::readShape(const MockupLayer& layer, const Ground& ground) {
  Arrangement::Shape shape = layer.shape();
  shape.id = freeId(shape.id, &shapeIds_);
  shape.artboard = ground.artboard.id;
  const auto& settings = layer.settings();
  if (!settings) return shape;
  const bool isKnown = designLayers_.contains(settings->artboard);
  shape.design = isKnown ? settings->artboard : settings->image;
  if (!isKnown && !settings->image.isEmpty() && !opened_.design(settings->image)) {
    opened_.designs.append(
        {settings->image, QStringLiteral("Mapped onto %1 before").arg(shape.name), QString()});
  }
  return shape;
}

void DocumentMockup::apply(const Arrangement& arrangement, const std::stop_token& stop) {
  QList<Arrangement::Shape> shapes = arrangement.shapes;
  // What is not included in artboards may have this one as its design, with the others on it.
  std::stable_partition(shapes.begin(), shapes.end(), [](const auto& one) { return one.included; });
  for (const Arrangement::Shape& shape : shapes) {
    if (stop.stop_requested()) return;
    if (!layers_.contains(shape.id)) continue;
    QString doubt;
    const ImageRef picture = filePicture(arrangement, shape, &doubt);
    const auto shown = shown_.find(shape.id);
    if (shown != shown_.end() && shown->shape == shape && shown->picture == picture) {
      shown->doubt = doubt;
      continue;
    }
    isPreviewOld_ = true;
    QString problem = show(shape, picture, stop);
    // Whatever it looks like now, it is to be shown again.
    if (stop.stop_requested()) {
      shown_.remove(shape.id);
      return;
    }
    if (!problem.isEmpty() && !doubt.isEmpty()) problem = doubt;
    shown_.insert(shape.id, {shape, picture, problem, doubt});
  }
}

ImageRef DocumentMockup::filePicture(const Arrangement& arrangement,
                                     const Arrangement::Shape& shape, QString* problem) {
  const Arrangement::Design* design = arrangement.design(shape.design);
  if (!design || design->file.isEmpty()) return nullptr;
  const MockupLayer& layer = *layers_.value(shape.id);
  const QSizeF size = LayerMapping(layer.layer(), layer.settingsFor(shape)).vectorSize();
  const ImageRef picture = pictures_.read(design->file, size, problem);
  return picture ? picture : pictures_.last(design->file);
}

QString DocumentMockup::show(const Arrangement::Shape& shape, const ImageRef& filePicture,
                             const std::stop_token& stop) {
  const MockupLayer& layer = *layers_.value(shape.id);
  layer.restore(*document_);
  const bool isAsOpened = *opened_.shape(shape.id) == shape;
  if (isAsOpened && !refreshed_.contains(shape.id)) return {};
  if (shape.design.isEmpty()) {
    LayerMapping::clear(*document_, *layer.layer());
    return {};
  }
  const SketchLayerRef designLayer = designLayers_.value(shape.design);
  if (!designLayer && opened_.design(shape.design)) return keepPicture(layer, shape);
  DocumentMapping mapping(document_);
  mapping.setStop(stop);
  const LayerSettings settings = layer.settingsFor(shape);
  QString problem;
  if (designLayer && designLayer->isArtboard()) {
    mapping.mapArtboard(layer.layer(), settings, designLayer, &problem);
  } else {
    const auto picture = [&](const QSizeF&, QString* error) {
      const ImageRef found =
          designLayer ? document_->image(memberOf(designLayer->json(), "image")) : filePicture;
      if (!found) *error = QStringLiteral("its picture cannot be read");
      return found;
    };
    mapping.map(layer.layer(), settings, picture, &problem);
  }
  for (const QString& warning : mapping.warnings()) logLine(u"DocumentMockup: %@", {warning});
  return problem;
}

/// Of a picture that came from elsewhere, the document has only what was made of it.
QString DocumentMockup::keepPicture(const MockupLayer& layer,
                                    const Arrangement::Shape& shape) const {
  Arrangement::Shape same = *opened_.shape(shape.id);
  same.included = shape.included;
  if (same != shape) {
    return QStringLiteral(
        "its picture is in the document only as it was mapped: choose a design anew");
  }
  LayerSettings settings = layer.settings().value_or(LayerSettings());
  settings.isIncludedInArtboards = shape.included;
  settings.rememberOn(*layer.layer());
  return {};
}

Mockup::Drawing DocumentMockup::makeDrawing(const Arrangement& arrangement, Purpose purpose,
                                            const std::stop_token& stop) {
  apply(arrangement, stop);
  if (stop.stop_requested()) return {nullptr, kDrawingStopped, {}};
  Drawing drawing;
  for (const Arrangement::Shape& shape : arrangement.shapes) {
    const Shown shown = shown_.value(shape.id);
    const QString problem = shown.problem.isEmpty() ? shown.doubt : shown.problem;
    if (!problem.isEmpty()) drawing.shapeProblems.insert(shape.id, problem);
  }
  const Ground* const found = this->ground(arrangement.artboard);
  const Ground& ground = found ? *found : grounds_.first();
  const double scale = purpose == Purpose::Window ? ground.scale : exportScale(arrangement);
  ArtboardRenderer renderer(document_);
  renderer.setStop(stop);
  drawing.picture = renderer.render(*ground.layer, scale, &drawing.problem);
  return drawing;
}

double DocumentMockup::exportScale(const Arrangement& arrangement) const {
  double scale = 1;
  for (const Arrangement::Shape& shape : arrangement.shapesInSight()) {
    const auto layer = layers_.value(shape.id);
    if (layer && !shape.design.isEmpty())
      scale = std::max(scale, layer->settingsFor(shape).quality);
  }
  return scale;
}

ImageRef DocumentMockup::makeDesignPicture(const Arrangement::Design& design, int side,
                                           QString* error, const std::stop_token& stop) {
  if (!design.file.isEmpty()) return pictures_.read(design.file, {}, error);
  const SketchLayerRef layer = designLayers_.value(design.id);
  if (layer && layer->isArtboard()) {
    const QSizeF size = layer->frameRect().size();
    const double longest = std::max({size.width(), size.height(), 1.0});
    ArtboardRenderer renderer(document_);
    renderer.setStop(stop);
    return renderer.render(*layer, std::min(1.0, side / longest), error);
  }
  const SketchJson reference =
      layer ? memberOf(layer->json(), "image") : SketchJson{{"_ref", design.id.toStdString()}};
  const ImageRef picture = document_->image(reference);
  if (!picture) *error = QStringLiteral("the picture of \"%1\" cannot be read").arg(design.name);
  return picture;
}

void DocumentMockup::refresh(const Arrangement::Design& design) {
  if (!design.file.isEmpty()) return pictures_.forget(design.file);
  if (!designLayers_.contains(design.id)) return;
  for (auto shown = shown_.begin(); shown != shown_.end();) {
    const bool isShowing = shown->shape.design == design.id;
    if (isShowing) refreshed_.insert(shown.key());
    shown = isShowing ? shown_.erase(shown) : std::next(shown);
  }
}

bool DocumentMockup::save(const Arrangement& arrangement, const QString& path, QString* error) {
  apply(arrangement, {});
  for (const Arrangement::Shape& shape : arrangement.shapes) {
    const QString problem = shown_.value(shape.id).problem;
    if (problem.isEmpty()) continue;
    *error = QStringLiteral("\"%1\" in \"%2\" cannot be saved: %3")
                 .arg(shape.name, ground(shape.artboard)->layer->name(), problem);
    return false;
  }
  if (isPreviewOld_) DocumentMapping(document_).redrawPreview();
  isPreviewOld_ = false;
  return document_->save(path, error);
}

bool DocumentMockup::hasChangedOnDisk(const QString& path) const {
  return document_->hasChangedOnDisk(path);
}

void DocumentMockup::disregardDisk() { document_->disregardDisk(); }

}  // namespace kelvar
