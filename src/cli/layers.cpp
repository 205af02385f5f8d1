#include "cli/layers.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "cli/CommandError.h"
#include "cli/DocumentCommand.h"
#include "cli/Output.h"
#include "cli/jsonText.h"
#include "geometry/PointList.h"
#include "mockup/LayerMapping.h"
#include "mockup/LayerSettings.h"
#include "sketch/document/SketchDocument.h"

namespace kelvar::cli {
namespace {

constexpr const char* kExamples = R"(
Each line is a layer: its name, kind, size in points and identifier. Artboards that can be used as a
design and shapes that can take one are marked.

Examples:
  List all layers:
    kelvar layers mockup.sketch
  Print the identifiers of the shapes that can take a design:
    kelvar layers mockup.sketch --json | jq -r '.. | objects | select(.takesDesign).id'

Exit status: 0 success, 1 failure, 2 usage error.)";

/// The command line, as given.
struct Arguments {
  std::string document;
  bool json = false;
};

bool isDesign(const SketchLayer& layer) {
  const QRectF frame = layer.frameRect();
  return layer.isArtboard() && frame.width() > 0 && frame.height() > 0;
}

/// Documents may leave names and identifiers out, but JSON has no string that is none.
QString textOf(const QString& text) { return text.isNull() ? QStringLiteral("") : text; }

QVariantMap asMap(const SketchLayerRef& layer) {
  const QRectF frame = layer->frameRect();
  QVariantMap map{{QStringLiteral("name"), textOf(layer->name())},
                  {QStringLiteral("kind"), textOf(layer->kind())},
                  {QStringLiteral("id"), textOf(layer->objectID())},
                  {QStringLiteral("x"), frame.x()},
                  {QStringLiteral("y"), frame.y()},
                  {QStringLiteral("width"), frame.width()},
                  {QStringLiteral("height"), frame.height()},
                  {QStringLiteral("isDesign"), isDesign(*layer)},
                  {QStringLiteral("takesDesign"), LayerMapping::canMapOnto(layer)}};
  if (const auto settings = LayerSettings::of(*layer)) {
    map.insert(
        QStringLiteral("mapped"),
        QVariantMap{{QStringLiteral("artboard"), settings->artboard.isNull()
                                                     ? QVariant::fromValue(nullptr)
                                                     : QVariant(settings->artboard)},
                    {QStringLiteral("quality"), settings->options.quality},
                    {QStringLiteral("rotation"), qulonglong(settings->options.rotation)},
                    {QStringLiteral("flip"), settings->options.flipped},
                    {QStringLiteral("includeInArtboards"), settings->options.includedInArtboards}});
  }
  QVariantList layers;
  for (const SketchLayerRef& child : layer->children()) layers.append(asMap(child));
  if (!layers.isEmpty()) map.insert(QStringLiteral("layers"), layers);
  return map;
}

QByteArray asJson(const SketchDocument& document) {
  QVariantList pages;
  for (const SketchLayerRef& page : document.pages()) pages.append(asMap(page));
  const QVariantMap map{{QStringLiteral("appVersion"), textOf(document.appVersion())},
                        {QStringLiteral("build"), textOf(document.build())},
                        {QStringLiteral("pages"), pages}};
  return jsonText(map, Json::Layout::Indented);
}

void appendLines(const SketchLayerRef& layer, int depth, QString* lines) {
  const QRectF frame = layer->frameRect();
  *lines += QStringLiteral("%1%2  %3")
                .arg(QString(2 * depth, u' '), sanitizeForTerminal(layer->name()),
                     sanitizeForTerminal(layer->kind()));
  if (!layer->isPage()) {
    *lines += QStringLiteral(" %1 x %2")
                  .arg(stringFromNumber(frame.width()), stringFromNumber(frame.height()));
  }
  *lines += QStringLiteral("  ") + sanitizeForTerminal(layer->objectID());
  if (isDesign(*layer)) *lines += QStringLiteral("  [can be a design]");
  if (LayerMapping::canMapOnto(layer)) *lines += QStringLiteral("  [takes a design]");
  *lines += u'\n';
  for (const SketchLayerRef& child : layer->children()) appendLines(child, depth + 1, lines);
}

void run(const Arguments& arguments) {
  const SketchDocumentRef document = openDocument(arguments.document);
  if (arguments.json) return print(asJson(*document));
  QString lines;
  for (const SketchLayerRef& page : document->pages()) appendLines(page, 0, &lines);
  lines.chop(1);
  print(lines.toUtf8());
}

}  // namespace

std::function<void()> addLayers(CLI::App& program) {
  const auto arguments = std::make_shared<Arguments>();
  CLI::App* layers = program.add_subcommand("layers", "List the layers of a Sketch document");
  layers->footer(kExamples);
  layers->fallthrough();
  layers->add_option("DOC", arguments->document, "A document from Sketch 43 or later")->required();
  layers->add_flag("--json", arguments->json, "Print the tree as JSON");
  return [arguments] { run(*arguments); };
}

}  // namespace kelvar::cli
