#include "sketch/render/text/TextPath.h"

#include <gtest/gtest.h>

namespace kelvar::render {
namespace {

/// Where a glyph's middle comes to stand, and which way is up for it.
struct Standing {
  QPointF at, up;
};

std::optional<Standing> standing(const TextPath& path, double start, double along) {
  const auto place = path.placeAt(start, along);
  if (!place) return {};
  return Standing{place->map(QPointF()), place->map(QPointF(0, -1)) - place->map(QPointF())};
}

TEST(TextPathTest, FollowsLinesAndSquares) {
  QPainterPath corner(QPointF(0, 0));
  corner.lineTo(10, 0);
  corner.lineTo(10, 10);
  corner.moveTo(90, 90);
  corner.lineTo(99, 99);
  QPainterPath square;
  square.addRect(0, 0, 10, 10);
  const struct {
    const QPainterPath& path;
    QPointF start;
    double along;
    std::optional<Standing> wanted;
  } cases[] = {
      {corner, {-5, 3}, 4, Standing{{4, 0}, {0, -1}}},
      {corner, {3, 2}, 12, Standing{{10, 5}, {1, 0}}},
      {corner, {3, 2}, 18, std::nullopt},
      {corner, {3, 2}, -4, std::nullopt},
      {square, {3, -1}, 12, Standing{{10, 5}, {1, 0}}},
      {square, {0, 2}, 4, Standing{{2, 0}, {0, -1}}},
      {square, {3, -1}, -5, Standing{{0, 2}, {-1, 0}}},
      {square, {3, -1}, 39, Standing{{2, 0}, {0, -1}}},
      {square, {3, -1}, 41, std::nullopt},
      {QPainterPath(QPointF(1, 1)), {0, 0}, 0, std::nullopt},
  };
  for (const auto& c : cases) {
    const TextPath path(c.path);
    const auto got = standing(path, path.nearestTo(c.start), c.along);
    ASSERT_EQ(got.has_value(), c.wanted.has_value()) << c.along;
    if (!got) continue;
    EXPECT_NEAR(QPointF(got->at - c.wanted->at).manhattanLength(), 0, 1e-9) << c.along;
    EXPECT_NEAR(QPointF(got->up - c.wanted->up).manhattanLength(), 0, 1e-9) << c.along;
  }
}

}  // namespace
}  // namespace kelvar::render
