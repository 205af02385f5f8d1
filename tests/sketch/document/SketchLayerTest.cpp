#include "sketch/document/SketchLayer.h"

#include <gtest/gtest.h>

#include <cmath>

#include "geometry/KVLayerIterator.h"
#include "geometry/Points.h"
#include "mockup/SketchParts.h"

namespace kelvar {
namespace {

using parts::document;
using parts::group;
using parts::layer;
using parts::named;

/// "M 0 0 L 8 0 C …", to two digits.
std::string text(const BezierPath& path) {
  std::string out;
  const auto add = [&](const QPointF& point) {
    for (const double value : {point.x(), point.y()}) {
      out += ' ';
      out += QString::number(std::round(value * 100) / 100 + 0.0).toStdString();
    }
  };
  for (const BezierPath::Element& element : path.elements()) {
    if (!out.empty()) out += ' ';
    out += "MLCZ"[int(element.kind)];
    const int count = element.kind == BezierPath::Kind::Close   ? 0
                      : element.kind == BezierPath::Kind::Curve ? 3
                                                                : 1;
    for (int i = 0; i < count; ++i) add(element.points[size_t(i)]);
  }
  return out;
}

/// A shape of this size; `json` are its other members.
std::string pathOf(const char* kind, QSizeF size, const char* json) {
  const auto doc = document({layer(kind, "Shape", {{5, 7}, size}, SketchJson::parse(json))});
  return text(named(doc, "Shape")->path());
}

TEST(SketchLayerTest, DrawsEveryShapeType) {
  const struct {
    const char* what;
    const char* kind;
    QSizeF size;
    const char* json;
    const char* path;
  } cases[] = {
      {"without points", "rectangle", {8, 4}, "{}", "M 0 0 L 8 0 L 8 4 L 0 4 L 0 0 Z"},
      {"triangle", "triangle", {8, 4}, "{}", "M 4 0 L 8 4 L 0 4 L 4 0 Z"},
      {"four-cornered polygon",
       "polygon",
       {8, 4},
       R"({"numberOfPoints":4})",
       "M 4 0 L 8 2 L 4 4 L 0 2 L 4 0 Z"},
      {"star",
       "star",
       {8, 8},
       R"({"numberOfPoints":3,"radius":0.5})",
       "M 4 0 L 5.73 3 L 7.46 6 L 4 6 L 0.54 6 L 2.27 3 L 4 0 Z"},
      {"oval",
       "oval",
       {2, 4},
       "{}",
       "M 1 4 C 0.45 4 0 3.1 0 2 C 0 0.9 0.45 0 1 0 C 1.55 0 2 0.9 2 2 C 2 3.1 1.55 4 1 4 Z"},
      {"no shape", "text", {8, 4}, "{}", ""},
      {"a line",
       "shapePath",
       {8, 4},
       R"({"isClosed":false,"points":[{"point":"{0, 0}"},{"point":"{1, 1}"}]})",
       "M 0 0 L 8 4"},
      {"points in a path, as before Sketch 50",
       "shapePath",
       {8, 4},
       R"({"path":{"isClosed":true,"points":[{"point":"{0, 0}"},{"point":"{1, 1}"},
           {"point":"{0, 1}"}]}})",
       "M 0 0 L 8 4 L 0 4 L 0 0 Z"},
      {"edited",
       "rectangle",
       {8, 4},
       R"({"edited":true,"fixedRadius":9,"points":[{"point":"{0.25, 0}"},{"point":"{1, 0.5}"},
           {"point":"{0, 1}"}]})",
       "M 2 0 L 8 2 L 0 4 L 2 0 Z"},
      {"curve out of one point and none into the next",
       "shapePath",
       {10, 10},
       R"({"isClosed":false,"points":[
           {"point":"{0, 0}","hasCurveFrom":true,"curveFrom":"{0.5, 0}","curveTo":"{9, 9}"},
           {"point":"{1, 1}"}]})",
       "M 0 0 C 5 0 10 10 10 10"},
      {"points that are nonsense",
       "shapePath",
       {8, 4},
       R"({"isClosed":true,"points":[5,null,{"point":7},{"point":"{nan, inf}"},
           {"point":"{1, 1}","cornerRadius":"big"}]})",
       "M 0 0 L 0 0 L 8 4 L 0 0 Z"},
  };
  for (const auto& [what, kind, size, json, path] : cases) {
    EXPECT_EQ(pathOf(kind, size, json), path) << what;
  }
}

TEST(SketchLayerTest, RoundsCorners) {
  const char* const kSquare = R"({"pointRadiusBehaviour":1,"points":[
      {"point":"{0, 0}","cornerRadius":%1,"cornerStyle":%2},{"point":"{1, 0}","cornerRadius":%3},
      {"point":"{1, 1}"},{"point":"{0, 1}"}]})";
  const struct {
    const char* what;
    double radius;
    int style;
    double next;
    const char* path;
  } cases[] = {
      {"one corner", 2, 0, 0, "M 2 0 L 10 0 L 10 10 L 0 10 L 0 2 C 0 0.9 0.9 0 2 0 Z"},
      {"a whole side for one", 99, 0, 0,
       "M 10 0 L 10 0 L 10 10 L 0 10 L 0 10 C 0 4.48 4.48 0 10 0 Z"},
      {"a side shared in proportion", 30, 0, 10,
       "M 7.5 0 L 7.5 0 C 8.88 0 10 1.12 10 2.5 L 10 10 L 0 10 L 0 7.5 C 0 3.36 3.36 0 7.5 0 Z"},
      {"inwards", 2, 1, 0, "M 2 0 L 10 0 L 10 10 L 0 10 L 0 2 C 1.1 2 2 1.1 2 0 Z"},
      {"straight", 2, 2, 0, "M 2 0 L 10 0 L 10 10 L 0 10 L 0 2 L 2 0 Z"},
      {"a notch", 2, 3, 0, "M 2 0 L 10 0 L 10 10 L 0 10 L 0 2 L 2 2 L 2 0 Z"},
      {"negative", -5, 0, 0, "M 0 0 L 10 0 L 10 10 L 0 10 L 0 0 Z"},
  };
  for (const auto& [what, radius, style, next, path] : cases) {
    const QString json = QString::fromLatin1(kSquare).arg(radius).arg(style).arg(next);
    EXPECT_EQ(pathOf("rectangle", {10, 10}, json.toUtf8().constData()), path) << what;
  }
  EXPECT_EQ(pathOf("rectangle", {10, 10}, R"({"fixedRadius":5})"),
            "M 5 0 L 5 0 C 7.76 0 10 2.24 10 5 L 10 5 C 10 7.76 7.76 10 5 10 L 5 10 "
            "C 2.24 10 0 7.76 0 5 L 0 5 C 0 2.24 2.24 0 5 0 Z");
  EXPECT_EQ(pathOf("rectangle", {10, 10}, R"({"fixedRadius":5,"pointRadiusBehaviour":-1})"),
            "M 0 0 L 10 0 L 10 10 L 0 10 L 0 0 Z");
  EXPECT_EQ(pathOf("rectangle", {10, 10}, R"({"style":{"corners":{"radii":[2,0,0,0]}}})"),
            "M 2 0 L 10 0 L 10 10 L 0 10 L 0 2 C 0 0.9 0.9 0 2 0 Z");
  // The ends of an open path and corners at a curve have nothing to round.
  EXPECT_EQ(pathOf("shapePath", {10, 10},
                   R"({"isClosed":false,"points":[{"point":"{0, 0}","cornerRadius":2},
                       {"point":"{1, 0}","cornerRadius":2,"hasCurveTo":true,"curveTo":"{0.5, 0.5}"},
                       {"point":"{1, 1}","cornerRadius":2}]})"),
            "M 0 0 C 0 0 5 5 10 0 L 10 10");
}

TEST(SketchLayerTest, SmoothCornersStartEarlierIfRoomAllows) {
  const char* const kSmooth = R"({"pointRadiusBehaviour":2,"fixedRadius":%1})";
  const auto start = [&](double radius) {
    const QString json = QString::fromLatin1(kSmooth).arg(radius);
    const auto doc = document(
        {layer("rectangle", "Shape", {0, 0, 100, 100}, SketchJson::parse(json.toStdString()))});
    return named(doc, "Shape")->path();
  };
  EXPECT_NEAR(start(10).elements().first().points[0].x(), 15.2866, 1e-3);
  EXPECT_NEAR(start(40).elements().first().points[0].x(), 50, 1e-3);
  EXPECT_NEAR(start(50).elements().first().points[0].x(), 50, 1e-3);
  // Halfway round, a smooth corner lies about where its circle does.
  for (const double radius : {10.0, 40.0, 50.0}) {
    const auto elements = start(radius).flattened(0.001).elements();
    double nearest = 1e9;
    for (const auto& element : elements) {
      if (element.kind == BezierPath::Kind::Close) continue;
      nearest = std::min(nearest, std::hypot(element.end().x(), element.end().y()));
    }
    EXPECT_NEAR(nearest, radius * (std::sqrt(2) - 1), radius * 0.02) << radius;
  }
}

TEST(SketchLayerTest, IteratesOldAndNewDocumentsAlike) {
  const auto corners = parts::points({{0, 0, 0}, {1, 0.25, 0}, {1, 0.75, 0}, {0, 1, 0}});
  const SketchJson quad{{"isClosed", true}, {"points", corners}};
  SketchJson flipped = quad, turned = quad;
  flipped["isFlippedHorizontal"] = true;
  turned["rotation"] = 90;
  const QRectF frame(30, 40, 8, 4), inside(0, 0, 8, 4);
  const struct {
    const char* what;
    SketchJson layer;
    const char* points;
  } cases[] = {
      {"by itself", layer("shapePath", "L", frame, quad), "0,0 8,1 8,3 0,4"},
      {"by itself and flipped, which turns its fill along", layer("shapePath", "L", frame, flipped),
       "0,0 8,1 8,3 0,4"},
      {"the only child of a group",
       group("shapeGroup", "L", frame, {layer("shapePath", "p", inside, quad)}), "0,0 8,1 8,3 0,4"},
      {"a flipped child",
       group("shapeGroup", "L", frame, {layer("shapePath", "p", inside, flipped)}),
       "8,0 8,4 0,3 0,1"},
      {"a moved child and another one",
       group("shapeGroup", "L", frame,
             {layer("shapePath", "p", {1, 2, 8, 4}, quad), layer("oval", "q", inside)}),
       "1,2 9,3 9,5 1,6"},
      {"a turned child, counter-clockwise",
       group("shapeGroup", "L", frame, {layer("shapePath", "p", inside, turned)}),
       "2,6 3,-2 5,-2 6,6"},
      {"a text", layer("text", "L", frame), ""},
      {"an empty group", group("shapeGroup", "L", frame, {}), ""},
  };
  for (const auto& [what, json, expected] : cases) {
    QStringList rounded;
    for (const QString& point :
         KVLayerIterator().extractPointsFromLayer(named(document({json}), "L"))) {
      const QPointF at = pointFromString(point);
      rounded.append(stringFromPoint(
          {std::round(at.x() * 1e6) / 1e6 + 0.0, std::round(at.y() * 1e6) / 1e6 + 0.0}));
    }
    EXPECT_EQ(rounded, points(expected)) << what;
  }
}

TEST(SketchLayerTest, AnswersKeyPathsAndOutlivesDocument) {
  SketchLayerRef child;
  {
    const auto doc = document({group(
        "artboard", "Board", {1, 2, 30, 40},
        {layer("rectangle", "Screen", {3, 4, 5, 6},
               {{"style", {{"opacity", 0.5}, {"fills", SketchJson::array({{{"fillType", 4}}})}}},
                {"layerOfTheFuture", {1, 2.5, nullptr}}})})});
    child = named(doc, "Screen");
  }
  const struct {
    const char* key;
    QVariant value;
  } cases[] = {
      {"name", QStringLiteral("Screen")},
      {"objectID", QStringLiteral("Screen-id")},
      {"frame.height", 6.0},
      {"style.opacity", 0.5},
      {"style.fills.fillType", QVariantList{4}},
      {"layers.name", QVariantList{QStringLiteral("Screen")}},
      {"layerOfTheFuture", QVariantList{1, 2.5, QVariant::fromValue(nullptr)}},
      {"nothing", {}},
      {"style.nothing", {}},
  };
  for (const auto& [key, value] : cases) {
    EXPECT_EQ(child->valueForKeyPath(QString::fromLatin1(key)), value) << key;
  }
  EXPECT_TRUE(child->setValueForKey(QStringLiteral("New"), QStringLiteral("name")));
  EXPECT_EQ(child->name(), u"New");
  EXPECT_EQ(child->description(), u"<rectangle New (Screen-id)>");
}

/// A new member must not move the layers that others hold.
TEST(SketchLayerTest, KeepsContentsInPlaceWhenChanged) {
  const auto doc = document({group(
      "shapeGroup", "Outer", {0, 0, 9, 9},
      {group("shapeGroup", "Middle", {0, 0, 9, 9}, {layer("oval", "Inner", {0, 0, 9, 9})})})});
  const SketchLayerRef outer = named(doc, "Outer"), inner = named(doc, "Inner");
  const Layer* const place = &inner->node();
  for (int i = 0; i < 20; ++i) {
    outer->edit().change()["added" + std::to_string(i)] = i;
    outer->setUserInfo(QString::number(i), {{QStringLiteral("of"), i}});
    ASSERT_EQ(outer->node().children()[0]->children()[0].get(), place) << i;
  }
  EXPECT_EQ(inner->name(), u"Inner");
  EXPECT_EQ(outer->node().json().at("added19"), 19);
}

}  // namespace
}  // namespace kelvar
