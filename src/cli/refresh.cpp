#include "cli/refresh.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "cli/CommandError.h"
#include "cli/DocumentCommand.h"
#include "cli/Progress.h"
#include "cli/fonts.h"
#include "cli/threads.h"
#include "cli/timeLimit.h"
#include "platform/files/FileName.h"

namespace kelvar::cli {
namespace {

constexpr const char* kExamples = R"(
Repeats every mapping of an artboard, using the artboards as they are now and the rotation, flip and
quality of the earlier mapping. An artboard that shows other artboards is mapped after them.

Examples:
  After a change to the designs:
    kelvar refresh mockup.sketch --in-place
  Write to another document:
    kelvar refresh mockup.sketch -o fresh.sketch

Exit status: 0 success, 1 failure, 2 usage error.)";

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
    misuse(QStringLiteral("give either -o OUT or --in-place"));
  }
  const std::string& output = arguments.inPlace ? arguments.document : arguments.output;
  if (!arguments.inPlace && !SketchDocument::hasSupportedExtension(fileNameFromBytes(output))) {
    misuse(QStringLiteral("-o takes a file that ends in sketch, not \"%1\"")
               .arg(fileNameFromBytes(output)));
  }
  limitTime(arguments.timeout);
  Progress progress;
  progress.setStage("reading");
  const SketchDocumentRef document = openDocument(arguments.document, output);
  DocumentMapping mapping(document);
  progress.setStage("mapping");
  const QList<SketchLayerRef> layers = orThrow(mapping.refresh());
  if (!layers.isEmpty()) mapping.redrawPreview();
  progress.setStage("writing");
  liftTimeLimitForStream(output);
  orThrow(document->save(fileNameFromBytes(output)));
  liftTimeLimit();
  printWarnings(mapping.warnings());
  if (arguments.json) reportMapped(layers);
}

}  // namespace

std::function<void()> addRefresh(CLI::App& program) {
  const auto arguments = std::make_shared<Arguments>();
  CLI::App* refresh = program.add_subcommand("refresh", "Repeat the mappings of a Sketch document");
  refresh->footer(kExamples);
  refresh->fallthrough();
  refresh->add_option("DOC", arguments->document, "A document from Sketch 43 or later")->required();
  refresh->add_option("-o,--output", arguments->output, "Output file")->type_name("OUT");
  refresh->add_flag("--in-place", arguments->inPlace, "Replace the document itself");
  refresh->add_flag("--json", arguments->json, "Print the mapped layers as JSON");
  addFonts(refresh);
  addThreads(refresh);
  addTimeout(refresh, &arguments->timeout);
  return [arguments] { run(*arguments); };
}

}  // namespace kelvar::cli
