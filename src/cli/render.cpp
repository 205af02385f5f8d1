#include "cli/render.h"

#include <CLI/CLI.hpp>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <memory>

#include "cli/CommandError.h"
#include "cli/DocumentCommand.h"
#include "cli/Output.h"
#include "cli/Progress.h"
#include "cli/fonts.h"
#include "cli/imageFiles.h"
#include "cli/threads.h"
#include "cli/timeLimit.h"
#include "mockup/DocumentMapping.h"
#include "sketch/document/SketchDocument.h"
#include "sketch/render/ArtboardRenderer.h"

namespace kelvar::cli {
namespace {

using namespace Qt::StringLiterals;

constexpr double kMinScale = 0.01;
constexpr double kMaxScale = 64;

constexpr const char* kExamples = R"(
Without --artboard, --page or --layer, draws the page that was open when the document was saved.
Unsupported features are reported on standard error, one per line.

Examples:
  An artboard at twice its size:
    kelvar render app.sketch --artboard Home --scale 2 -o home.png
  A whole page:
    kelvar render app.sketch --page Icons -o icons.webp
  The document's preview, drawn again:
    kelvar render app.sketch --preview -o preview.png

Exit status: 0 success, 1 failure, 2 usage error.)";

/// The command line of `kelvar render`, as given.
struct Arguments {
  std::string document;
  std::string artboard, page, layer;
  double scale = 1;
  bool preview = false;
  bool json = false;
  std::string output;
  std::string timeout;
};

/// The only layer in the list. Otherwise, an error that lists the candidates, or the existing
/// names.
SketchLayerRef uniqueLayer(const QList<SketchLayerRef>& layers, const QString& what,
                           const QString& name, const QString& others) {
  if (layers.isEmpty()) fail(u"the document has no %1 \"%2\"%3"_s.arg(what, name, others));
  if (layers.size() == 1) return layers.first();
  QStringList list;
  for (const SketchLayerRef& layer : layers) {
    list.append(u"%1 (%2)"_s.arg(layer->objectID(), layer->kind()));
  }
  fail(u"there is more than one %1 \"%2\"; use one of these identifiers: %3"_s.arg(
      what, name, list.join(u", ")));
}

SketchLayerRef chosenLayer(const SketchDocument& document, const Arguments& arguments) {
  QList<SketchLayerRef> found;
  if (!arguments.layer.empty()) {
    const QString name = QString::fromStdString(arguments.layer);
    return uniqueLayer(document.layersNamed(name), u"layer"_s, name, {});
  }
  if (arguments.artboard.empty() && arguments.page.empty()) return document.currentPage();
  const bool isPage = arguments.artboard.empty();
  const QString name = QString::fromStdString(isPage ? arguments.page : arguments.artboard);
  const QList<SketchLayerRef> all = isPage ? document.pages() : document.artboards();
  for (const SketchLayerRef& layer : all) {
    if (layer->objectID() == name) return layer;
    if (layer->name() == name) found.append(layer);
  }
  return uniqueLayer(found, isPage ? u"page"_s : u"artboard"_s, name,
                     DocumentMapping::namesThatExist(all));
}

void check(const Arguments& arguments) {
  const int choices = !arguments.artboard.empty() + !arguments.page.empty() +
                      !arguments.layer.empty() + arguments.preview;
  if (choices > 1) {
    misuse(u"only one of --artboard, --page, --layer and --preview can be given"_s);
  }
  if (arguments.preview && arguments.scale != 1) {
    misuse(u"--preview has a fixed size: omit --scale"_s);
  }
  if (!(arguments.scale >= kMinScale && arguments.scale <= kMaxScale)) {
    misuse(u"--scale takes a number from %1 to %2"_s.arg(kMinScale).arg(kMaxScale));
  }
  checkJsonOutput(arguments.json, arguments.output);
  checkImageOutput(arguments.output);
}

void report(const Image& image, const QStringList& warnings) {
  const QJsonObject object{{u"size"_s, QJsonArray{image.pixelWidth(), image.pixelHeight()}},
                           {u"warnings"_s, QJsonArray::fromStringList(warnings)}};
  print(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

void run(const Arguments& arguments) {
  check(arguments);
  limitTime(arguments.timeout);
  Progress progress;
  progress.setStage("reading");
  const SketchDocumentRef document = openDocument(arguments.document);
  progress.setStage("drawing");
  ArtboardRenderer renderer(document);
  const ImageRef image = orThrow(
      arguments.preview ? renderer.renderPreview()
                        : renderer.render(*chosenLayer(*document, arguments), arguments.scale));
  progress.setStage("writing");
  writeImage(*image, arguments.output);
  if (arguments.json) return report(*image, renderer.warnings());
  printWarnings(renderer.warnings());
}

}  // namespace

std::function<void()> addRender(CLI::App& program) {
  const auto arguments = std::make_shared<Arguments>();
  CLI::App* render = program.add_subcommand("render", "Draw an artboard, a page or a layer");
  render->footer(kExamples);
  render->fallthrough();
  render->add_option("DOC", arguments->document, "A .sketch document")->required();
  render->add_option("--artboard", arguments->artboard, "The artboard or symbol to draw")
      ->type_name("NAME|ID");
  render->add_option("--page", arguments->page, "The page to draw, with everything on it")
      ->type_name("NAME|ID");
  render->add_option("--layer", arguments->layer, "The layer to draw by itself")
      ->type_name("NAME|ID");
  render->add_flag("--preview", arguments->preview,
                   "Draw the preview that Sketch would store in the document");
  render->add_option("--scale", arguments->scale, "Pixels per unit of the document")
      ->type_name("S")
      ->capture_default_str();
  addFonts(render);
  addThreads(render);
  addTimeout(render, &arguments->timeout);
  render->add_flag("--json", arguments->json, "Print the size and the warnings as JSON");
  render
      ->add_option("-o,--output", arguments->output,
                   "Output: .png, .jpg (flattened on white) or .webp (lossless); - is standard "
                   "output, as PNG")
      ->required()
      ->type_name("OUT");
  return [arguments] { run(*arguments); };
}

}  // namespace kelvar::cli
