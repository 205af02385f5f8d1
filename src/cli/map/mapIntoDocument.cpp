#include "cli/CommandError.h"
#include "cli/DocumentCommand.h"
#include "cli/Progress.h"
#include "cli/imageFiles.h"
#include "cli/map/MapArguments.h"
#include "cli/timeLimit.h"
#include "mockup/DocumentMapping.h"
#include "platform/Log.h"
#include "platform/files/FileName.h"
#include "sketch/render/ArtboardRenderer.h"

namespace kelvar::cli {
namespace {

constexpr std::string_view kArtboard = "artboard:";

bool isDocument(const std::string& output) {
  return SketchDocument::hasSupportedExtension(fileNameFromBytes(output));
}

void check(const MapArguments& arguments) {
  if (arguments.layers.empty()) {
    misuse(QStringLiteral("--document needs a --layer for the design (see kelvar layers)"));
  }
  if (arguments.design == "-" && arguments.layers.size() > 1) {
    misuse(QStringLiteral("standard input can be read for one --layer only"));
  }
  checkJsonOutput(arguments.json, arguments.output);
  if (!isDocument(arguments.output)) checkImageOutput(arguments.output, "sketch, ");
}

QList<SketchLayerRef> chosenLayers(const DocumentMapping& mapping,
                                   const std::vector<std::string>& names) {
  QList<SketchLayerRef> layers;
  for (const std::string& name : names) {
    layers.append(orThrow(mapping.layer(QString::fromStdString(name))));
  }
  return layers;
}

/// The artboard that an image of the layers shows.
SketchLayerRef commonArtboard(const QList<SketchLayerRef>& layers) {
  const SketchLayerRef artboard = layers.first()->artboard();
  for (const SketchLayerRef& layer : layers) {
    if (layer->artboard() != artboard) {
      misuse(
          QStringLiteral("the layers are on different artboards: write a .sketch document, or "
                         "map them one after the other"));
    }
  }
  if (!artboard) {
    misuse(QStringLiteral("the layer \"%1\" is on no artboard, so there is no image to "
                          "write: write a .sketch document")
               .arg(layers.first()->name()));
  }
  return artboard;
}

Result<void> mapOne(DocumentMapping* mapping, const SketchLayerRef& layer,
                    const MapArguments& arguments, const LayerSettings& settings) {
  const std::string& design = arguments.design;
  if (!design.starts_with(kArtboard)) {
    return mapping->map(layer, settings,
                        [&](const QSizeF& size) { return readImage(design, size); });
  }
  const QString name = QString::fromStdString(design.substr(kArtboard.size()));
  return mapping->mapArtboard(layer, settings, orThrow(mapping->artboard(name)));
}

void writeDocument(const SketchDocumentRef& document, DocumentMapping* mapping,
                   const std::string& output) {
  mapping->redrawPreview();
  liftTimeLimitForStream(output);
  orThrow(document->save(fileNameFromBytes(output)));
  liftTimeLimit();
  logLine(u"Wrote %@", {fileNameFromBytes(output)});
}

void writeArtboard(const SketchDocumentRef& document, const SketchLayerRef& artboard, double scale,
                   const MapArguments& arguments) {
  ArtboardRenderer renderer(document);
  writeImage(*orThrow(renderer.render(*artboard, scale)), arguments.output);
  printWarnings(renderer.warnings());
}

}  // namespace

void mapIntoDocument(const MapArguments& arguments) {
  check(arguments);
  const LayerSettings settings{.options = arguments.options()};
  Progress progress;
  progress.setStage("reading");
  const SketchDocumentRef document = openDocument(arguments.document, arguments.output);
  DocumentMapping mapping(document);
  const QList<SketchLayerRef> layers = chosenLayers(mapping, arguments.layers);
  const SketchLayerRef artboard = isDocument(arguments.output) ? nullptr : commonArtboard(layers);

  progress.setStage("mapping");
  for (const SketchLayerRef& layer : layers) {
    orThrow(mapOne(&mapping, layer, arguments, settings));
  }
  progress.setStage("writing");
  if (artboard) {
    writeArtboard(document, artboard, settings.options.scale(), arguments);
  } else {
    writeDocument(document, &mapping, arguments.output);
  }
  printWarnings(mapping.warnings());
  if (arguments.json) reportMapped(layers);
}

}  // namespace kelvar::cli
