#include "app/refresh.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "app/DocumentCommand.h"
#include "app/Failure.h"
#include "app/Progress.h"
#include "app/timeLimit.h"
#include "platform/FileName.h"

namespace kelvar::app {
namespace {

constexpr const char* kExamples = R"(
Maps every artboard again onto the layers that remember one, as the artboards are now and with the
rotation, flip and quality that were chosen. Artboards that show others come after them.

Examples:
  After a change to the designs:
    kelvar refresh mockup.sketch --in-place
  Into another document:
    kelvar refresh mockup.sketch -o fresh.sketch

Exit status: 0 done, 1 failed, 2 misuse.)";

/// The command line, as given.
struct Arguments {
  std::string document;
  std::string output;
  std::string timeout;
  bool inPlace = false;
  bool json = false;
};

void run(const Arguments& arguments) {
  if (arguments.inPlace != arguments.output.empty()) {
    throw Failure(Failure::kMisuse,
                  QStringLiteral("the document goes to -o OUT or, with --in-place, where it came "
                                 "from: give one of them"));
  }
  const std::string& output = arguments.inPlace ? arguments.document : arguments.output;
  if (!arguments.inPlace && !SketchDocument::hasKnownEnding(fileNameFromBytes(output))) {
    throw Failure(Failure::kMisuse,
                  QStringLiteral("-o takes a file that ends in sketch, not \"%1\"")
                      .arg(fileNameFromBytes(output)));
  }
  limitTime(arguments.timeout);
  Progress progress;
  progress.setStage("reading");
  const SketchDocumentRef document = openDocument(arguments.document, output);
  DocumentMapping mapping(document);
  QList<SketchLayerRef> layers;
  QString error;
  progress.setStage("mapping");
  if (!mapping.refresh(&layers, &error)) throw Failure(Failure::kFailed, error);
  if (!layers.isEmpty()) mapping.redrawPreview();
  progress.setStage("writing");
  liftTimeLimitForStream(output);
  if (!document->save(fileNameFromBytes(output), &error)) {
    throw Failure(Failure::kFailed, error);
  }
  liftTimeLimit();
  tellWarnings(mapping.warnings());
  if (arguments.json) reportMapped(layers);
}

}  // namespace

std::function<void()> addRefresh(CLI::App& program) {
  const auto arguments = std::make_shared<Arguments>();
  CLI::App* refresh =
      program.add_subcommand("refresh", "Map the artboards of a Sketch document again");
  refresh->footer(kExamples);
  refresh->fallthrough();
  refresh->add_option("DOC", arguments->document, "A document of Sketch 43 or later")->required();
  refresh->add_option("-o,--output", arguments->output, "Where the document goes")
      ->type_name("OUT");
  refresh->add_flag("--in-place", arguments->inPlace, "Replace the document itself");
  refresh->add_flag("--json", arguments->json, "Print the layers that were mapped");
  addTimeout(refresh, &arguments->timeout);
  return [arguments] { run(*arguments); };
}

}  // namespace kelvar::app
