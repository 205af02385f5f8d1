#include "host/DocumentMockup.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <algorithm>

#include "host/ArtboardRenderer.h"
#include "host/LayerMapping.h"
#include "host/MockupLayer.h"
#include "host/SketchJson.h"
#include "platform/Log.h"
#include "platform/WholeFile.h"
#include "platform/ZipArchive.h"

namespace kelvar {
namespace {

/// Pixels of a picture that is drawn again at every step.
constexpr double kMostWindowPixels = 24e6;

QByteArray digestOf(const QByteArray& bytes) {
  return QCryptographicHash::hash(bytes, QCryptographicHash::Sha1);
}

bool isSeenOn(const SketchLayerRef& layer, const SketchLayerRef& artboard) {
  SketchLayerRef around = layer;
  while (around != artboard && around->isVisible()) around = around->parent();
  return around == artboard;
}

/// The layers that can be seen and can take a design, the lowest first.
QList<SketchLayerRef> layersForDesigns(const SketchLayerRef& artboard) {
  QList<SketchLayerRef> layers = artboard->withDescendants();
  layers.removeIf([&](const SketchLayerRef& layer) {
    return !isSeenOn(layer, artboard) || !LayerMapping::canMapOnto(layer);
  });
  return layers;
}

/// A rectangle that lies straight on its artboard is rarely what a mockup is made for.
bool isInPerspective(const SketchLayerRef& layer, const SketchLayerRef& artboard) {
  const auto corners = MockupLayer(layer, artboard, 1).shape().corners;
  const auto isStraight = [&](size_t i) {
    const QPointF side = corners[(i + 1) % 4] - corners[i];
    return qFuzzyIsNull(side.x()) || qFuzzyIsNull(side.y());
  };
  return !(isStraight(0) && isStraight(1) && isStraight(2) && isStraight(3));
}

}  // namespace

DocumentMockup::~DocumentMockup() = default;

std::shared_ptr<DocumentMockup> DocumentMockup::open(const QString& path, const Choice& choice,
                                                     QString* error) {
  const std::shared_ptr<DocumentMockup> mockup(new DocumentMockup);
  QByteArray bytes;
  if (!WholeFile::read(path, ZipArchive::kMaxArchiveBytes, &bytes, error)) return nullptr;
  mockup->document_ = SketchDocument::read(bytes, path, error);
  if (!mockup->document_ || !mockup->choose(choice, error)) return nullptr;
  mockup->path_ = QFileInfo(path).absoluteFilePath();
  mockup->digest_ = digestOf(bytes);
  mockup->opened_.photo = mockup->path_;
  mockup->readDesigns();
  mockup->readShapes();
  return mockup;
}

bool DocumentMockup::choose(const Choice& choice, QString* error) {
  const DocumentMapping mapping(document_);
  QList<SketchLayerRef> layers;
  for (const QString& name : choice.layers) {
    const SketchLayerRef layer = mapping.layer(name, error);
    if (!layer) return false;
    layers.append(layer);
    chosen_.append(layer->objectID());
  }
  if (!choice.artboard.isEmpty()) {
    artboard_ = mapping.artboard(choice.artboard, error);
    if (!artboard_) return false;
  } else {
    artboard_ = layers.isEmpty() ? mostLikelyArtboard() : layers.first()->artboard();
  }
  if (!artboard_) {
    *error = layers.isEmpty()
                 ? QStringLiteral("the document has no artboard to show")
                 : QStringLiteral("the layer \"%1\" is on no artboard").arg(layers[0]->name());
    return false;
  }
  for (const SketchLayerRef& layer : layers) {
    if (layer->artboard() == artboard_ && isSeenOn(layer, artboard_)) continue;
    *error = QStringLiteral("the layer \"%1\" cannot be seen on the artboard \"%2\"")
                 .arg(layer->name(), artboard_->name());
    return false;
  }
  const QSizeF size = artboard_->frameRect().size();
  windowScale_ = size.width() * size.height() * 4 <= kMostWindowPixels ? 2 : 1;
  return true;
}

SketchLayerRef DocumentMockup::mostLikelyArtboard() const {
  const QList<SketchLayerRef> artboards = document_->artboards();
  SketchLayerRef withShapes;
  for (const SketchLayerRef& artboard : artboards) {
    for (const SketchLayerRef& layer : layersForDesigns(artboard)) {
      if (isInPerspective(layer, artboard)) return artboard;
      if (!withShapes) withShapes = artboard;
    }
  }
  return withShapes ? withShapes : artboards.value(0);
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

void DocumentMockup::readShapes() {
  for (const SketchLayerRef& layer : layersForDesigns(artboard_)) {
    const auto mockupLayer = std::make_shared<MockupLayer>(layer, artboard_, windowScale_);
    Arrangement::Shape shape = mockupLayer->shape();
    if (shape.id.isEmpty() || layers_.contains(shape.id)) continue;
    if (const auto& settings = mockupLayer->settings()) {
      const bool isKnown = designLayers_.contains(settings->artboard);
      shape.design = isKnown ? settings->artboard : settings->image;
      if (!isKnown && !settings->image.isEmpty() && !opened_.design(settings->image)) {
        opened_.designs.append(
            {settings->image, QStringLiteral("Mapped onto %1 before").arg(shape.name), QString()});
      }
    }
    layers_.insert(shape.id, mockupLayer);
    shown_.insert(shape.id, {shape, nullptr, {}, {}});
    opened_.shapes.append(shape);
  }
}

void DocumentMockup::apply(const Arrangement& arrangement) {
  QList<Arrangement::Shape> shapes = arrangement.shapes;
  // What is not included in artboards may have this one as its design, with the others on it.
  std::stable_partition(shapes.begin(), shapes.end(), [](const auto& one) { return one.included; });
  for (const Arrangement::Shape& shape : shapes) {
    if (!layers_.contains(shape.id)) continue;
    QString doubt;
    const ImageRef picture = filePicture(arrangement, shape, &doubt);
    const auto shown = shown_.find(shape.id);
    if (shown != shown_.end() && shown->shape == shape && shown->picture == picture) {
      shown->doubt = doubt;
      continue;
    }
    isPreviewOld_ = true;
    QString problem = show(shape, picture);
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

QString DocumentMockup::show(const Arrangement::Shape& shape, const ImageRef& filePicture) {
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

Mockup::Drawing DocumentMockup::draw(const Arrangement& arrangement, Purpose purpose) {
  apply(arrangement);
  Drawing drawing;
  for (const Arrangement::Shape& shape : arrangement.shapes) {
    const Shown shown = shown_.value(shape.id);
    const QString problem = shown.problem.isEmpty() ? shown.doubt : shown.problem;
    if (!problem.isEmpty()) drawing.shapeProblems.insert(shape.id, problem);
  }
  const double scale = purpose == Purpose::Window ? windowScale_ : exportScale(arrangement);
  drawing.picture = ArtboardRenderer(document_).render(*artboard_, scale, &drawing.problem);
  return drawing;
}

double DocumentMockup::exportScale(const Arrangement& arrangement) const {
  double scale = 1;
  for (const Arrangement::Shape& shape : arrangement.shapes) {
    const auto layer = layers_.value(shape.id);
    if (layer && !shape.design.isEmpty())
      scale = std::max(scale, layer->settingsFor(shape).quality);
  }
  return scale;
}

ImageRef DocumentMockup::designPicture(const Arrangement::Design& design, int side,
                                       QString* error) {
  if (!design.file.isEmpty()) return pictures_.read(design.file, {}, error);
  const SketchLayerRef layer = designLayers_.value(design.id);
  if (layer && layer->isArtboard()) {
    const QSizeF size = layer->frameRect().size();
    const double longest = std::max({size.width(), size.height(), 1.0});
    return ArtboardRenderer(document_).render(*layer, std::min(1.0, side / longest), error);
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
  apply(arrangement);
  for (const Arrangement::Shape& shape : arrangement.shapes) {
    const QString problem = shown_.value(shape.id).problem;
    if (problem.isEmpty()) continue;
    *error = QStringLiteral("\"%1\" cannot be saved: %2").arg(shape.name, problem);
    return false;
  }
  if (isPreviewOld_) DocumentMapping(document_).redrawPreview();
  isPreviewOld_ = false;
  const QByteArray bytes = document_->bytes(error);
  if (bytes.isEmpty() || !WholeFile::write(path, bytes, error)) return false;
  path_ = QFileInfo(path).absoluteFilePath();
  digest_ = digestOf(bytes);
  return true;
}

bool DocumentMockup::hasChangedOnDisk(const QString& path) const {
  QFile file(path);
  if (QFileInfo(path).absoluteFilePath() != path_ || !file.open(QIODevice::ReadOnly)) return false;
  QCryptographicHash hash(QCryptographicHash::Sha1);
  return hash.addData(&file) && hash.result() != digest_;
}

void DocumentMockup::disregardDisk() {
  QByteArray bytes;
  QString error;
  if (WholeFile::read(path_, ZipArchive::kMaxArchiveBytes, &bytes, &error))
    digest_ = digestOf(bytes);
}

}  // namespace kelvar
