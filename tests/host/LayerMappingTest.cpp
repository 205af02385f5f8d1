#include "host/LayerMapping.h"

#include <gtest/gtest.h>

#include <cmath>

#include "geometry/Points.h"
#include "host/SketchParts.h"

namespace kelvar {
namespace {

using parts::document;
using parts::group;
using parts::layer;
using parts::named;

constexpr QRgb kRed = 0xffff0000, kGreen = 0xff00ff00, kBlue = 0xff0000ff, kWhite = 0xffffffff;

/// A quarter of each colour: red, green, white, blue, clockwise from the top left.
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

/// The colours at a fifth and four fifths of the picture, clockwise from the top left.
std::string corners(const QImage& picture) {
  std::string out;
  for (const QPointF at : {QPointF(.2, .2), {.8, .2}, {.8, .8}, {.2, .8}}) {
    const QRgb pixel = picture.pixel(int(at.x() * picture.width()), int(at.y() * picture.height()));
    out += pixel == kRed     ? 'r'
           : pixel == kGreen ? 'g'
           : pixel == kBlue  ? 'b'
           : pixel == kWhite ? 'w'
           : pixel == 0      ? '-'
                             : '?';
  }
  return out;
}

TEST(LayerMapping, LaysTheDesignIntoTheFrame) {
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
      {"turned", quad("L", frame), {.rotation = 1}, {100, 50}, "gwbr"},
      {"flipped", quad("L", frame), {.isFlipped = true}, {100, 50}, "grbw"},
      {"turned, and what is seen flipped",
       quad("L", frame),
       {.rotation = 1, .isFlipped = true},
       {100, 50},
       "wgrb"},
      {"twice as fine", quad("L", frame), {.quality = 2}, {200, 100}, "rgwb"},
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
    ASSERT_EQ(mapping.objection(), QString()) << what;
    const ImageRef picture = mapping.picture(design());
    EXPECT_EQ(picture->pixels().size(), size) << what;
    EXPECT_EQ(corners(picture->pixels()), expected) << what;
  }
}

TEST(LayerMapping, CornersOfAFractionalFrameLieOnTheCornersOfThePicture) {
  const auto doc = document({quad("L", {0, 0, 10.5, 20.25})});
  const QImage picture = LayerMapping(named(doc, "L"), {}).picture(design())->pixels();
  ASSERT_EQ(picture.size(), QSize(11, 21));
  for (const QPoint at : {QPoint(0, 0), {10, 0}, {10, 20}, {0, 20}}) {
    EXPECT_GE(qAlpha(picture.pixel(at)), 254) << at.x() << " " << at.y();
  }
}

TEST(LayerMapping, SaysWhyALayerTakesNoDesign) {
  const struct {
    const char* what;
    SketchJson layer;
    const char* objection;
  } cases[] = {
      {"a text", layer("text", "L", {0, 0, 9, 9}), "it is no shape (text)"},
      {"three corners", layer("triangle", "L", {0, 0, 9, 9}), "it has 3 corners"},
      {"round", layer("rectangle", "L", {0, 0, 9, 9}, {{"fixedRadius", 2}}), "corners, and a"},
      {"an empty group", group("shapeGroup", "L", {0, 0, 9, 9}, {}), "it has 0 corners"},
      {"no height", quad("L", {0, 0, 9, 0}), "its frame is empty"},
      {"no frame", {{"_class", "rectangle"}, {"name", "L"}}, "its frame is empty"},
      {"on a line", quad("L", {0, 0, 9, 9}, {{0, 0, 0}, {.4, .4, 0}, {1, 1, 0}, {.7, .7, 0}}),
       "its corners lie on a line"},
      {"crossed", quad("L", {0, 0, 9, 9}, {{0, 0, 0}, {1, 1, 0}, {1, 0, 0}, {0, 1, 0}}),
       "its sides cross"},
      {"part of a group", group("shapeGroup", "G", {0, 0, 9, 9}, {quad("L", {0, 0, 9, 9})}),
       "part of the shape group \"G\""},
  };
  for (const auto& [what, json, objection] : cases) {
    const QString sentence = LayerMapping::objectionTo(named(document({json}), "L"));
    EXPECT_TRUE(sentence.contains(QString::fromLatin1(objection)))
        << what << ": " << qPrintable(sentence);
  }
  for (const double side : {1e300, 40000.0, 1e18}) {
    const auto doc = document({quad("L", {0, 0, side, side})});
    const LayerMapping mapping(named(doc, "L"), {});
    EXPECT_TRUE(mapping.objection().contains(u"pixels")) << side;
    EXPECT_FALSE(mapping.picture(design())->isValid()) << side;
  }
}

std::string fills(const SketchLayerRef& layer) {
  std::string out;
  for (const SketchJson& fill : listIn(memberOf(layer->json(), "style"), "fills")) {
    out += flagIn(fill, "isEnabled") ? '+' : '-';
    out += std::to_string(integerIn(fill, "fillType"));
  }
  return out;
}

QStringList images(const SketchDocumentRef& document) {
  QString error;
  return parts::opened(document->bytes(&error))->fileNames().filter(QStringLiteral("images/"));
}

TEST(LayerMapping, FillsAboveWhatWasThereAndReplacesItsOwn) {
  SketchJson plain = quad("L", {0, 0, 10, 10});
  plain.update(parts::filled(parts::color(1, 0, 0)));
  const auto doc = document({plain, quad("Copy", {0, 0, 10, 10})});
  const SketchLayerRef target = named(doc, "L"), copy = named(doc, "Copy");
  const auto map = [&](const SketchLayerRef& onto, const LayerSettings& settings) {
    QString error;
    LayerMapping mapping(onto, settings);
    EXPECT_TRUE(mapping.fill(*doc, mapping.picture(design()), &error)) << qPrintable(error);
  };
  const LayerSettings settings{.artboard = QStringLiteral("A"),
                               .quality = 2,
                               .rotation = 7,
                               .isFlipped = true,
                               .isIncludedInArtboards = false};
  map(target, settings);
  EXPECT_EQ(fills(target), "-0+4");
  const auto remembered = LayerSettings::of(*target);
  ASSERT_TRUE(remembered);
  EXPECT_EQ(remembered->artboard, u"A");
  EXPECT_EQ(remembered->rotation, 3u);
  EXPECT_EQ(images(doc), QStringList{remembered->image});
  const ImageRef stored = doc->image(target->json()["style"]["fills"][1]["image"]);
  ASSERT_TRUE(stored);
  EXPECT_EQ(stored->pixels().size(), QSize(20, 20));

  map(target, {});
  EXPECT_EQ(fills(target), "-0+4");
  EXPECT_EQ(images(doc).size(), 1) << "the old picture went with its fill";
  map(copy, {});
  EXPECT_EQ(fills(copy), "+4");
  EXPECT_EQ(images(doc).size(), 1) << "equal pictures are kept once";
  map(copy, {.rotation = 1});
  EXPECT_EQ(images(doc).size(), 2) << "the first layer still shows the old picture";
}

TEST(LayerSettings, ReadsWhateverStandsThere) {
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
       LayerSettings{QStringLiteral("A"), 2, 2, true, false, QStringLiteral("images/i.png")}},
  };
  for (const auto& [userInfo, settings] : cases) {
    const auto doc = document({layer("oval", "L", {0, 0, 1, 1}, SketchJson::parse(userInfo))});
    EXPECT_EQ(LayerSettings::of(*named(doc, "L")), settings) << userInfo;
  }
}

TEST(LayerSettings, LeavesWhatOthersRememberAlone) {
  const auto doc = document({layer("oval", "L", {0, 0, 1, 1},
                                   {{"userInfo", {{"com.example.other", {{"z", 1}, {"a", 2}}}}}})});
  const SketchLayerRef target = named(doc, "L");
  const SketchJson before = target->json()["userInfo"]["com.example.other"];
  LayerSettings{.artboard = QStringLiteral("A")}.rememberOn(*target);
  EXPECT_EQ(target->json()["userInfo"]["com.example.other"].dump(), before.dump());
  EXPECT_EQ(LayerSettings::of(*target), LayerSettings{.artboard = QStringLiteral("A")});
}

}  // namespace
}  // namespace kelvar
