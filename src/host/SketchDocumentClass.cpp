#include <stdexcept>

#include "geometry/KVImageTransform.h"
#include "host/DocumentMapping.h"
#include "host/MappedArtboards.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&SketchDocument::theClass);

/// What scripts get to read as the message of an exception.
void require(bool good, const QString& error) {
  if (!good) throw std::runtime_error(error.toStdString());
}

QVariantList listOf(const QList<SketchLayerRef>& layers) {
  QVariantList list;
  for (const SketchLayerRef& layer : layers) list.append(toVariant(layer));
  return list;
}

DocumentMapping mappingOf(SketchDocument& self) {
  return DocumentMapping(std::static_pointer_cast<SketchDocument>(self.shared_from_this()));
}

/// The artboard as a design, as fine as the transform, whose corners are set, can use it.
ImageRef imageOfArtboard(SketchDocument& self, const SketchLayerRef& artboard,
                         const std::shared_ptr<KVImageTransform>& forTransform) {
  require(artboard && forTransform, QStringLiteral("an artboard or a transform is missing"));
  DocumentMapping mapping = mappingOf(self);
  QString error;
  const QSizeF size = Mapping::vectorSize(forTransform->placement().quad);
  const ImageRef image = mapping.draw(*artboard, size, &error);
  require(image != nullptr, error);
  self.addWarnings(mapping.warnings());
  return image;
}

template <class T>
void read(const QVariantMap& settings, const char* key, T* value) {
  const QString name = QString::fromLatin1(key);
  if (!settings.contains(name)) return;
  const std::optional<T> read = fromVariant<T>(settings[name]);
  require(read.has_value(), QStringLiteral("the setting %1 does not fit").arg(name));
  *value = *read;
}

/// Makes the picture the layer's fill. What `settings` leaves out is remembered as it was before.
void fillLayer(SketchDocument& self, const SketchLayerRef& layer, const ImageRef& withImage,
               const QVariantMap& settings) {
  require(layer != nullptr, QStringLiteral("the layer is missing"));
  LayerSettings wanted = LayerSettings::of(*layer).value_or(LayerSettings());
  read(settings, "artboard", &wanted.artboard);
  read(settings, "quality", &wanted.quality);
  read(settings, "rotation", &wanted.rotation);
  read(settings, "flipped", &wanted.isFlipped);
  read(settings, "included", &wanted.isIncludedInArtboards);
  require(wanted.quality > 0, QStringLiteral("the setting quality is not above 0"));
  QString error;
  require(mappingOf(self).fill(layer, wanted, withImage, &error), error);
}

/// None for a layer onto which nothing was mapped.
QVariant settingsOfLayer(const SketchDocument&, const SketchLayerRef& layer) {
  const auto settings = layer ? LayerSettings::of(*layer) : std::nullopt;
  if (!settings) return {};
  return QVariantMap{{QStringLiteral("artboard"), toVariant(settings->artboard)},
                     {QStringLiteral("quality"), settings->quality},
                     {QStringLiteral("rotation"), toVariant(settings->rotation)},
                     {QStringLiteral("flipped"), settings->isFlipped},
                     {QStringLiteral("included"), settings->isIncludedInArtboards}};
}

/// With a new preview of the open page.
void saveAs(SketchDocument& self, const QString& path) {
  DocumentMapping mapping = mappingOf(self);
  mapping.redrawPreview();
  self.addWarnings(mapping.warnings());
  QString error;
  require(self.save(path, &error), error);
}

}  // namespace

void SketchDocument::addWarnings(const QStringList& warnings) {
  warnings_ += warnings;
  warnings_.removeDuplicates();
}

const ClassInfo& SketchDocument::theClass() {
  using Self = SketchDocument;
  static const ClassInfo kClass =
      Description<Self>("SketchDocument")
          .property("path", &Self::path)
          .property("pages", [](const Self& self) { return listOf(self.pages()); })
          .property("artboards", [](const Self& self) { return listOf(self.artboards()); })
          .property("currentPage", &Self::currentPage)
          .property("mappedLayers",
                    [](const Self& self) { return listOf(MappedArtboards(self).layersInOrder()); })
          .property("appVersion", &Self::appVersion)
          .property("build", &Self::build)
          .property("warnings", &Self::warnings)
          .operation(
              "layersNamed:",
              [](const Self& self, const QString& name) { return listOf(self.layersNamed(name)); })
          .operation("settingsOfLayer:", settingsOfLayer)
          .operation("imageOfArtboard:forTransform:", imageOfArtboard)
          .operation("fillLayer:withImage:settings:", fillLayer)
          .operation("save", [](Self& self) { saveAs(self, self.path()); })
          .operation("saveAs:", saveAs);
  return kClass;
}

}  // namespace kelvar
