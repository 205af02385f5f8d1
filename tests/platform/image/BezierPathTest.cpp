#include "platform/image/BezierPath.h"

#include <gtest/gtest.h>

#include <cmath>

namespace kelvar {
namespace {

using Kind = BezierPath::Kind;

/// "M 0 0 L 10 0 C x1 y1 x2 y2 x y Z", for reading what came out.
std::string text(const BezierPath& path) {
  constexpr int kPoints[] = {1, 1, 3, 0};
  QStringList words;
  for (const auto& element : path.elements()) {
    words.append(QString(QChar::fromLatin1("MLCZ"[int(element.kind)])));
    for (int i = 0; i < kPoints[int(element.kind)]; ++i) {
      words.append(QString::number(element.points[size_t(i)].x()));
      words.append(QString::number(element.points[size_t(i)].y()));
    }
  }
  return words.join(u' ').toStdString();
}

BezierPath parse(const char* source) {
  BezierPath path;
  const QStringList words = QString::fromLatin1(source).split(u' ', Qt::SkipEmptyParts);
  const auto point = [&](qsizetype i) {
    return QPointF(words[i].toDouble(), words[i + 1].toDouble());
  };
  for (qsizetype i = 0; i < words.size(); ++i) {
    if (words[i] == u"M") path.moveTo(point(i + 1));
    if (words[i] == u"L") path.lineTo(point(i + 1));
    if (words[i] == u"C") path.curveTo(point(i + 5), point(i + 1), point(i + 3));
    if (words[i] == u"Z") path.close();
  }
  return path;
}

TEST(BezierPathTest, ReversesEachSubpathInPlace) {
  const struct {
    const char* path;
    const char* reversed;
  } cases[] = {
      {"", ""},
      {"Z", "Z"},
      {"M 1 2", "M 1 2"},
      {"M 0 0 L 9 0 L 9 9", "M 9 9 L 9 0 L 0 0"},
      {"M 0 0 L 9 0 L 9 9 L 0 9 Z", "M 0 0 L 0 9 L 9 9 L 9 0 Z"},
      {"M 0 0 L 9 0 L 9 9 L 0 9 L 0 0 Z", "M 0 0 L 0 9 L 9 9 L 9 0 Z"},
      {"M 0 0 L 9 0 Z", "M 0 0 L 9 0 Z"},
      {"M 0 0 C 1 2 3 4 5 6", "M 5 6 C 3 4 1 2 0 0"},
      {"M 0 0 C 1 2 3 4 5 6 L 7 8 Z", "M 0 0 L 7 8 L 5 6 C 3 4 1 2 0 0 Z"},
      {"M 0 0 L 9 0 L 9 9 Z M 1 1 L 2 2", "M 0 0 L 9 9 L 9 0 Z M 2 2 L 1 1"},
      {"M 5 5 L 9 5 L 9 9 Z L 1 1", "M 5 5 L 9 9 L 9 5 Z M 1 1 L 5 5"},
      {"L 3 4", "M 3 4 L 0 0"},
  };
  for (const auto& [path, reversed] : cases) EXPECT_EQ(text(parse(path).reversed()), reversed);
}

TEST(BezierPathTest, FlattensWithinTolerance) {
  const BezierPath curve = parse("M 0 0 C 0 55.2 44.8 100 100 100 L 200 100 Z");
  for (const double flatness : {0.6, 0.01}) {
    const QList<BezierPath::Element> lines = curve.flattened(flatness).elements();
    ASSERT_GT(lines.size(), 4);
    EXPECT_EQ(lines.last().kind, Kind::Close);
    // The curve runs a quarter circle around (100, 0), itself within 0.03 of the circle.
    for (qsizetype i = 1; lines[i].end().x() <= 100; ++i) {
      EXPECT_EQ(lines[i].kind, Kind::Line);
      const QPointF middle = (lines[i - 1].end() + lines[i].end()) / 2 - QPointF(100, 0);
      EXPECT_NEAR(std::hypot(middle.x(), middle.y()), 100, flatness + 0.03);
    }
  }
  EXPECT_LT(curve.flattened(0.6).elements().size(), curve.flattened(0.01).elements().size());
}

TEST(BezierPathTest, FlattensStraightCurvesToOneLine) {
  const struct {
    const char* path;
    const char* lines;
  } cases[] = {
      {"M 1 1 C 1 1 1 1 1 1", "M 1 1 L 1 1"},
      {"M 0 0 C 1 0 2 0 3 0 L 4 0", "M 0 0 L 3 0 L 4 0"},
      {"M 0 0 C 0 0 900 300 900 300 Z", "M 0 0 L 900 300 Z"},
      {"M 0 0 C 90 30 810 270 900 300", "M 0 0 L 900 300"},
      {"M 0 0 C 900 300 0 0 900 300", "M 0 0 L 900 300"},
      {"M 9 9 C 9.0000001 9 500 9 500 9", "M 9 9 L 500 9"},
  };
  for (const auto& [path, lines] : cases) EXPECT_EQ(text(parse(path).flattened()), lines);
  // These leave the line at an end of it, or turn back.
  for (const char* path :
       {"M 0 0 C -90 0 900 0 900 0", "M 0 0 C 0 0 990 0 900 0", "M 5 5 C 90 5 90 5 5 5"}) {
    EXPECT_GT(parse(path).flattened().elements().size(), 3) << path;
  }
  EXPECT_EQ(parse("M 0 0 C nan 0 inf 0 3 0").flattened().elements().size(), 2);
}

TEST(BezierPathTest, BoundsWhatIsDrawn) {
  const struct {
    const char* path;
    QRectF bounds, ofControlPoints;
  } cases[] = {
      {"", {}, {}},
      {"M 3 4", {3, 4, 0, 0}, {3, 4, 0, 0}},
      {"M 5 5 L 1 9 Z", {1, 5, 4, 4}, {1, 5, 4, 4}},
      // Reaches 3/4 of the way to its control points.
      {"M 0 0 C 0 8 8 8 8 0", {0, 0, 8, 6}, {0, 0, 8, 8}},
      // Turns back twice in each coordinate: at (3 ± sqrt(3)) / 6.
      {"M 0 0 C 30 -30 -30 30 0 0",
       {-8.660254, -8.660254, 17.320508, 17.320508},
       {-30, -30, 60, 60}},
      // A parabola: the derivative has one root.
      {"M 0 0 C 1 2 2 2 3 0", {0, 0, 3, 1.5}, {0, 0, 3, 2}},
      // A curve after a close begins at the subpath's start.
      {"M 0 0 L 9 0 L 9 9 Z C -8 0 -8 8 0 8", {-6, 0, 15, 9}, {-8, 0, 17, 9}},
  };
  for (const auto& [path, bounds, ofControlPoints] : cases) {
    const QRectF found = parse(path).bounds();
    EXPECT_NEAR(found.left(), bounds.left(), 1e-6) << path;
    EXPECT_NEAR(found.top(), bounds.top(), 1e-6) << path;
    EXPECT_NEAR(found.width(), bounds.width(), 1e-6) << path;
    EXPECT_NEAR(found.height(), bounds.height(), 1e-6) << path;
    EXPECT_EQ(parse(path).controlPointBounds(), ofControlPoints) << path;
  }
}

}  // namespace
}  // namespace kelvar
