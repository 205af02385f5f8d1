#include "app/render.h"

#include <CLI/CLI.hpp>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <memory>

#include "app/DocumentCommand.h"
#include "app/Failure.h"
#include "app/Output.h"
#include "app/Progress.h"
#include "app/timeLimit.h"
#include "host/ArtboardRenderer.h"
#include "host/DocumentMapping.h"
#include "host/SketchDocument.h"
#include "platform/FileName.h"
#include "platform/ImageFile.h"

namespace kelvar::app {
namespace {

using namespace Qt::StringLiterals;

constexpr double kLeastScale = 0.01;
constexpr double kMostScale = 64;

constexpr const char* kExamples = R"(
Without --artboard, --page or --layer it is the page that was open when the document was saved.
What cannot be drawn as the document wants it is named on standard error, a line each.

Examples:
  An artboard, twice as large:
    kelvar render app.sketch --artboard Home --scale 2 -o home.png
  All that is on a page:
    kelvar render app.sketch --page Icons -o icons.webp
  The picture that a document stores of itself, drawn anew:
    kelvar render app.sketch --preview -o preview.png

Exit status: 0 done, 1 failed, 2 misuse.)";

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

[[noreturn]] void misuse(const QString& sentence) { throw Failure(Failure::kMisuse, sentence); }
[[noreturn]] void fail(const QString& sentence) { throw Failure(Failure::kFailed, sentence); }

/// The one layer that was meant, or a failure that lists those that could be, or those that exist.
SketchLayerRef onlyOne(const QList<SketchLayerRef>& layers, const QString& what,
                       const QString& name, const QString& others) {
  if (layers.isEmpty()) fail(u"the document has no %1 \"%2\"%3"_s.arg(what, name, others));
  if (layers.size() == 1) return layers.first();
  QStringList list;
  for (const SketchLayerRef& layer : layers) {
    list.append(u"%1 (%2)"_s.arg(layer->objectID(), layer->kind()));
  }
  fail(u"there is more than one %1 \"%2\"; name it by one of these identifiers: %3"_s.arg(
      what, name, list.join(u", ")));
}

SketchLayerRef chosenLayer(const SketchDocument& document, const Arguments& arguments) {
  QList<SketchLayerRef> found;
  if (!arguments.layer.empty()) {
    const QString name = QString::fromStdString(arguments.layer);
    return onlyOne(document.layersNamed(name), u"layer"_s, name, {});
  }
  if (arguments.artboard.empty() && arguments.page.empty()) return document.currentPage();
  const bool isPage = arguments.artboard.empty();
  const QString name = QString::fromStdString(isPage ? arguments.page : arguments.artboard);
  const QList<SketchLayerRef> all = isPage ? document.pages() : document.artboards();
  for (const SketchLayerRef& layer : all) {
    if (layer->objectID() == name) return layer;
    if (layer->name() == name) found.append(layer);
  }
  return onlyOne(found, isPage ? u"page"_s : u"artboard"_s, name,
                 DocumentMapping::namesThatExist(all));
}

void check(const Arguments& arguments) {
  const int choices = !arguments.artboard.empty() + !arguments.page.empty() +
                      !arguments.layer.empty() + arguments.preview;
  if (choices > 1) {
    misuse(u"only one of --artboard, --page, --layer and --preview can be given"_s);
  }
  if (arguments.preview && arguments.scale != 1) {
    misuse(u"--preview has a size of its own; leave out --scale"_s);
  }
  if (!(arguments.scale >= kLeastScale && arguments.scale <= kMostScale)) {
    misuse(u"--scale takes a number from %1 to %2"_s.arg(kLeastScale).arg(kMostScale));
  }
  if (arguments.json && arguments.output == "-") {
    misuse(u"--json and -o - cannot both write to standard output"_s);
  }
  const QString output = fileNameFromBytes(arguments.output);
  if (!ImageFile::hasKnownEnding(output)) {
    misuse(u"-o takes a file that ends in png, jpg, jpeg or webp, or -, not \"%1\""_s.arg(output));
  }
  if (const auto problem = ImageFile::cannotWrite(output)) fail(*problem);
}

void report(const Image& picture, const QStringList& warnings) {
  const QJsonObject object{{u"size"_s, QJsonArray{picture.pixelWidth(), picture.pixelHeight()}},
                           {u"warnings"_s, QJsonArray::fromStringList(warnings)}};
  print(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

void run(const Arguments& arguments) {
  check(arguments);
  limitTime(arguments.timeout);
  Progress progress;
  progress.setStage("reading");
  QString error;
  const SketchDocumentRef document = openDocument(arguments.document);
  progress.setStage("drawing");
  ArtboardRenderer renderer(document);
  const ImageRef picture = arguments.preview ? renderer.renderPreview(&error)
                                             : renderer.render(*chosenLayer(*document, arguments),
                                                               arguments.scale, &error);
  if (!picture) fail(error);
  progress.setStage("writing");
  liftTimeLimitForStream(arguments.output);
  if (!ImageFile::write(*picture, fileNameFromBytes(arguments.output), &error)) fail(error);
  liftTimeLimit();
  if (arguments.json) return report(*picture, renderer.warnings());
  tellWarnings(renderer.warnings());
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
  render->add_option("--page", arguments->page, "The page to draw, with all that is on it")
      ->type_name("NAME|ID");
  render->add_option("--layer", arguments->layer, "The layer to draw, alone")->type_name("NAME|ID");
  render->add_flag("--preview", arguments->preview,
                   "Draw what the document stores as its own picture");
  render->add_option("--scale", arguments->scale, "Pixels for each unit of the document")
      ->type_name("S")
      ->capture_default_str();
  addTimeout(render, &arguments->timeout);
  render->add_flag("--json", arguments->json, "Print the size and the warnings");
  render
      ->add_option(
          "-o,--output", arguments->output,
          "png, jpg (on white) or webp (lossless) by its ending; - is standard output, as PNG")
      ->required()
      ->type_name("OUT");
  return [arguments] { run(*arguments); };
}

}  // namespace kelvar::app
