#include "sketch/render/VersionRules.h"

namespace kelvar::render {

VersionRules VersionRules::of(const DocumentFiles& files) {
  const int format = files.version();
  // Such as "95.3" or "2025.1.3".
  const int app = getString(files.meta(), "appVersion").section(u'.', 0, 0).toInt();
  const bool isNextPreview = app == 91 || app == 92;
  return {.maxPreviewSide = isNextPreview ? 1024 : 2048,
          .previewsFirstArtboard = app >= 95,
          .showsUnexportedBackgrounds = app == 92,
          .tintsGroups = format >= 124,
          .stylesArtboards = format >= 160,
          .hasWindowsLineMetrics = format < 118,
          .alignsBaselines = !isNextPreview,
          .measuresInk = format >= 95,
          .countsEachShadow = format >= 112};
}

}  // namespace kelvar::render
