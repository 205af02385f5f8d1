#include "cli/map/MapArguments.h"

#include "cli/CommandError.h"
#include "cli/imageFiles.h"
#include "cli/map/readCorners.h"

namespace kelvar::cli {

MappingOptions MapArguments::options() const {
  orThrow(validateQuality(scale, "--scale"));
  orThrow(validateRotation(rotation, "--rotation"));
  return {.quality = scale,
          .rotation = int(rotation),
          .flipped = flip,
          .includedInArtboards = !isExcludedFromArtboards,
          .sampling = sampling == "best" ? warp::Sampling::Best : warp::Sampling::Bilinear};
}

Mapping MapArguments::mapping() const {
  if (!points) {
    misuse(
        QStringLiteral("--points is required, unless the design goes onto a layer of a "
                       "--document (see kelvar map --help)"));
  }
  checkJsonOutput(json, output);
  return {.corners = readCorners(*points), .options = options()};
}

}  // namespace kelvar::cli
