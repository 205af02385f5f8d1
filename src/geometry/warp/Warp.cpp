#include "geometry/warp/Warp.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace kelvar::warp {

bool warp(const ConstPixelView& src, const PixelView& dst, const Quad& quad,
          const Options& options) {
  (void)options;
  for (int y = 0; y < dst.height; ++y) std::memset(dst.row(y), 0, size_t(dst.width) * 4);
  const auto map = Homography::fromRectangle(src.width, src.height, quad);
  if (!map) return false;
  const Homography inverse = map->inverted();
  for (int y = 0; y < dst.height; ++y) {
    for (int x = 0; x < dst.width; ++x) {
      const Point p = inverse.map({x + 0.5, y + 0.5});
      if (!(p.x >= 0 && p.y >= 0 && p.x <= src.width && p.y <= src.height)) continue;
      const double u = std::clamp(p.x - 0.5, 0.0, src.width - 1.0);
      const double v = std::clamp(p.y - 0.5, 0.0, src.height - 1.0);
      const int ix = std::min(int(u), src.width - 1), iy = std::min(int(v), src.height - 1);
      const int jx = std::min(ix + 1, src.width - 1), jy = std::min(iy + 1, src.height - 1);
      const double fx = u - ix, fy = v - iy;
      for (int c = 0; c < 4; ++c) {
        const double top = src.row(iy)[ix * 4 + c] * (1 - fx) + src.row(iy)[jx * 4 + c] * fx;
        const double bottom = src.row(jy)[ix * 4 + c] * (1 - fx) + src.row(jy)[jx * 4 + c] * fx;
        dst.row(y)[x * 4 + c] = uint8_t(std::lround(top * (1 - fy) + bottom * fy));
      }
    }
  }
  return true;
}

}  // namespace kelvar::warp
