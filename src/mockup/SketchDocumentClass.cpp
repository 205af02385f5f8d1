#include <stdexcept>

#include "geometry/KVImageTransform.h"
#include "mockup/ArtboardDependencyGraph.h"
#include "mockup/DocumentMapping.h"
#include "platform/Permissions.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&SketchDocument::staticClassInfo);

/// Scripts read the message as that of an exception.
[[noreturn]] void fail(const QString& message) { throw std::runtime_error(message.toStdString()); }

template <class T>
T orThrow(Result<T> result) {
  if (!result) throw std::runtime_error(result.error().message);
  if constexpr (!std::is_void_v<T>) return *std::move(result);
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
  if (!artboard || !forTransform) fail(QStringLiteral("an artboard or a transform is missing"));
  DocumentMapping mapping = mappingOf(self);
  const QSizeF size = Mapping::rasterizationSize(forTransform->placement().quad);
  ImageRef image = orThrow(mapping.draw(*artboard, size));
  self.addWarnings(mapping.warnings());
  return image;
}

template <class T>
void read(const QVariantMap& settings, const char* key, T* value) {
  const QString name = QString::fromLatin1(key);
  if (!settings.contains(name)) return;
  const std::optional<T> read = fromVariant<T>(settings[name]);
  if (!read) fail(QStringLiteral("the setting %1 does not fit").arg(name));
  *value = *read;
}

/// Makes the image the layer's fill. What `settings` leaves out is remembered as it was before.
void fillLayer(SketchDocument& self, const SketchLayerRef& layer, const ImageRef& withImage,
               const QVariantMap& settings) {
  if (!layer) fail(QStringLiteral("the layer is missing"));
  LayerSettings wanted = LayerSettings::of(*layer).value_or(LayerSettings());
  MappingOptions& options = wanted.options;
  auto rotation = uint64_t(options.rotation);
  read(settings, "artboard", &wanted.artboard);
  read(settings, "quality", &options.quality);
  read(settings, "rotation", &rotation);
  read(settings, "flipped", &options.flipped);
  read(settings, "included", &options.includedInArtboards);
  options.rotation = int(rotation % 4);
  orThrow(validateQuality(options.quality, "the setting quality"));
  orThrow(mappingOf(self).fill(layer, wanted, withImage));
}

/// None for a layer onto which nothing was mapped.
QVariant settingsOfLayer(const SketchDocument&, const SketchLayerRef& layer) {
  const auto settings = layer ? LayerSettings::of(*layer) : std::nullopt;
  if (!settings) return {};
  return QVariantMap{{QStringLiteral("artboard"), toVariant(settings->artboard)},
                     {QStringLiteral("quality"), settings->options.quality},
                     {QStringLiteral("rotation"), toVariant(uint64_t(settings->options.rotation))},
                     {QStringLiteral("flipped"), settings->options.flipped},
                     {QStringLiteral("included"), settings->options.includedInArtboards}};
}

/// With a new preview of the open page.
void saveAs(SketchDocument& self, const QString& path) {
  orThrow(Permissions::check(Permissions::Kind::Write, path));
  DocumentMapping mapping = mappingOf(self);
  mapping.redrawPreview();
  self.addWarnings(mapping.warnings());
  orThrow(self.save(path));
}

}  // namespace

void SketchDocument::addWarnings(const QStringList& warnings) {
  warnings_ += warnings;
  warnings_.removeDuplicates();
}

const ClassInfo& SketchDocument::staticClassInfo() {
  using Self = SketchDocument;
  static const ClassInfo kClass =
      ClassInfoBuilder<Self>("SketchDocument")
          .property("path", &Self::path, "Where the document was opened or last saved.")
          .property(
              "pages", [](const Self& self) { return listOf(self.pages()); }, "The pages in order.")
          .property(
              "artboards", [](const Self& self) { return listOf(self.artboards()); },
              "All artboards and symbol masters, in the order of the pages.")
          .property("currentPage", &Self::currentPage,
                    "The page that was open when the document was last saved.")
          .property(
              "mappedLayers",
              [](const Self& self) {
                return listOf(ArtboardDependencyGraph(self).topologicalOrder());
              },
              "The layers that show an artboard, in the order in which they have to be mapped "
              "again.")
          .property("appVersion", &Self::appVersion,
                    "The version of the Sketch that wrote the document, such as \"52.1\".")
          .property("build", &Self::build,
                    "The build of the Sketch that wrote the document, such as \"67048\".")
          .property("warnings", &Self::warnings,
                    "One sentence for each thing that could not be drawn as the document asks.")
          .operation(
              "layersNamed:",
              [](const Self& self, const QString& name) { return listOf(self.layersNamed(name)); },
              "Returns the layers with this identifier, or else those with this name.")
          .operation("settingsOfLayer:", settingsOfLayer,
                     "Returns the settings that were remembered when an image was mapped onto the "
                     "layer, or nil.")
          .operation("imageOfArtboard:forTransform:", imageOfArtboard,
                     "Returns the artboard drawn as finely as the transform, whose corners must be "
                     "set, can use it.")
          .operation("fillLayer:withImage:settings:", fillLayer,
                     "Makes the image the layer's fill and remembers the settings; those left out "
                     "stay as they were.")
          .operation(
              "save", [](Self& self) { saveAs(self, self.savePath()); },
              "Saves the document where it was opened or, with -o, there; with a new preview.")
          .operation(
              "saveDocument:", [](Self& self, const QVariant&) { saveAs(self, self.savePath()); },
              "Saves the document like save, whoever the sender is.")
          .operation("saveAs:", saveAs, "Saves the document to a path, with a new preview.");
  return kClass;
}

}  // namespace kelvar
