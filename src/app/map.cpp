#include "app/map.h"

#include <CLI/CLI.hpp>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <memory>
#include <optional>
#include <vector>

#include "app/Corners.h"
#include "app/Failure.h"
#include "app/Output.h"
#include "app/Progress.h"
#include "app/mapDocument.h"
#include "app/timeLimit.h"
#include "host/Mapping.h"
#include "host/PhotoMockup.h"
#include "platform/FileName.h"
#include "platform/ImageFile.h"
#include "platform/Log.h"

namespace kelvar::app {
namespace {

constexpr double kLeastScale = 0.001;
constexpr double kMostScale = 1000;

constexpr const char* kExamples = R"(
Points are the corners of the shape in the order in which it was drawn, y down; the first is where
the design's top-left corner goes.

Examples:
  A design in perspective, by itself, twice as large:
    kelvar map screen.png --points "0,0 400,60 380,600 10,560" --scale 2 -o shape.png
  A design on the screen in a photo:
    kelvar map screen.svg --points "812,304 1490,377 1433,1650 758,1480" --onto photo.jpg -o out.jpg
  In a pipe, turned by a quarter:
    kelvar map - --points "0,0 600,0 600,400 0,400" --rotation 1 -o - < screen.png > turned.png
  An artboard of a Sketch document onto a shape in it, by the layer's name:
    kelvar map artboard:Home --document app.sketch --layer Screen -o mockup.sketch
  What was arranged and saved in kelvar panel:
    kelvar map --arrangement mockup.json -o mockup.png

Exit status: 0 done, 1 failed, 2 misuse.)";

/// The command line of `kelvar map`, as given.
struct Arguments {
  std::string design;
  std::string arrangement;
  std::optional<std::string> points;
  double scale = 1;
  std::string rotation = "0";
  bool flip = false;
  std::optional<std::string> onto;
  std::string document;
  std::vector<std::string> layers;
  bool isExcludedFromArtboards = false;
  std::string sampling = "best";
  int threads = 0;
  bool json = false;
  std::string output;
  std::string timeout;
};

/// Milliseconds since it was last asked, or made.
class Stopwatch {
 public:
  Stopwatch() { timer_.start(); }
  double lap() {
    const double milliseconds = double(timer_.nsecsElapsed()) / 1e6;
    timer_.restart();
    return milliseconds;
  }

 private:
  QElapsedTimer timer_;
};

[[noreturn]] void misuse(const QString& sentence) { throw Failure(Failure::kMisuse, sentence); }
[[noreturn]] void fail(const QString& sentence) { throw Failure(Failure::kFailed, sentence); }

uint64_t readRotation(const std::string& text) {
  uint64_t turns = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), turns);
  const bool isNumber = error == std::errc() && end == text.data() + text.size();
  if (isNumber && turns < 4) return turns;
  const bool isDegrees = isNumber && turns % 90 == 0;
  const QString remedy = !isNumber ? QString()
                         : isDegrees
                             ? QStringLiteral("; %1 degrees are %2").arg(turns).arg(turns / 90 % 4)
                             : QStringLiteral("; so many are the same as %1").arg(turns % 4);
  misuse(QStringLiteral("--rotation takes a number of quarter turns from 0 to 3, not \"%1\"%2")
             .arg(QString::fromStdString(text), remedy));
}

double checkedScale(double scale) {
  if (scale == 0 || (scale >= kLeastScale && scale <= kMostScale)) return scale;
  misuse(QStringLiteral("--scale takes a number from %1 to %2, or 0 for 1")
             .arg(kLeastScale)
             .arg(kMostScale));
}

warp::Sampling samplingFrom(const Arguments& arguments) {
  return arguments.sampling == "best" ? warp::Sampling::Best : warp::Sampling::Bilinear;
}

Mapping mappingFrom(const Arguments& arguments) {
  const double scale = checkedScale(arguments.scale);
  if (!arguments.points) {
    misuse(
        QStringLiteral("--points is required, unless the design goes onto a layer of a "
                       "--document (see kelvar map --help)"));
  }
  if (arguments.design == "-" && arguments.onto == "-") {
    misuse(QStringLiteral("the design and the photo cannot both be read from standard input"));
  }
  if (arguments.json && arguments.output == "-") {
    misuse(QStringLiteral("--json and -o - cannot both write to standard output"));
  }
  return {.path = readCorners(*arguments.points),
          .scale = scale,
          .rotation = readRotation(arguments.rotation),
          .flipped = arguments.flip,
          .sampling = samplingFrom(arguments),
          .threads = arguments.threads};
}

void refuseWhatCannotBeHeld(const KVImageTransform::Placement& placement) {
  if (isHoldable(placement.width, placement.height)) return;
  misuse(QStringLiteral("the shape would be %1 by %2 pixels, and no picture may have more than %3 "
                        "a side or take more than %4 MiB at four bytes a pixel")
             .arg(placement.width)
             .arg(placement.height)
             .arg(ImageFile::kMaxSide)
             .arg(ImageFile::kMaxBytes >> 20));
}

void refuseWhatLiesOutside(const warp::Quad& quad, const Image& photo) {
  const auto outside = [&](auto test) { return std::all_of(quad.begin(), quad.end(), test); };
  const double width = photo.pixelWidth(), height = photo.pixelHeight();
  if (outside([](auto p) { return p.x <= 0; }) || outside([=](auto p) { return p.x >= width; }) ||
      outside([](auto p) { return p.y <= 0; }) || outside([=](auto p) { return p.y >= height; })) {
    misuse(QStringLiteral("the shape in --points lies outside the photo, which is %1 by %2 pixels")
               .arg(width)
               .arg(height));
  }
}

/// Before any work is done.
void refuseOutput(const QString& output) {
  if (!ImageFile::hasKnownEnding(output)) {
    misuse(QStringLiteral("-o takes a file that ends in png, jpg, jpeg or webp, or -, not \"%1\"")
               .arg(output));
  }
  if (const auto problem = ImageFile::cannotWrite(output)) fail(*problem);
}

ImageRef read(const std::string& path, const ImageFile::ReadOptions& options = {}) {
  QString error;
  const ImageRef image = ImageFile::read(fileNameFromBytes(path), options, &error);
  if (!image) fail(error);
  return image;
}

void report(const QSizeF& size, const warp::Quad& quad, double read, double warp, double write) {
  QJsonArray corners;
  for (const warp::Point& corner : quad) corners.append(QJsonArray{corner.x, corner.y});
  const QJsonObject object{
      {QStringLiteral("size"), QJsonArray{size.width(), size.height()}},
      {QStringLiteral("corners"), corners},
      {QStringLiteral("milliseconds"), QJsonObject{{QStringLiteral("read"), read},
                                                   {QStringLiteral("warp"), warp},
                                                   {QStringLiteral("write"), write}}}};
  print(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

DocumentArguments documentArguments(const Arguments& arguments) {
  const double scale = checkedScale(arguments.scale);
  return {.design = arguments.design,
          .document = arguments.document,
          .layers = arguments.layers,
          .settings = {.quality = scale == 0 ? 1 : scale,
                       .rotation = readRotation(arguments.rotation),
                       .isFlipped = arguments.flip,
                       .isIncludedInArtboards = !arguments.isExcludedFromArtboards},
          .sampling = samplingFrom(arguments),
          .threads = arguments.threads,
          .json = arguments.json,
          .output = arguments.output};
}

void runArrangement(const Arguments& arguments) {
  const QString output = fileNameFromBytes(arguments.output);
  refuseOutput(output);
  QString error;
  const auto arrangement = Arrangement::read(fileNameFromBytes(arguments.arrangement), &error);
  if (!arrangement) fail(error);
  Progress progress;
  progress.setStage("warping");
  const ImageRef picture = PhotoMockup(*arrangement).exportPicture(*arrangement, &error);
  if (!picture) fail(error);
  progress.setStage("writing");
  liftTimeLimitForStream(arguments.output);
  if (!ImageFile::write(*picture, output, &error)) fail(error);
  liftTimeLimit();
  logLine(u"Wrote %@", {output});
}

void run(const Arguments& arguments) {
  limitTime(arguments.timeout);
  if (!arguments.arrangement.empty()) return runArrangement(arguments);
  if (arguments.design.empty()) {
    misuse(QStringLiteral("DESIGN is required (see kelvar map --help)"));
  }
  if (!arguments.document.empty()) return mapOnDocument(documentArguments(arguments));
  const Mapping mapping = mappingFrom(arguments);
  const bool onPhoto = arguments.onto.has_value();
  const KVImageTransform::Placement placement = mapping.placement();
  if (!onPhoto) refuseWhatCannotBeHeld(placement);
  const QString output = fileNameFromBytes(arguments.output);
  refuseOutput(output);

  Progress progress;
  Stopwatch stopwatch;
  progress.setStage("reading");
  const warp::Quad quad = onPhoto ? mapping.quadOnPhoto() : placement.quad;
  const auto vectorSize = [&](const QSizeF&) {
    return onPhoto ? mapping.vectorSizeOnPhoto() : Mapping::vectorSize(quad);
  };
  const ImageRef design = read(arguments.design, {.vectorSize = vectorSize});
  const ImageRef photo = onPhoto ? read(*arguments.onto) : nullptr;
  const double readTime = stopwatch.lap();
  logLine(u"Read a design of %@ by %@ pixels",
          {QString::number(design->pixelWidth()), QString::number(design->pixelHeight())});
  if (onPhoto) refuseWhatLiesOutside(quad, *photo);

  progress.setStage("warping");
  const ImageRef picture = onPhoto ? mapping.layOnto(design, photo) : mapping.createOutput(design);
  if (!picture->isValid()) {
    fail(
        QStringLiteral("the design cannot be mapped: its corners are too close to a line, or there "
                       "is too little memory"));
  }
  const double warpTime = stopwatch.lap();
  logLine(u"Mapped it to %@ by %@ pixels",
          {QString::number(picture->pixelWidth()), QString::number(picture->pixelHeight())});

  progress.setStage("writing");
  QString error;
  liftTimeLimitForStream(arguments.output);
  if (!ImageFile::write(*picture, output, &error)) fail(error);
  liftTimeLimit();
  logLine(u"Wrote %@", {output});
  if (arguments.json) report(picture->pixels().size(), quad, readTime, warpTime, stopwatch.lap());
}

}  // namespace

std::function<void()> addMap(CLI::App& program) {
  const auto arguments = std::make_shared<Arguments>();
  CLI::App* map = program.add_subcommand("map", "Lay a design onto a four-cornered shape");
  map->footer(kExamples);
  map->fallthrough();
  const CLI::Option* help = map->get_help_ptr();
  map->add_option("DESIGN", arguments->design,
                  "PNG, JPEG, WebP or SVG; - is standard input; artboard:NAME of the --document");
  CLI::Option* points =
      map->add_option("--points", arguments->points, "The shape's corners, \"x,y x,y x,y x,y\"")
          ->type_name("POINTS");
  map->add_option("--scale", arguments->scale,
                  "Factor on the size of the output; with --onto on the quality of sampling")
      ->type_name("S")
      ->capture_default_str();
  map->add_option("--rotation", arguments->rotation,
                  "Quarter turns of the design within the shape, counter-clockwise, 0 to 3")
      ->type_name("N")
      ->capture_default_str();
  map->add_flag("--flip", arguments->flip, "Swap the design's left and right");
  CLI::Option* onto =
      map->add_option("--onto", arguments->onto,
                      "Lay the design into this picture, in whose pixels the points are")
          ->type_name("PHOTO");
  CLI::Option* document = map->add_option("--document", arguments->document,
                                          "Lay the design onto layers of this Sketch document")
                              ->excludes(points)
                              ->excludes(onto)
                              ->type_name("DOC");
  map->add_option("--layer", arguments->layers,
                  "A four-cornered shape of the document; may be given again")
      ->needs(document)
      ->allow_extra_args(false)
      ->type_name("NAME|ID");
  map->add_flag("--exclude-from-artboards", arguments->isExcludedFromArtboards,
                "Leave the picture out where the layer's own artboard serves as a design")
      ->needs(document);
  map->add_option("--sampling", arguments->sampling, "How pixels are sampled")
      ->check(CLI::IsMember({"best", "bilinear"}))
      ->capture_default_str();
  map->add_option("--threads", arguments->threads, "Threads to use; 0 for one each processor")
      ->check(CLI::Range(0, 32))
      ->type_name("N")
      ->capture_default_str();
  const CLI::Option* timeout = addTimeout(map, &arguments->timeout);
  map->add_flag("--json", arguments->json,
                "Print the size, the design's four corners in it, and the times taken");
  CLI::Option* output = map->add_option("-o,--output", arguments->output,
                                        "png, jpg (on white) or webp (lossless) by its ending, or "
                                        "sketch with --document; - is "
                                        "standard output, as PNG")
                            ->required()
                            ->type_name("OUT");
  CLI::Option* arrangement =
      map->add_option("--arrangement", arguments->arrangement,
                      "Draw what kelvar panel saved, which says all but -o itself")
          ->type_name("FILE");
  for (CLI::Option* option : map->get_options()) {
    const bool goesWithIt =
        option == arrangement || option == output || option == timeout || option == help;
    if (!goesWithIt) arrangement->excludes(option);
  }
  return [arguments] { run(*arguments); };
}

}  // namespace kelvar::app
