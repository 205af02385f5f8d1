#include "host/DocumentMapping.h"

#include <QBuffer>
#include <algorithm>
#include <cmath>

#include "host/ArtboardRenderer.h"
#include "host/MappedArtboards.h"
#include "platform/ImageFile.h"
#include "platform/Log.h"
#include "platform/PngWriter.h"

namespace kelvar {
namespace {

/// Layers that a sentence lists; more than these nobody reads.
constexpr qsizetype kMostListed = 12;

QString listed(const QList<SketchLayerRef>& layers) {
  QStringList lines;
  for (const SketchLayerRef& layer : layers.first(std::min(layers.size(), kMostListed))) {
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
  const qsizetype more = names.size() - kMostListed;
  if (more > 0) names = names.first(kMostListed) + QStringList(QStringLiteral("%1 more").arg(more));
  const QString last = names.isEmpty() ? QString() : names.takeLast();
  if (last.isEmpty()) return QStringLiteral(", and none at all");
  return QStringLiteral(", only ") +
         (names.isEmpty() ? last
                          : names.join(QStringLiteral(", ")) + QStringLiteral(" and ") + last);
}

namespace {

/// The only one of `found`; null, and a sentence about its `kind`, when there are none or several.
SketchLayerRef only(const QList<SketchLayerRef>& found, const QString& kind, const QString& name,
                    QString* error) {
  if (found.size() == 1) return found.first();
  if (found.isEmpty()) {
    *error = QStringLiteral("the document has no %1 \"%2\"").arg(kind, name);
  } else if (found.first()->objectID() == name) {
    *error = QStringLiteral("the document is damaged: \"%1\" is the identifier of several %2s")
                 .arg(name, kind);
  } else {
    *error = QStringLiteral("\"%1\" fits several %2s, so take the identifier of one: %3")
                 .arg(name, kind, listed(found));
  }
  return nullptr;
}

bool isInShapeGroup(const SketchLayer& layer) {
  const SketchLayerRef around = layer.parent();
  return around && around->isShapeGroup();
}

/// The most that an artboard can be magnified to be drawn as large as `size`, and no larger than
/// can be held. Whole, so that what lies on whole points stays sharp.
double magnification(const QSizeF& artboard, const QSizeF& size) {
  // It cannot be drawn at all.
  if (!(artboard.width() > 0 && artboard.height() > 0)) return 1;
  double scale = std::ceil(
      std::max({1.0, size.width() / artboard.width(), size.height() / artboard.height()}));
  scale = std::min(scale, double(ImageFile::kMaxSide));
  while (scale > 1 && !isHoldable(artboard.width() * scale + 1, artboard.height() * scale + 1)) {
    scale = std::floor(scale / 2);
  }
  return scale;
}

QString aboutLayer(const SketchLayer& layer, const QString& objection) {
  return QStringLiteral("the layer \"%1\" (%2) cannot take a design: %3")
      .arg(layer.name(), layer.objectID(), objection);
}

}  // namespace

SketchLayerRef DocumentMapping::layer(const QString& nameOrID, QString* error) const {
  QList<SketchLayerRef> found = document_->layersNamed(nameOrID);
  if (found.size() > 1) {
    found.removeIf([](const SketchLayerRef& layer) { return isInShapeGroup(*layer); });
  }
  const SketchLayerRef layer = only(found, QStringLiteral("layer"), nameOrID, error);
  if (!layer) return nullptr;
  const QString objection = LayerMapping::objectionTo(layer);
  if (objection.isNull()) return layer;
  *error = aboutLayer(*layer, objection);
  return nullptr;
}

SketchLayerRef DocumentMapping::artboard(const QString& nameOrID, QString* error) const {
  QList<SketchLayerRef> found = document_->layersNamed(nameOrID);
  found.removeIf([](const SketchLayerRef& layer) { return !layer->isArtboard(); });
  const SketchLayerRef artboard = only(found, QStringLiteral("artboard"), nameOrID, error);
  if (found.isEmpty()) *error += namesThatExist(document_->artboards());
  return artboard;
}

bool DocumentMapping::map(const SketchLayerRef& layer, LayerSettings settings, const Design& design,
                          QString* error) {
  settings.artboard = QString();
  return walk(layer, settings, design, error);
}

bool DocumentMapping::mapArtboard(const SketchLayerRef& layer, LayerSettings settings,
                                  const SketchLayerRef& artboard, QString* error) {
  if (!closesNoCircle(layer, settings, artboard, error)) return false;
  settings.artboard = artboard->objectID();
  const auto design = [&](const QSizeF& size, QString* problem) {
    const ImageRef drawn = draw(*artboard, size, problem);
    if (!drawn) *problem = aboutLayer(*layer, *problem);
    return drawn;
  };
  return walk(layer, settings, design, error);
}

bool DocumentMapping::closesNoCircle(const SketchLayerRef& layer, const LayerSettings& settings,
                                     const SketchLayerRef& artboard, QString* error) const {
  if (!settings.isIncludedInArtboards) return true;
  const QStringList circle = MappedArtboards(*document_).circle(artboard, layer);
  if (circle.isEmpty()) return true;
  *error = QStringLiteral("the artboards would show each other in a circle: \"%1\"")
               .arg(circle.join(QStringLiteral("\" shows \"")));
  return false;
}

bool DocumentMapping::walk(const SketchLayerRef& layer, const LayerSettings& settings,
                           const Design& design, QString* error) {
  LayerMapping mapping(layer, settings);
  const QString objection = mapping.objection();
  if (!objection.isNull()) {
    *error = aboutLayer(*layer, objection);
    return false;
  }
  const ImageRef drawn = design(mapping.vectorSize(), error);
  if (!drawn || isStopped(error)) return false;
  const ImageRef picture = mapping.picture(drawn, sampling_, threads_);
  if (!picture->isValid()) {
    *error = aboutLayer(*layer, QStringLiteral("its corners are too close to a line, or there is "
                                               "too little memory"));
    return false;
  }
  return !isStopped(error) && mapping.fill(*document_, picture, error);
}

bool DocumentMapping::isStopped(QString* error) const {
  if (stop_.stop_requested()) *error = kDrawingStopped;
  return stop_.stop_requested();
}

bool DocumentMapping::fill(const SketchLayerRef& layer, const LayerSettings& settings,
                           const ImageRef& picture, QString* error) {
  QString objection = LayerMapping::objectionTo(layer);
  if (objection.isNull() && !(picture && picture->isValid())) {
    objection = QStringLiteral("there is no picture for it");
  }
  if (!objection.isNull()) {
    *error = aboutLayer(*layer, objection);
    return false;
  }
  if (!settings.artboard.isNull()) {
    const SketchLayerRef design = artboard(settings.artboard, error);
    if (!design || !closesNoCircle(layer, settings, design, error)) return false;
  }
  return LayerMapping(layer, settings).fill(*document_, picture, error);
}

ImageRef DocumentMapping::draw(const SketchLayer& artboard, const QSizeF& size, QString* error) {
  QSet<QString> excluded;
  for (const SketchLayerRef& page : document_->pages()) {
    for (const SketchLayerRef& layer : page->withDescendants()) {
      const auto settings = LayerSettings::of(*layer);
      if (settings && !settings->isIncludedInArtboards) excluded.insert(layer->objectID());
    }
  }
  ArtboardRenderer renderer(document_);
  renderer.setWithoutPictures(excluded);
  renderer.setStop(stop_);
  const QSizeF frame = artboard.frameRect().size();
  const ImageRef picture = renderer.render(artboard, magnification(frame, size), error);
  keepWarnings(renderer.warnings());
  return picture;
}

bool DocumentMapping::refresh(QList<SketchLayerRef>* layers, QString* error) {
  *layers = MappedArtboards(*document_).layersInOrder();
  for (const SketchLayerRef& layer : *layers) {
    if (!refreshLayer(layer, error)) return false;
  }
  return true;
}

bool DocumentMapping::refreshLayer(const SketchLayerRef& layer, QString* error) {
  const LayerSettings settings = LayerSettings::of(*layer).value_or(LayerSettings());
  const QString objection = LayerMapping::objectionTo(layer);
  if (!objection.isNull()) {
    *error = aboutLayer(*layer, objection);
    return false;
  }
  QString problem;
  const SketchLayerRef design = artboard(settings.artboard, &problem);
  if (!design) {
    *error = QStringLiteral("the design of the layer \"%1\" (%2) cannot be found: %3")
                 .arg(layer->name(), layer->objectID(), problem);
    return false;
  }
  return mapArtboard(layer, settings, design, error);
}

void DocumentMapping::redrawPreview() {
  ArtboardRenderer renderer(document_);
  renderer.setStop(stop_);
  QString problem;
  const ImageRef picture = renderer.renderPreview(&problem);
  keepWarnings(renderer.warnings());
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  if (picture && writePng(picture->pixels(), &buffer)) {
    document_->setFile(QStringLiteral("previews/preview.png"), buffer.data());
  } else {
    logLine(u"DocumentMapping: no new preview: %@", {problem});
  }
}

void DocumentMapping::keepWarnings(const QStringList& warnings) {
  warnings_ += warnings;
  warnings_.removeDuplicates();
}

}  // namespace kelvar
