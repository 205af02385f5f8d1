#include "pixels/warp/Homography.h"

#include <gtest/gtest.h>

#include <limits>

namespace kelvar::warp {
namespace {

TEST(HomographyTest, MapsCornersBothWays) {
  const Quad quads[] = {
      {{{0, 0}, {100, 20}, {100, 80}, {0, 100}}},
      {{{300, 10}, {20, 40}, {5, 700}, {512.25, 600.5}}},  // Mirrored.
      {{{-1000, -2000}, {1e4, -1900}, {9000, 1e4}, {-900, 5000}}},
  };
  for (const Quad& quad : quads) {
    const auto map = Homography::fromRectangle(640, 480, quad);
    ASSERT_TRUE(map);
    const Point corners[] = {{0, 0}, {640, 0}, {640, 480}, {0, 480}};
    for (int i = 0; i < 4; ++i) {
      const Point there = map->map(corners[i]);
      EXPECT_NEAR(there.x, quad[i].x, 1e-9);
      EXPECT_NEAR(there.y, quad[i].y, 1e-9);
      const Point back = map->inverted().map(quad[i]);
      EXPECT_NEAR(back.x, corners[i].x, 1e-9);
      EXPECT_NEAR(back.y, corners[i].y, 1e-9);
    }
  }
}

TEST(HomographyTest, RejectsDegenerateQuads) {
  const double inf = std::numeric_limits<double>::infinity();
  const struct {
    const char* what;
    Quad quad;
  } cases[] = {
      {"concave", {{{0, 0}, {100, 0}, {30, 30}, {0, 100}}}},
      {"crossed", {{{0, 0}, {100, 100}, {100, 0}, {0, 100}}}},
      {"three on a line", {{{0, 0}, {50, 0}, {100, 0}, {0, 100}}}},
      {"two at one place", {{{0, 0}, {0, 0}, {100, 100}, {0, 100}}}},
      {"a point", {{{5, 5}, {5, 5}, {5, 5}, {5, 5}}}},
      {"infinite", {{{0, 0}, {inf, 0}, {100, 100}, {0, 100}}}},
  };
  for (const auto& c : cases) {
    EXPECT_FALSE(Homography::fromRectangle(10, 10, c.quad)) << c.what;
  }
  EXPECT_FALSE(Homography::fromRectangle(0, 10, {{{0, 0}, {1, 0}, {1, 1}, {0, 1}}}));
}

}  // namespace
}  // namespace kelvar::warp
