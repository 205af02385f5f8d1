#include <algorithm>

#include "cli/CommandError.h"
#include "cli/imageFiles.h"
#include "cli/map/MapArguments.h"
#include "cli/map/MapStages.h"

namespace kelvar::cli {
namespace {

void checkOverlap(const warp::Quad& quad, const Image& photo) {
  const auto all = [&](auto test) { return std::all_of(quad.begin(), quad.end(), test); };
  const double width = photo.pixelWidth(), height = photo.pixelHeight();
  if (all([](auto p) { return p.x <= 0; }) || all([=](auto p) { return p.x >= width; }) ||
      all([](auto p) { return p.y <= 0; }) || all([=](auto p) { return p.y >= height; })) {
    misuse(QStringLiteral("the shape in --points lies outside the photo, which is %1 by %2 pixels")
               .arg(width)
               .arg(height));
  }
}

}  // namespace

void mapOntoPhoto(const MapArguments& arguments) {
  if (arguments.design == "-" && arguments.onto == "-") {
    misuse(QStringLiteral("the design and the photo cannot both be read from standard input"));
  }
  const Mapping mapping = arguments.mapping();
  checkImageOutput(arguments.output);
  MapStages stages;
  stages.begin(MapStages::kReading);
  const ImageRef design = readImage(arguments.design, mapping.rasterizationSizeOnPhoto());
  const ImageRef photo = readImage(*arguments.onto, {});
  const warp::Quad quad = mapping.quadOnPhoto();
  checkOverlap(quad, *photo);
  stages.begin(MapStages::kWarping);
  const ImageRef image = orThrow(mapping.compositeOnto(design, photo));
  stages.begin(MapStages::kWriting);
  writeImage(*image, arguments.output);
  if (arguments.json) stages.report(*image, quad);
}

}  // namespace kelvar::cli
