#include "scripting/KVDocumentMapping.h"

#include <stdexcept>

#include "host/DocumentMapping.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

const ClassInfo::Registration kRegistered(&KVDocumentMapping::theClass);

void require(bool good, const QString& error) {
  if (!good) throw std::runtime_error(error.toStdString());
}

template <class T>
void read(const QVariantMap& settings, const QString& key, T* value) {
  if (!settings.contains(key)) return;
  const std::optional<T> read = fromVariant<T>(settings[key]);
  require(read.has_value(), u"the setting %1 does not fit"_s.arg(key));
  *value = *read;
}

}  // namespace

const ClassInfo& KVDocumentMapping::theClass() {
  using Self = KVDocumentMapping;
  static const ClassInfo kClass =
      Description<Self>("KVDocumentMapping")
          .classOperation("mapArtboard:ontoLayer:inDocument:settings:", &Self::mapArtboard)
          .classOperation("settingsOfLayer:", &Self::settingsOfLayer)
          .classOperation("refreshDocument:", &Self::refreshDocument)
          .classOperation("saveDocument:toFile:", &Self::saveDocument);
  return kClass;
}

void KVDocumentMapping::mapArtboard(const SketchLayerRef& artboard, const SketchLayerRef& ontoLayer,
                                    const SketchDocumentRef& inDocument,
                                    const QVariantMap& settings) {
  require(artboard && ontoLayer && inDocument, u"an artboard, a layer or a document is missing"_s);
  LayerSettings wanted = LayerSettings::of(*ontoLayer).value_or(LayerSettings());
  read(settings, u"quality"_s, &wanted.quality);
  read(settings, u"rotation"_s, &wanted.rotation);
  read(settings, u"flipped"_s, &wanted.isFlipped);
  read(settings, u"included"_s, &wanted.isIncludedInArtboards);
  const QString objection = LayerMapping::objectionTo(ontoLayer);
  require(objection.isNull(), u"the layer \"%1\": %2"_s.arg(ontoLayer->name(), objection));
  QString error;
  require(DocumentMapping(inDocument).mapArtboard(ontoLayer, wanted, artboard, &error), error);
}

QVariant KVDocumentMapping::settingsOfLayer(const SketchLayerRef& layer) {
  const auto settings = layer ? LayerSettings::of(*layer) : std::nullopt;
  if (!settings) return {};
  return QVariantMap{{u"artboard"_s, toVariant(settings->artboard)},
                     {u"quality"_s, settings->quality},
                     {u"rotation"_s, toVariant(settings->rotation)},
                     {u"flipped"_s, settings->isFlipped},
                     {u"included"_s, settings->isIncludedInArtboards}};
}

QVariantList KVDocumentMapping::refreshDocument(const SketchDocumentRef& document) {
  require(document != nullptr, u"the document is missing"_s);
  QList<SketchLayerRef> layers;
  QString error;
  require(DocumentMapping(document).refresh(&layers, &error), error);
  QVariantList refreshed;
  for (const SketchLayerRef& layer : layers) refreshed.append(toVariant(layer));
  return refreshed;
}

void KVDocumentMapping::saveDocument(const SketchDocumentRef& document, const QString& toFile) {
  require(document != nullptr, u"the document is missing"_s);
  DocumentMapping(document).redrawPreview();
  QString error;
  require(document->save(toFile, &error), error);
}

}  // namespace kelvar
