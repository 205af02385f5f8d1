#include "sketch/render/symbols/Resizing.h"

#include <gtest/gtest.h>

#include "sketch/render/TinyDocument.h"

namespace kelvar::render {
namespace {

constexpr int kFree = 63, kRight = 1, kWidth = 2, kLeft = 4, kBottom = 8, kHeight = 16, kTop = 32;

void expectNear(const QRectF& got, const QRectF& expected, double what) {
  for (const auto& [a, b] : {std::pair{got.x(), expected.x()},
                             {got.y(), expected.y()},
                             {got.width(), expected.width()},
                             {got.height(), expected.height()}}) {
    EXPECT_NEAR(a, b, 1e-5) << what;
  }
}

/// A layer at (10, 20) of 40 by 30 in 100 by 100, which becomes 200 by 150.
TEST(ResizingTest, RespectsConstraints) {
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
    expectNear(getRect(group["layers"][0], "frame"), expected, held);
  }
}

/// It fills its container.
TEST(ResizingTest, CentersFixedLayerBetweenFreeMarginsOfZero) {
  SketchJson group = container("group", frame(0, 0, 100, 100),
                               {with(layer("oval", frame(0, 0, 100, 100)),
                                     {{"resizingConstraint", kFree & ~kWidth & ~kHeight}})});
  resizeLayers(&group, {100, 100}, {200, 150});
  expectNear(getRect(group["layers"][0], "frame"), {50, 25, 100, 100}, 0);
}

/// By a quarter, (10, 20) of 40 by 30 covers (15, 15) of 30 by 40, and its height is what its width
/// is to those around it. By an eighth, a side grows as its diagonal does.
TEST(ResizingTest, RotatedLayersGrowAsDisplayed) {
  const QRectF oblong(10, 20, 40, 30), square(30, 30, 40, 40);
  const struct {
    QRectF before;
    double rotation;
    int held;
    QRectF expected;
  } cases[] = {
      {oblong, 180, 0, {20, 30, 80, 45}},
      {oblong, 90, 0, {30, 22.5, 60, 60}},
      {oblong, -90, kWidth | kHeight | kLeft | kTop, oblong},
      {oblong, 90, kLeft | kRight | kTop | kHeight, {60, -30, 40, 130}},
      {square, 45, kTop | kHeight, {68.377223, 18.377223, 63.245553, 63.245553}},
  };
  for (const auto& [before, rotation, held, expected] : cases) {
    const SketchJson oval =
        layer("oval", frame(before.x(), before.y(), before.width(), before.height()));
    SketchJson group =
        container("group", frame(0, 0, 100, 100),
                  {with(oval, {{"resizingConstraint", kFree & ~held}, {"rotation", rotation}})});
    resizeLayers(&group, {100, 100}, {200, 150});
    expectNear(getRect(group["layers"][0], "frame"), expected, rotation);
  }
}

/// The same layer in a document from Sketch 43, and another in the corner across.
TEST(ResizingTest, SupportsResizingTypesOfOldDocuments) {
  const struct {
    int type;
    QRectF before, expected;
  } cases[] = {{0, {10, 20, 40, 30}, {20, 30, 80, 45}},
               {1, {10, 20, 40, 30}, {10, 20, 40, 30}},
               {1, {50, 60, 40, 30}, {150, 110, 40, 30}},
               {2, {10, 20, 40, 30}, {10, 20, 140, 80}},
               {3, {10, 20, 40, 30}, {26.666667, 34.285714, 40, 30}}};
  for (const auto& [type, before, expected] : cases) {
    const SketchJson oval =
        layer("oval", frame(before.x(), before.y(), before.width(), before.height()));
    SketchJson group =
        container("group", frame(0, 0, 100, 100), {with(oval, {{"resizingType", type}})});
    resizeLayers(&group, {100, 100}, {200, 150});
    expectNear(getRect(group["layers"][0], "frame"), expected, type);
  }
}

TEST(ResizingTest, PropagatesThroughGroups) {
  SketchJson outer =
      container("group", frame(0, 0, 100, 100),
                {container("group", frame(0, 0, 50, 50), {layer("oval", frame(10, 10, 20, 20))})});
  resizeLayers(&outer, {100, 100}, {200, 100});
  EXPECT_EQ(getRect(outer["layers"][0]["layers"][0], "frame"), QRectF(20, 10, 40, 20));
}

}  // namespace
}  // namespace kelvar::render
