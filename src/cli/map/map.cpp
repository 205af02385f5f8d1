#include "cli/map/map.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>

#include "cli/CommandError.h"
#include "cli/fonts.h"
#include "cli/map/MapArguments.h"
#include "cli/threads.h"
#include "cli/timeLimit.h"

namespace kelvar::cli {
namespace {

constexpr const char* kExamples = R"(
Points are the corners of the shape, in order around it, with y pointing down. The design's top-left
corner goes to the first one.

Examples:
  A design in perspective, without a photo, at twice the size:
    kelvar map screen.png --points "0,0 400,60 380,600 10,560" --scale 2 -o shape.png
  A design on the screen in a photo:
    kelvar map screen.svg --points "812,304 1490,377 1433,1650 758,1480" --onto photo.jpg -o out.jpg
  In a pipe, with a quarter turn:
    kelvar map - --points "0,0 600,0 600,400 0,400" --rotation 1 -o - < screen.png > turned.png
  An artboard of a Sketch document onto a shape in the same document:
    kelvar map artboard:Home --document app.sketch --layer Screen -o mockup.sketch
  An arrangement saved in kelvar panel:
    kelvar map --arrangement mockup.json -o mockup.png

Exit status: 0 success, 1 failure, 2 usage error.)";

void addMappingOptions(CLI::App* map, MapArguments* arguments) {
  map->add_option("DESIGN", arguments->design,
                  "PNG, JPEG, WebP or SVG; - for standard input; artboard:NAME with --document");
  map->add_option("--points", arguments->points, "The shape's corners, \"x,y x,y x,y x,y\"")
      ->type_name("POINTS");
  map->add_option("--scale", arguments->scale,
                  "Scale of the output; with --onto, minimum samples per pixel along each axis")
      ->type_name("S")
      ->capture_default_str();
  map->add_option("--rotation", arguments->rotation,
                  "Quarter turns of the design within the shape, counterclockwise, 0 to 3")
      ->type_name("N")
      ->capture_default_str();
  map->add_flag("--flip", arguments->flip, "Mirror the design horizontally");
}

void addTargetOptions(CLI::App* map, MapArguments* arguments) {
  CLI::Option* const onto =
      map->add_option("--onto", arguments->onto,
                      "Lay the design onto this photo; points are in its pixels")
          ->type_name("PHOTO");
  CLI::Option* const document =
      map->add_option("--document", arguments->document,
                      "Lay the design onto layers of this Sketch document")
          ->excludes(map->get_option("--points"))
          ->excludes(onto)
          ->type_name("DOC");
  map->add_option("--layer", arguments->layers,
                  "A four-cornered shape of the document; may be repeated")
      ->needs(document)
      ->allow_extra_args(false)
      ->type_name("NAME|ID");
  map->add_flag("--exclude-from-artboards", arguments->isExcludedFromArtboards,
                "Omit the image where the layer's own artboard serves as a design")
      ->needs(document);
}

void addOutputOptions(CLI::App* map, MapArguments* arguments) {
  map->add_option("--sampling", arguments->sampling, "Sampling method")
      ->check(CLI::IsMember({"best", "bilinear"}))
      ->capture_default_str();
  addFonts(map);
  addThreads(map);
  addTimeout(map, &arguments->timeout);
  map->add_flag("--json", arguments->json,
                "Print the size, the design's corners and the time of each stage as JSON");
  map->add_option("-o,--output", arguments->output,
                  "Output: .png, .jpg (flattened on white), .webp (lossless), or .sketch with "
                  "--document; - is standard output, as PNG")
      ->required()
      ->type_name("OUT");
}

void addArrangementOption(CLI::App* map, MapArguments* arguments) {
  CLI::Option* const arrangement =
      map->add_option("--arrangement", arguments->arrangement,
                      "Draw an arrangement saved in kelvar panel, which contains all other "
                      "settings")
          ->type_name("FILE");
  const CLI::Option* const compatible[] = {arrangement, map->get_option("--output"),
                                           map->get_option("--threads"),
                                           map->get_option("--timeout"), map->get_help_ptr()};
  for (CLI::Option* option : map->get_options()) {
    if (std::find(std::begin(compatible), std::end(compatible), option) == std::end(compatible)) {
      arrangement->excludes(option);
    }
  }
}

void run(const MapArguments& arguments) {
  limitTime(arguments.timeout);
  if (!arguments.arrangement.empty()) return mapArrangement(arguments);
  if (arguments.design.empty()) {
    misuse(QStringLiteral("DESIGN is required (see kelvar map --help)"));
  }
  if (!arguments.document.empty()) return mapIntoDocument(arguments);
  return arguments.onto ? mapOntoPhoto(arguments) : mapByItself(arguments);
}

}  // namespace

std::function<void()> addMap(CLI::App& program) {
  const auto arguments = std::make_shared<MapArguments>();
  CLI::App* const map = program.add_subcommand("map", "Lay a design onto a four-cornered shape");
  map->footer(kExamples);
  map->fallthrough();
  addMappingOptions(map, arguments.get());
  addTargetOptions(map, arguments.get());
  addOutputOptions(map, arguments.get());
  addArrangementOption(map, arguments.get());
  return [arguments] { run(*arguments); };
}

}  // namespace kelvar::cli
