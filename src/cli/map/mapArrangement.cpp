#include "cli/CommandError.h"
#include "cli/Progress.h"
#include "cli/imageFiles.h"
#include "cli/map/MapArguments.h"
#include "mockup/PhotoMockup.h"
#include "platform/files/FileName.h"

namespace kelvar::cli {

void mapArrangement(const MapArguments& arguments) {
  checkImageOutput(arguments.output);
  const Arrangement arrangement =
      orThrow(Arrangement::read(fileNameFromBytes(arguments.arrangement)));
  Progress progress;
  progress.setStage("warping");
  const ImageRef image = orThrow(PhotoMockup(arrangement).exportImage(arrangement));
  progress.setStage("writing");
  writeImage(*image, arguments.output);
}

}  // namespace kelvar::cli
