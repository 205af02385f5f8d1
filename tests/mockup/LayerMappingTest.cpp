#include "mockup/LayerMapping.h"

#include <gtest/gtest.h>

#include <cmath>

#include "geometry/Points.h"
#include "mockup/SketchParts.h"

namespace kelvar {
namespace {

using parts::document;
using parts::group;
using parts::layer;
using parts::named;

constexpr QRgb kRed = 0xffff0000, kGreen = 0xff00ff00, kBlue = 0xff0000ff, kWhite = 0xffffffff;

/// A quarter of each color: red, green, white, blue, clockwise from the top left.
ImageRef design(int side = 64) {
  QImage pixels(side, side, QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < side; ++y) {
    for (int x = 0; x < side; ++x) {
      const bool isLeft = x < side / 2, isTop = y < side / 2;
      pixels.setPixel(x, y, isTop ? (isLeft ? kRed : kGreen) : (isLeft ? kBlue : kWhite));
    }
  }
  return std::make_shared<Image>(pixels);
}

SketchJson quad(const std::string& name, QRectF frame,
                const std::vector<std::array<double, 3>>& corners = {
                    {0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}) {
  return layer("shapePath", name, frame, {{"isClosed", true}, {"points", parts::points(corners)}});
}

/// Its sides are stored as curves, the handles on the points.
SketchJson asCurves(SketchJson quad) {
  for (SketchJson& point : quad["points"]) {
    point["hasCurveFrom"] = point["hasCurveTo"] = true;
    point["curveFrom"] = point["curveTo"] = point["point"];
  }
  return quad;
}

/// The colors at a fifth and four fifths of the image, clockwise from the top left.
std::string corners(const QImage& image) {
  std::string out;
  for (const QPointF at : {QPointF(.2, .2), {.8, .2}, {.8, .8}, {.2, .8}}) {
    const QRgb pixel = image.pixel(int(at.x() * image.width()), int(at.y() * image.height()));
    out += pixel == kRed     ? 'r'
           : pixel == kGreen ? 'g'
           : pixel == kBlue  ? 'b'
           : pixel == kWhite ? 'w'
           : pixel == 0      ? '-'
                             : '?';
  }
  return out;
}

TEST(LayerMappingTest, PlacesDesignInFrame) {
  const QRectF frame(30, 40, 100, 50);
  const struct {
    const char* what;
    SketchJson layer;
    LayerSettings settings;
    QSize size;
    const char* corners;
  } cases[] = {
      {"plain", quad("L", frame), {}, {100, 50}, "rgwb"},
      {"drawn the other way round",
       quad("L", frame, {{0, 0, 0}, {0, 1, 0}, {1, 1, 0}, {1, 0, 0}}),
       {},
       {100, 50},
       "rgwb"},
      {"begun at another corner",
       quad("L", frame, {{1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 0}}),
       {},
       {100, 50},
       "brgw"},
      {"turned", quad("L", frame), {.options = {.rotation = 1}}, {100, 50}, "gwbr"},
      {"flipped", quad("L", frame), {.options = {.flipped = true}}, {100, 50}, "grbw"},
      {"turned, and what is seen flipped",
       quad("L", frame),
       {.options = {.rotation = 1, .flipped = true}},
       {100, 50},
       "wgrb"},
      {"twice as fine", quad("L", frame), {.options = {.quality = 2}}, {200, 100}, "rgwb"},
      {"with a fraction", quad("L", {0.3, 0, 99.5, 49.01}), {}, {100, 50}, "rgwb"},
      {"reaching past its frame",
       quad("L", frame, {{-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, 1, 0}}),
       {},
       {100, 50},
       "wwww"},
      {"in the left half of its frame",
       quad("L", frame, {{0, 0, 0}, {.5, 0, 0}, {.5, 1, 0}, {0, 1, 0}}),
       {},
       {100, 50},
       "r--b"},
      {"with sides stored as curves", asCurves(quad("L", frame)), {}, {100, 50}, "rgwb"},
      {"those drawn the other way round",
       asCurves(quad("L", frame, {{0, 0, 0}, {0, 1, 0}, {1, 1, 0}, {1, 0, 0}})),
       {},
       {100, 50},
       "rgwb"},
      {"in a shape group",
       group("shapeGroup", "L", frame, {quad("p", {0, 0, 100, 50})}),
       {},
       {100, 50},
       "rgwb"},
  };
  for (const auto& [what, json, settings, size, expected] : cases) {
    const auto doc = document({json});
    const LayerMapping mapping(named(doc, "L"), settings);
    ASSERT_TRUE(mapping.validateSize()) << what;
    const ImageRef image = mapping.createImage(design()).value();
    EXPECT_EQ(image->pixels().size(), size) << what;
    EXPECT_EQ(corners(image->pixels()), expected) << what;
  }
}

TEST(LayerMappingTest, CornersOfFractionalFrameMeetImageCorners) {
  const auto doc = document({quad("L", {0, 0, 10.5, 20.25})});
  const QImage image = LayerMapping(named(doc, "L"), {}).createImage(design()).value()->pixels();
  ASSERT_EQ(image.size(), QSize(11, 21));
  for (const QPoint at : {QPoint(0, 0), {10, 0}, {10, 20}, {0, 20}}) {
    EXPECT_GE(qAlpha(image.pixel(at)), 254) << at.x() << " " << at.y();
  }
}

TEST(LayerMappingTest, ExplainsWhyLayerIsNotMappable) {
  const struct {
    const char* what;
    SketchJson layer;
    const char* objection;
  } cases[] = {
      {"a text", layer("text", "L", {0, 0, 9, 9}), "it is not a shape (text)"},
      {"three corners", layer("triangle", "L", {0, 0, 9, 9}), "it has 3 corners"},
      {"round", layer("rectangle", "L", {0, 0, 9, 9}, {{"fixedRadius", 2}}), "corners, and a"},
      {"an empty group", group("shapeGroup", "L", {0, 0, 9, 9}, {}), "it has 0 corners"},
      {"no height", quad("L", {0, 0, 9, 0}), "its frame is empty"},
      {"no frame", {{"_class", "rectangle"}, {"name", "L"}}, "its frame is empty"},
      {"on a line", quad("L", {0, 0, 9, 9}, {{0, 0, 0}, {.4, .4, 0}, {1, 1, 0}, {.7, .7, 0}}),
       "three of the corners lie on one line"},
      {"crossed", quad("L", {0, 0, 9, 9}, {{0, 0, 0}, {1, 1, 0}, {1, 0, 0}, {0, 1, 0}}),
       "the sides of the shape cross"},
      {"part of a group", group("shapeGroup", "G", {0, 0, 9, 9}, {quad("L", {0, 0, 9, 9})}),
       "part of the shape group \"G\""},
  };
  for (const auto& [what, json, objection] : cases) {
    const Result<void> valid = LayerMapping::validateTarget(named(document({json}), "L"));
    ASSERT_FALSE(valid) << what;
    EXPECT_NE(valid.error().message.find(objection), std::string::npos)
        << what << ": " << valid.error().message;
  }
  for (const double side : {1e300, 40000.0, 1e18}) {
    const auto doc = document({quad("L", {0, 0, side, side})});
    const LayerMapping mapping(named(doc, "L"), {});
    EXPECT_FALSE(mapping.validateSize()) << side;
    EXPECT_FALSE(mapping.createImage(design())) << side;
  }
}

std::string fills(const SketchLayerRef& layer) {
  std::string out;
  for (const SketchJson& fill : getArray(get(layer->node().json(), "style"), "fills")) {
    out += getBool(fill, "isEnabled") ? '+' : '-';
    out += std::to_string(getInt(fill, "fillType"));
  }
  return out;
}

QStringList images(const SketchDocumentRef& document) {
  return parts::opened(*document->bytes())->fileNames().filter(QStringLiteral("images/"));
}

TEST(LayerMappingTest, FillsOnTopAndReplacesItsOwnFill) {
  SketchJson plain = quad("L", {0, 0, 10, 10});
  plain.update(parts::filled(parts::color(1, 0, 0)));
  const auto doc = document({plain, quad("Copy", {0, 0, 10, 10})});
  const SketchLayerRef target = named(doc, "L"), copy = named(doc, "Copy");
  const auto map = [&](const SketchLayerRef& onto, const LayerSettings& settings) {
    LayerMapping mapping(onto, settings);
    EXPECT_TRUE(mapping.fill(*doc, mapping.createImage(design()).value()));
  };
  const LayerSettings settings{
      .artboard = QStringLiteral("A"),
      .options = {.quality = 2, .rotation = 3, .flipped = true, .includedInArtboards = false}};
  map(target, settings);
  EXPECT_EQ(fills(target), "-0+4");
  const auto remembered = LayerSettings::of(*target);
  ASSERT_TRUE(remembered);
  EXPECT_EQ(remembered->artboard, u"A");
  EXPECT_EQ(remembered->options, settings.options);
  EXPECT_EQ(images(doc), QStringList{remembered->image});
  const ImageRef stored = doc->image(target->node().style().fills[0].image);
  ASSERT_TRUE(stored);
  EXPECT_EQ(stored->pixels().size(), QSize(20, 20));

  map(target, {});
  EXPECT_EQ(fills(target), "-0+4");
  EXPECT_EQ(images(doc).size(), 1) << "the old image went with its fill";
  map(copy, {});
  EXPECT_EQ(fills(copy), "+4");
  EXPECT_EQ(images(doc).size(), 1) << "equal images are kept once";
  map(copy, {.options = {.rotation = 1}});
  EXPECT_EQ(images(doc).size(), 2) << "the first layer still shows the old image";
}

TEST(LayerSettingsTest, ReadsAnyStoredValue) {
  const struct {
    const char* userInfo;
    std::optional<LayerSettings> settings;
  } cases[] = {
      {"{}", std::nullopt},
      {R"({"userInfo":5})", std::nullopt},
      {R"({"userInfo":{"io.kelvarlabs.kelvar":[]}})", std::nullopt},
      {R"({"userInfo":{"io.kelvarlabs.kelvar":{"quality":-1,"rotation":"x","flip":[],
           "artboard":7,"future":1}}})",
       LayerSettings{}},
      {R"({"userInfo":{"io.kelvarlabs.kelvar":{"quality":2,"rotation":6,"flip":true,
           "artboard":"A","includeInArtboards":false,"image":"images/i.png"}}})",
       LayerSettings{QStringLiteral("A"), {2, 2, true, false}, QStringLiteral("images/i.png")}},
  };
  for (const auto& [userInfo, settings] : cases) {
    const auto doc = document({layer("oval", "L", {0, 0, 1, 1}, SketchJson::parse(userInfo))});
    EXPECT_EQ(LayerSettings::of(*named(doc, "L")), settings) << userInfo;
  }
}

TEST(LayerSettingsTest, KeepsSettingsOfOthers) {
  const auto doc = document({layer("oval", "L", {0, 0, 1, 1},
                                   {{"userInfo", {{"com.example.other", {{"z", 1}, {"a", 2}}}}}})});
  const SketchLayerRef target = named(doc, "L");
  const SketchJson before = target->node().json()["userInfo"]["com.example.other"];
  LayerSettings{.artboard = QStringLiteral("A")}.rememberOn(*target);
  EXPECT_EQ(target->node().json()["userInfo"]["com.example.other"].dump(), before.dump());
  EXPECT_EQ(LayerSettings::of(*target), LayerSettings{.artboard = QStringLiteral("A")});
}

}  // namespace
}  // namespace kelvar
