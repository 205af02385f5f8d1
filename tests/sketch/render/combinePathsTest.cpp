#include "sketch/render/combinePaths.h"

#include <gtest/gtest.h>

#include <QTransform>
#include <vector>

namespace kelvar::render {
namespace {

QPainterPath ellipse(double x, double y, double width, double height) {
  QPainterPath path;
  path.addEllipse(x, y, width, height);
  return path;
}

QPainterPath rectangle(double x, double y, double width, double height) {
  QPainterPath path;
  path.addRect(x, y, width, height);
  return path;
}

QPainterPath ring(Qt::FillRule rule) {
  QPainterPath path = ellipse(0, 0, 20, 20);
  path.addPath(ellipse(5, 5, 10, 10));
  path.setFillRule(rule);
  return path;
}

/// Shapes that touch, share sides, nearly touch, contain each other or are apart.
std::vector<QPainterPath> shapes() {
  return {rectangle(0, 0, 20, 20),
          rectangle(20, 0, 10, 20),
          rectangle(5, 20, 10, 10),
          ellipse(0, 0, 20, 20),
          ellipse(20, 0, 20, 20),
          ellipse(1e-7, 1e-7, 20, 20),
          ellipse(-5, 5, 30, 10),
          ellipse(60, 60, 10, 10),
          ring(Qt::OddEvenFill),
          ring(Qt::WindingFill),
          QTransform().translate(10, 10).rotate(45).map(rectangle(-7, -7, 14, 14))};
}

bool combined(bool below, bool above, BooleanOperation operation) {
  switch (operation) {
    case BooleanOperation::Subtract:
      return below && !above;
    case BooleanOperation::Intersect:
      return below && above;
    case BooleanOperation::Difference:
      return below != above;
    default:
      return below || above;
  }
}

/// Whether a side is so near that either answer is right.
bool isNearSide(const QPainterPath& path, const QPointF& point) {
  constexpr double kNear = 0.03;
  const QRectF around(point - QPointF(kNear, kNear), QSizeF(2 * kNear, 2 * kNear));
  return path.intersects(around) && !path.contains(around);
}

TEST(CombinePathsTest, FillsWhatOperationSays) {
  const std::vector<QPainterPath> all = shapes();
  for (size_t i = 0; i < all.size(); ++i) {
    for (size_t j = 0; j < all.size(); ++j) {
      for (const auto operation : {BooleanOperation::Union, BooleanOperation::Subtract,
                                   BooleanOperation::Intersect, BooleanOperation::Difference}) {
        const QPainterPath result = combinePaths(all[i], all[j], operation);
        int wrong = 0;
        for (double x = -4.63; x < 72; x += 3.1) {
          for (double y = -4.63; y < 72; y += 3.1) {
            const QPointF at(x, y);
            if (isNearSide(all[i], at) || isNearSide(all[j], at)) continue;
            const bool expected = combined(all[i].contains(at), all[j].contains(at), operation);
            wrong += int(result.contains(at) != expected);
          }
        }
        EXPECT_EQ(wrong, 0) << i << ", " << j << ", operation " << int(operation);
      }
    }
  }
}

TEST(CombinePathsTest, KeepsCurvesOfShapesThatAreApart) {
  const QPainterPath left = ellipse(0, 0, 10, 10), right = ellipse(30, 0, 10, 10);
  QPainterPath both = left;
  both.addPath(right);
  EXPECT_EQ(combinePaths(left, right, BooleanOperation::Union), both);
  EXPECT_EQ(combinePaths(left, right, BooleanOperation::Subtract), left);
  EXPECT_TRUE(combinePaths(left, right, BooleanOperation::Intersect).isEmpty());
  EXPECT_EQ(combinePaths(left, ellipse(3, 3, 4, 4), BooleanOperation::None).elementCount(), 26);
}

}  // namespace
}  // namespace kelvar::render
