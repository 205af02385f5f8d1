#include "pixels/warp/Coverage.h"

#include <gtest/gtest.h>

#include <cmath>

namespace kelvar::warp {
namespace {

TEST(CoverageTest, SumsToAreaOfQuad) {
  const struct {
    Quad quad;
    double area;
  } cases[] = {
      {{{{2, 3}, {12, 3}, {12, 9}, {2, 9}}}, 60},
      {{{{2.25, 3.5}, {12.75, 3.5}, {12.75, 9.25}, {2.25, 9.25}}}, 10.5 * 5.75},
      {{{{10, 0}, {20, 10}, {10, 20}, {0, 10}}}, 200},
      {{{{20, 10}, {10, 0}, {0, 10}, {10, 20}}}, 200},  // The other way round.
      {{{{5.1, 5.1}, {5.4, 5.2}, {5.3, 5.6}, {5.2, 5.5}}}, 0.08},
      {{{{0, 7.3}, {20, 7.4}, {20, 7.6}, {0, 7.5}}}, 4},
      {{{{-10, -10}, {40, -10}, {40, 40}, {-10, 40}}}, 20 * 20},  // Clipped to the image.
  };
  for (const auto& c : cases) {
    double sum = 0;
    for (int y = 0; y < 20; ++y) {
      const RowCoverage row(c.quad, y, 20);
      for (int x = 0; x < 20; ++x) {
        const double part = row.of(x);
        EXPECT_GE(part, 0);
        EXPECT_LE(part, 1);
        if (part > 1e-12) {
          EXPECT_TRUE(x >= row.touched().begin && x < row.touched().end);
        }
        if (x >= row.whole().begin && x < row.whole().end) {
          EXPECT_EQ(part, 1);
        }
        sum += part;
      }
    }
    EXPECT_NEAR(sum, c.area, 1e-9);
  }
}

}  // namespace
}  // namespace kelvar::warp
