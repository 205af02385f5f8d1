#include "geometry/KVBezierPath.h"

#include <gtest/gtest.h>

#include "geometry/Points.h"
#include "platform/LogCapture.h"

namespace kelvar {
namespace {

/// A path from commands: 'M', 'L' and 'Z'; all but 'Z' take the next point of `text`.
BezierPath path(const char* kinds, const char* text) {
  const PointList list = points(text);
  BezierPath path;
  qsizetype next = 0;
  for (const char* kind = kinds; *kind; ++kind) {
    if (*kind == 'M') path.moveTo(pointFromString(list[next++]));
    if (*kind == 'L') path.lineTo(pointFromString(list[next++]));
    if (*kind == 'Z') path.close();
  }
  return path;
}

TEST(KVBezierPathTest, ExtractsPoints) {
  const struct {
    const char* what;
    const char* kinds;
    const char* path;
    const char* points;
  } cases[] = {
      {"nothing", "", "", ""},
      {"only a close", "Z", "", ""},
      {"only a move", "M", "3,4", ""},
      {"a move and a close", "MZ", "3,4", ""},
      {"a rectangle", "MLLLZ", "0,0 9,0 9,9 0,9", "0,0 9,0 9,9 0,9"},
      {"drawn back to its start", "MLLLLZ", "1,0 9,0 9,9 0,9 1,0", "1,0 9,0 9,9 0,9"},
      {"never closed", "MLL", "1,1 5,1 5,5", "1,1 5,1 5,5"},
      {"open, back to its start", "MLLL", "1,1 5,1 5,5 1,1", "1,1 5,1 5,5 1,1"},
      {"the same line twice", "MLLLZ", "0,0 5,0 5,0 5,5", "0,0 5,0 5,5"},
      {"a line to the start at once", "MLLZ", "2,2 2,2 5,5", "2,2 5,5"},
      {"what follows the first close", "MLLZMLL", "0,0 5,0 5,5 7,7 8,8 9,9", "0,0 5,0 5,5"},
      {"a second move reads the first", "MLMLZ", "1,1 5,1 7,7 8,8", "1,1 5,1 8,8"},
      {"a second move, then the first point", "MLMLL", "1,1 5,1 7,7 1,1 8,8", "1,1 5,1 8,8"},
      {"no move", "LL", "5,5 6,6", "0,0 5,5 6,6"},
  };
  for (const auto& [what, kinds, text, expected] : cases) {
    EXPECT_EQ(KVBezierPath::pointsFromBezierPath(path(kinds, text)), points(expected)) << what;
  }
}

TEST(KVBezierPathTest, LogsMovesAndCloses) {
  LogCapture log;
  KVBezierPath::pointsFromBezierPath(path("MLMLZ", "1,1 5,1 7,7 8,8"));
  EXPECT_EQ(log.lines(), (QStringList{QStringLiteral("Move line from {0, 0} to {1, 1}"),
                                      QStringLiteral("Move line from {5, 1} to {1, 1}"),
                                      QStringLiteral("Close line from {8, 8} to {1, 1}")}));
}

TEST(KVBezierPathTest, FlattensCurves) {
  BezierPath curve = path("ML", "0,0 100,0");
  curve.curveTo({0, 100}, {100, 55}, {55, 100});
  curve.close();
  const PointList list = KVBezierPath::pointsFromBezierPath(curve);
  EXPECT_GT(list.size(), 5);
  EXPECT_EQ(list.last(), QStringLiteral("{0, 100}"));
}

TEST(KVBezierPathTest, CreatesPathsThatRoundTrip) {
  const PointList list = points("1,2 9,2 9.5,9 1,9");
  EXPECT_EQ(KVBezierPath::pointsFromBezierPath(KVBezierPath::bezierPathWithPoints(list)), list);
  const auto empty = KVBezierPath::bezierPathWithPoints({}).elements();
  ASSERT_EQ(empty.size(), 1);
  EXPECT_EQ(empty[0].kind, BezierPath::Kind::Close);
}

TEST(KVBezierPathTest, ReportsAndReversesWinding) {
  const BezierPath clockwise = path("MLLLZ", "0,0 10,0 10,10 0,10");
  const BezierPath reversed = KVBezierPath::bezierPathReversed(clockwise);
  EXPECT_TRUE(KVBezierPath::bezierPathIsClockwise(clockwise));
  EXPECT_FALSE(KVBezierPath::bezierPathIsClockwise(reversed));
  EXPECT_TRUE(KVBezierPath::bezierPathIsClockwise({}));
  EXPECT_EQ(KVBezierPath::sumPoints(KVBezierPath::pointsFromBezierPath(reversed)), 200);
}

}  // namespace
}  // namespace kelvar
