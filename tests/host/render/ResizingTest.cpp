#include "host/render/Resizing.h"

#include <gtest/gtest.h>

#include "host/render/TinyDocument.h"

namespace kelvar::render {
namespace {

constexpr int kFree = 63, kRight = 1, kWidth = 2, kLeft = 4, kBottom = 8, kHeight = 16, kTop = 32;

/// A layer at (10, 20) of 40 by 30 in 100 by 100, which becomes 200 by 150.
TEST(Resizing, HoldsWhatTheConstraintHolds) {
  const struct {
    int held;
    QRectF expected;
  } cases[] = {
      {0, {20, 30, 80, 45}},
      {kLeft | kTop, {10, 20, 84.444444, 48.75}},
      {kRight | kBottom, {30, 40, 120, 60}},
      {kLeft | kRight | kTop | kBottom, {10, 20, 140, 80}},
      {kWidth | kHeight, {26.666667, 34.285714, 40, 30}},
      {kLeft | kWidth | kTop | kHeight, {10, 20, 40, 30}},
      {kRight | kWidth | kBottom | kHeight, {110, 70, 40, 30}},
  };
  for (const auto& [held, expected] : cases) {
    SketchJson group = container(
        "group", frame(0, 0, 100, 100),
        {with(layer("oval", frame(10, 20, 40, 30)), {{"resizingConstraint", kFree & ~held}})});
    resizeLayers(&group, {100, 100}, {200, 150});
    const QRectF got = rectIn(group["layers"][0], "frame");
    for (const auto& [a, b] : {std::pair{got.x(), expected.x()}, {got.y(), expected.y()},
                               {got.width(), expected.width()}, {got.height(), expected.height()}}) {
      EXPECT_NEAR(a, b, 1e-5) << held;
    }
  }
}

TEST(Resizing, GroupsPassItOn) {
  SketchJson outer = container("group", frame(0, 0, 100, 100),
                               {container("group", frame(0, 0, 50, 50),
                                          {layer("oval", frame(10, 10, 20, 20))})});
  resizeLayers(&outer, {100, 100}, {200, 100});
  EXPECT_EQ(rectIn(outer["layers"][0]["layers"][0], "frame"), QRectF(20, 10, 40, 20));
}

}  // namespace
}  // namespace kelvar::render
