#include "app/mapDocument.h"

#include "app/DocumentCommand.h"
#include "app/Failure.h"
#include "app/Progress.h"
#include "app/timeLimit.h"
#include "host/ArtboardRenderer.h"
#include "host/DocumentMapping.h"
#include "platform/FileName.h"
#include "platform/ImageFile.h"
#include "platform/Log.h"

namespace kelvar::app {
namespace {

constexpr const char* kArtboard = "artboard:";

[[noreturn]] void misuse(const QString& sentence) { throw Failure(Failure::kMisuse, sentence); }
[[noreturn]] void fail(const QString& sentence) { throw Failure(Failure::kFailed, sentence); }

void check(const DocumentArguments& arguments) {
  if (arguments.layers.empty()) {
    misuse(QStringLiteral("--document needs a --layer for the design (see kelvar layers)"));
  }
  if (arguments.design == "-" && arguments.layers.size() > 1) {
    misuse(QStringLiteral("standard input can be read for one --layer only"));
  }
  if (arguments.json && arguments.output == "-") {
    misuse(QStringLiteral("--json and -o - cannot both write to standard output"));
  }
  const QString output = fileNameFromBytes(arguments.output);
  if (SketchDocument::hasKnownEnding(output)) return;
  if (!ImageFile::hasKnownEnding(output)) {
    misuse(QStringLiteral("-o takes a file that ends in sketch, png, jpg, jpeg or webp, or -, not "
                          "\"%1\"")
               .arg(output));
  }
  if (const auto problem = ImageFile::cannotWrite(output)) fail(*problem);
}

QList<SketchLayerRef> chosenLayers(const DocumentMapping& mapping,
                                   const std::vector<std::string>& names) {
  QList<SketchLayerRef> layers;
  for (const std::string& name : names) {
    QString error;
    const SketchLayerRef layer = mapping.layer(QString::fromStdString(name), &error);
    if (!layer) fail(error);
    layers.append(layer);
  }
  return layers;
}

/// The artboard that a picture of the layers shows.
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
    misuse(QStringLiteral("the layer \"%1\" is on no artboard, so there is no picture of one to "
                          "write: write a .sketch document")
               .arg(layers.first()->name()));
  }
  return artboard;
}

void mapAll(DocumentMapping* mapping, const QList<SketchLayerRef>& layers,
            const DocumentArguments& arguments) {
  QString error;
  const auto mapOne = [&](const SketchLayerRef& layer) {
    if (arguments.design.starts_with(kArtboard)) {
      const std::string name = arguments.design.substr(std::string(kArtboard).size());
      const SketchLayerRef artboard = mapping->artboard(QString::fromStdString(name), &error);
      return artboard && mapping->mapArtboard(layer, arguments.settings, artboard, &error);
    }
    const auto design = [&](const QSizeF& size, QString* problem) {
      const auto vectorSize = [&](const QSizeF&) { return size; };
      return ImageFile::read(fileNameFromBytes(arguments.design), {.vectorSize = vectorSize},
                             problem);
    };
    return mapping->map(layer, arguments.settings, design, &error);
  };
  for (const SketchLayerRef& layer : layers) {
    if (!mapOne(layer)) fail(error);
  }
}

void write(const SketchDocumentRef& document, DocumentMapping* mapping,
           const QList<SketchLayerRef>& layers, const DocumentArguments& arguments) {
  const QString output = fileNameFromBytes(arguments.output);
  QString error;
  if (SketchDocument::hasKnownEnding(output)) {
    mapping->redrawPreview();
    liftTimeLimitForStream(arguments.output);
    if (!document->save(output, &error)) fail(error);
    liftTimeLimit();
    return;
  }
  ArtboardRenderer renderer(document);
  const ImageRef picture =
      renderer.render(*commonArtboard(layers), arguments.settings.quality, &error);
  if (!picture) fail(error);
  liftTimeLimitForStream(arguments.output);
  if (!ImageFile::write(*picture, output, &error)) fail(error);
  liftTimeLimit();
  tellWarnings(renderer.warnings());
}

}  // namespace

void mapOnDocument(const DocumentArguments& arguments) {
  check(arguments);
  Progress progress;
  progress.setStage("reading");
  const SketchDocumentRef document = openDocument(arguments.document, arguments.output);
  DocumentMapping mapping(document);
  mapping.setSampling(arguments.sampling);
  mapping.setThreads(arguments.threads);
  const QList<SketchLayerRef> layers = chosenLayers(mapping, arguments.layers);
  if (!SketchDocument::hasKnownEnding(fileNameFromBytes(arguments.output))) {
    commonArtboard(layers);
  }

  progress.setStage("mapping");
  mapAll(&mapping, layers, arguments);
  progress.setStage("writing");
  write(document, &mapping, layers, arguments);
  logLine(u"Wrote %@", {fileNameFromBytes(arguments.output)});
  tellWarnings(mapping.warnings());
  if (arguments.json) reportMapped(layers);
}

}  // namespace kelvar::app
