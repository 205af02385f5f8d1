#include "cli/CommandError.h"
#include "cli/imageFiles.h"
#include "cli/map/MapArguments.h"
#include "cli/map/MapStages.h"

namespace kelvar::cli {

void mapByItself(const MapArguments& arguments) {
  const Mapping mapping = arguments.mapping();
  const Placement placement = mapping.placement();
  orThrow(Mapping::validateOutputSize(placement.width, placement.height));
  checkImageOutput(arguments.output);
  MapStages stages;
  stages.begin(MapStages::kReading);
  const ImageRef design = readImage(arguments.design, Mapping::rasterizationSize(placement.quad));
  stages.begin(MapStages::kWarping);
  const ImageRef image = orThrow(mapping.createOutput(design));
  stages.begin(MapStages::kWriting);
  writeImage(*image, arguments.output);
  if (arguments.json) stages.report(*image, placement.quad);
}

}  // namespace kelvar::cli
