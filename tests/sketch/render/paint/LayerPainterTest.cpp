#include "sketch/render/paint/LayerPainter.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QFontDatabase>
#include <numbers>

#include "platform/image/OffscreenGuiApplication.h"
#include "sketch/render/TinyDocument.h"

namespace kelvar::render {
namespace {

const QColor kRed(255, 0, 0), kGreen(0, 255, 0), kBlue(0, 0, 255), kNothing(0, 0, 0, 0);

struct Probe {
  int x, y;
  QColor color;
};

void expectColors(const Drawing& drawing, const QList<Probe>& probes, const char* what) {
  for (const Probe& probe : probes) {
    const QColor got = drawing.at(probe.x, probe.y);
    const auto isNear = [](int a, int b) { return std::abs(a - b) <= 3; };
    EXPECT_TRUE(isNear(got.alpha(), probe.color.alpha()) &&
                (probe.color.alpha() == 0 || (isNear(got.red(), probe.color.red()) &&
                                              isNear(got.green(), probe.color.green()) &&
                                              isNear(got.blue(), probe.color.blue()))))
        << what << " at " << probe.x << "," << probe.y << ": "
        << qPrintable(got.name(QColor::HexArgb)) << " instead of "
        << qPrintable(probe.color.name(QColor::HexArgb));
  }
}

struct Case {
  const char* what;
  List layers;
  QList<Probe> probes;
};

void expectDrawn(const std::vector<Case>& cases, double side = 40) {
  for (const Case& c : cases) {
    const Drawing drawing = draw(c.layers, side, side);
    expectColors(drawing, c.probes, c.what);
    EXPECT_EQ(drawing.warnings, QStringList()) << c.what;
  }
}

SketchJson stop(double position, const QColor& c) {
  return {{"position", position}, {"color", color(c)}};
}

SketchJson gradient(int type, const char* from, const char* to, const List& stops) {
  SketchJson paint = {{"fillType", 1}};
  paint["gradient"] = {{"gradientType", type}, {"from", from}, {"to", to}, {"stops", stops}};
  SketchJson style;
  style["fills"] = SketchJson::array({paint});
  return style;
}

TEST(LayerPainterTest, Gradients) {
  const List redToBlue = {stop(0, kRed), stop(1, kBlue)};
  SketchJson flat = gradient(1, "{0.5, 0.5}", "{1, 0.5}", redToBlue);
  flat["fills"][0]["gradient"]["elipseLength"] = 0.5;
  expectDrawn({
      {"linear, across",
       {rectangle(0, 0, 40, 40, gradient(0, "{0, 0.5}", "{1, 0.5}", redToBlue))},
       {{0, 5, {252, 0, 3}}, {20, 20, {127, 0, 128}}, {39, 30, {3, 0, 252}}}},
      {"linear, transparent end keeps its color",
       {rectangle(0, 0, 40, 40,
                  gradient(0, "{0, 0}", "{1, 0}", {stop(0, kRed), stop(1, {0, 0, 255, 0})}))},
       {{20, 20, {125, 0, 132, 124}}}},
      {"radial",
       {rectangle(0, 0, 40, 40, gradient(1, "{0.5, 0.5}", "{1, 0.5}", redToBlue))},
       {{20, 20, {246, 0, 9}}, {30, 20, {122, 0, 133}}, {20, 30, {122, 0, 133}}, {1, 1, kBlue}}},
      {"radial, elliptical",
       {rectangle(0, 0, 40, 40, flat)},
       {{30, 20, {120, 0, 135}}, {20, 25, {118, 0, 137}}, {20, 31, kBlue}}},
      {"angular, clockwise from the right",
       {rectangle(0, 0, 40, 40, gradient(2, "{0.5, 0.5}", "{1, 0.5}", redToBlue))},
       {{38, 21, {249, 0, 6}},
        {20, 38, {190, 0, 65}},
        {1, 20, {128, 0, 127}},
        {20, 1, {65, 0, 190}}}},
      {"angular, on across the seam",
       {rectangle(0, 0, 40, 40,
                  gradient(2, "{0.5, 0.5}", "{1, 0.5}", {stop(0.25, kRed), stop(0.75, kBlue)}))},
       {{39, 20, {128, 0, 127}}, {20, 39, {253, 0, 2}}}},
  });
}

SketchJson bordered(int position, double thickness, const QColor& c, SketchJson style = {}) {
  SketchJson border = {{"color", color(c)}, {"fillType", 0}};
  border["position"] = position;
  border["thickness"] = thickness;
  style["borders"] = SketchJson::array({border});
  return style;
}

TEST(LayerPainterTest, Borders) {
  SketchJson dashed = bordered(0, 4, kRed);
  dashed["borderOptions"] = {{"isEnabled", true}, {"dashPattern", {6, 4}}};
  SketchJson round = bordered(2, 6, kRed);
  round["borderOptions"] = {{"isEnabled", true}, {"lineJoinStyle", 1}};
  const SketchJson line =
      with(layer("shapePath", frame(10, 20, 20, 0), bordered(1, 6, kRed)),
           {{"isClosed", false}, {"points", {{{"point", "{0, 0}"}}, {{"point", "{1, 0}"}}}}});
  SketchJson capped = line;
  capped["style"]["borderOptions"] = {{"isEnabled", true}, {"lineCapStyle", 2}};
  SketchJson dashedLine = line;
  dashedLine["style"]["borderOptions"] = {{"isEnabled", false}, {"dashPattern", {6, 4}}};
  expectDrawn({
      {"center",
       {rectangle(10, 10, 20, 20, bordered(0, 4, kRed))},
       {{7, 20, kNothing}, {8, 20, kRed}, {11, 20, kRed}, {12, 20, kNothing}}},
      {"inside",
       {rectangle(10, 10, 20, 20, bordered(1, 4, kRed))},
       {{9, 20, kNothing}, {10, 20, kRed}, {13, 20, kRed}, {14, 20, kNothing}}},
      {"outside",
       {rectangle(10, 10, 20, 20, bordered(2, 4, kRed, filled(kBlue)))},
       {{5, 20, kNothing}, {6, 20, kRed}, {9, 20, kRed}, {10, 20, kBlue}, {6, 6, kRed}}},
      {"a round join", {rectangle(10, 10, 20, 20, round)}, {{4, 4, kNothing}, {4, 20, kRed}}},
      {"inside on half a pixel",
       {rectangle(10.5, 10, 20, 20, bordered(1, 2, kRed))},
       {{10, 20, {255, 0, 0, 128}}, {11, 20, kRed}, {12, 20, {255, 0, 0, 128}}}},
      {"an open path has two sides",
       {line},
       {{20, 16, kNothing}, {20, 17, kRed}, {20, 22, kRed}, {20, 23, kNothing}, {9, 20, kNothing}}},
      {"a projecting cap", {capped}, {{7, 20, kRed}, {6, 20, kNothing}, {32, 20, kRed}}},
      {"dashes",
       {dashedLine},
       {{12, 20, kRed}, {17, 20, kNothing}, {18, 20, kNothing}, {22, 20, kRed}}},
  });
}

/// At the right end of a line of 2 from (10, 20) to (28, 20), and at its left end.
TEST(LayerPainterTest, LineEndMarkers) {
  const struct {
    int marker;
    QList<Probe> probes;
  } cases[] = {
      {0, {{27, 20, kRed}, {25, 22, kNothing}, {29, 20, kNothing}}},
      {1, {{8, 14, kRed}, {8, 25, kRed}, {8, 22, kNothing}, {4, 15, kNothing}, {30, 20, kNothing}}},
      {2, {{8, 15, kRed}, {8, 22, kRed}, {8, 12, kNothing}, {27, 20, kRed}, {30, 20, kNothing}}},
      {3, {{28, 15, kRed}, {27, 24, kRed}, {25, 17, kNothing}}},
      {4, {{28, 14, kRed}, {33, 20, kRed}, {30, 18, kNothing}, {28, 25, kRed}}},
      {5, {{28, 15, kRed}, {32, 20, kRed}, {30, 18, kRed}, {33, 15, kNothing}}},
      {6, {{33, 15, kRed}, {30, 18, kNothing}}},
      {7, {{33, 15, kRed}, {30, 18, kRed}, {35, 20, kNothing}}},
  };
  for (const bool atStart : {false, true}) {
    for (const auto& [marker, probes] : cases) {
      SketchJson style = bordered(0, 2, kRed);
      style[atStart ? "startMarkerType" : "endMarkerType"] = marker;
      const SketchJson line =
          with(layer("shapePath", frame(10, 20, 18, 0), style),
               {{"isClosed", false}, {"points", {{{"point", "{0, 0}"}}, {{"point", "{1, 0}"}}}}});
      QList<Probe> mirrored = probes;
      for (Probe& probe : mirrored) {
        if (atStart) probe.x = 37 - probe.x;
      }
      expectColors(draw({line}, 40, 40), mirrored,
                   qPrintable(QStringLiteral("marker %1, %2").arg(marker).arg(atStart)));
    }
  }
}

SketchJson shadow(const char* list, double x, double y, double blurRadius, double spread,
                  const QColor& c, SketchJson style) {
  SketchJson shadow = {{"color", color(c)}, {"blurRadius", blurRadius}, {"spread", spread}};
  shadow["offsetX"] = x;
  shadow["offsetY"] = y;
  style[list] = SketchJson::array({shadow});
  return style;
}

TEST(LayerPainterTest, Shadows) {
  const QColor half(255, 0, 0, 128);
  const SketchJson blurred = shadow("shadows", 20, 0, 4, 0, Qt::black, filled(kRed));
  SketchJson group =
      container("group", frame(10, 10, 10, 10), {rectangle(0, 0, 10, 10, filled(kRed))});
  group["style"] = shadow("shadows", 20, 0, 0, 0, kBlue, SketchJson::object());
  const SketchJson turned =
      with(rectangle(10, 10, 10, 10, shadow("shadows", 12, 0, 0, 0, kBlue, filled(kRed))),
           {{"rotation", 90}});
  SketchJson inList = shadow("shadows", 4, 0, 0, 0, kBlue, filled(kRed));
  inList["shadows"][0]["isInnerShadow"] = true;
  expectDrawn({
      {"moved",
       {rectangle(10, 10, 10, 10, shadow("shadows", 12, 5, 0, 0, kBlue, filled(kRed)))},
       {{15, 15, kRed}, {21, 20, kNothing}, {22, 15, kBlue}, {31, 24, kBlue}, {31, 25, kNothing}}},
      {"spread",
       {rectangle(10, 10, 10, 10, shadow("shadows", 0, 0, 0, 4, kBlue, filled(kRed)))},
       {{5, 15, kNothing}, {6, 6, kBlue}, {9, 15, kBlue}, {10, 15, kRed}, {23, 23, kBlue}}},
      {"smaller than what casts it",
       {rectangle(10, 10, 20, 20, shadow("shadows", 0, 14, 0, -4, kBlue, filled(kRed)))},
       {{20, 29, kRed}, {20, 39, kBlue}, {13, 35, kNothing}, {14, 35, kBlue}, {26, 35, kNothing}}},
      {"half as far as its radius",
       {rectangle(0, 0, 20, 40, blurred)},
       // The bell of deviation 2, half a pixel beyond the edge at 40 - 0.5 and at 38 - 0.5.
       {{39, 20, {0, 0, 0, 153}}, {37, 20, {0, 0, 0, 228}}}},
      {"of a shape without paint",
       {rectangle(10, 10, 20, 20, shadow("shadows", 12, 0, 0, 0, kBlue, SketchJson::object()))},
       {{15, 15, kNothing}, {25, 15, kNothing}, {31, 15, kBlue}, {39, 29, kBlue}}},
      {"not seen through",
       {rectangle(10, 10, 20, 20, shadow("shadows", 2, 2, 0, 0, kBlue, filled(half)))},
       {{20, 20, half}, {31, 20, kBlue}}},
      {"of a group", {group}, {{15, 15, kRed}, {35, 15, kBlue}, {25, 15, kNothing}}},
      {"keeps its direction", {turned}, {{27, 15, kBlue}, {15, 27, kNothing}}},
      {"inner",
       {rectangle(10, 10, 20, 20, shadow("innerShadows", 4, 0, 0, 0, kBlue, filled(kRed)))},
       {{9, 20, kNothing}, {10, 20, kBlue}, {13, 20, kBlue}, {14, 20, kRed}, {29, 20, kRed}}},
      {"inner, in the one list of later documents",
       {rectangle(10, 10, 20, 20, inList)},
       {{9, 20, kNothing}, {10, 20, kBlue}, {13, 20, kBlue}, {14, 20, kRed}, {29, 20, kRed}}},
      {"inner, smaller",
       {rectangle(10, 10, 20, 20, shadow("innerShadows", 6, 0, 0, -2, kBlue, filled(kRed)))},
       {{13, 20, kBlue}, {14, 20, kRed}, {20, 11, kRed}}},
      {"inner, spread",
       {rectangle(10, 10, 20, 20, shadow("innerShadows", 0, 0, 0, 3, kBlue, filled(kRed)))},
       {{12, 20, kBlue}, {13, 20, kRed}, {26, 20, kRed}, {27, 20, kBlue}}},
  });
}

SketchJson blended(int mode, double opacity, SketchJson style) {
  style["contextSettings"] = {{"blendMode", mode}, {"opacity", opacity}};
  return style;
}

TEST(LayerPainterTest, BlendModesAndOpacity) {
  const QColor above(200, 100, 50), below(100, 150, 200);
  const struct {
    int mode;
    QColor expected;
  } modes[] = {
      {0, above},
      {1, {100, 100, 50}},
      {2, {78, 59, 39}},
      {4, {200, 150, 200}},
      {5, {222, 191, 211}},
      {10, {100, 50, 150}},
      {11, {143, 132, 172}},
      {17, {255, 250, 250}},
      {16, {45, 0, 0}},
      // Luminosities 140.5 below and 124.5 above, saturations 100 and 150.
      {12, {191, 124, 91}},
      {13, {80, 155, 230}},
      {14, {216, 116, 66}},
      {15, {84, 134, 184}},
  };
  for (const auto& [mode, expected] : modes) {
    const SketchJson bottom = rectangle(0, 0, 40, 40, filled(below));
    SketchJson byFill = filled(above);
    byFill["fills"][0]["contextSettings"] = {{"blendMode", mode}, {"opacity", 1}};
    const SketchJson inGroup =
        with(container("group", frame(0, 0, 40, 40), {rectangle(0, 0, 40, 40, filled(above))}),
             {{"style", blended(mode, 1, SketchJson::object())}});
    for (const SketchJson& top : {rectangle(0, 0, 40, 40, blended(mode, 1, filled(above))),
                                  rectangle(0, 0, 40, 40, byFill), inGroup}) {
      expectColors(draw({bottom, top}, 40, 40), {{20, 20, expected}},
                   qPrintable(QString::number(mode)));
    }
  }
  const List both = {rectangle(0, 0, 30, 40, filled(kRed)),
                     rectangle(10, 0, 30, 40, filled(kBlue))};
  expectDrawn({{"a group fades as one",
                {with(container("group", frame(0, 0, 40, 40), both),
                      {{"style", blended(0, 0.5, SketchJson::object())}})},
                {{5, 5, {255, 0, 0, 128}}, {20, 5, {0, 0, 255, 128}}}}});
}

SketchJson masking(SketchJson layer, int mode = 0) {
  return with(layer, {{"hasClippingMask", true}, {"clippingMaskMode", mode}});
}

TEST(LayerPainterTest, Masks) {
  const SketchJson mask = masking(rectangle(10, 10, 10, 20, SketchJson::object()));
  const SketchJson paper = rectangle(0, 0, 40, 40, filled(kRed));
  const SketchJson free =
      with(rectangle(30, 0, 10, 10, filled(kBlue)), {{"shouldBreakMaskChain", true}});
  const SketchJson half = masking(
      rectangle(0, 0, 40, 40,
                gradient(0, "{0, 0}", "{1, 0}", {stop(0, {0, 0, 0, 0}), stop(1, {0, 0, 0, 255})})),
      1);
  expectDrawn({
      {"an outline", {mask, paper}, {{9, 15, kNothing}, {10, 10, kRed}, {20, 15, kNothing}}},
      {"ends where the chain breaks", {mask, paper, free, paper}, {{35, 5, kRed}, {5, 5, kRed}}},
      {"a mask within a mask",
       {mask, masking(rectangle(15, 0, 40, 15, SketchJson::object())), paper},
       {{12, 12, kNothing}, {17, 12, kRed}, {25, 12, kNothing}, {17, 20, kNothing}}},
      {"stays in its group",
       {container("group", frame(0, 0, 40, 40), {mask}), paper},
       {{5, 5, kRed}}},
      {"a hidden mask does nothing", {with(mask, {{"isVisible", false}}), paper}, {{5, 5, kRed}}},
      // The mask itself is drawn as well, black and half transparent.
      {"an alpha", {half, paper, free}, {{20, 20, {171, 0, 0, 195}}, {35, 5, kBlue}}},
  });
}

/// Edges in the middle of pixels: at 10.5 and 20.5.
TEST(LayerPainterTest, MaskEdgesShowNothingBelowTheContents) {
  const SketchJson below = rectangle(0, 0, 40, 40, filled(kGreen));
  const SketchJson blue = masking(rectangle(10.5, 10, 10, 20, filled(kBlue)));
  const SketchJson paper = rectangle(0, 0, 40, 40, filled(kRed));
  const SketchJson part = rectangle(0, 0, 40, 20, filled(kRed));
  const SketchJson outer = masking(rectangle(10.5, 10, 20, 20, SketchJson::object()));
  SketchJson shaded = filled(kBlue);
  shaded["shadows"] =
      SketchJson::array({{{"offsetX", 10}, {"blurRadius", 0}, {"color", color(kRed)}}});
  expectDrawn({
      {"of one layer",
       {below, blue, paper},
       {{10, 15, {128, 127, 0}}, {11, 15, kRed}, {20, 15, {128, 127, 0}}, {21, 15, kGreen}}},
      {"of several", {below, blue, paper, paper}, {{10, 15, {128, 127, 0}}}},
      {"the mask's own, where nothing covers it",
       {below, blue, part},
       {{10, 15, {128, 127, 0}}, {10, 25, {0, 127, 128}}, {15, 25, kBlue}}},
      {"on nothing", {blue, paper}, {{10, 15, {255, 0, 0, 128}}, {15, 15, kRed}}},
      {"of a mask within a mask",
       {below, outer, blue, paper},
       {{10, 15, {64, 191, 0}}, {15, 15, kRed}, {20, 15, {128, 127, 0}}}},
      {"layers blend with what is below",
       {below, masking(rectangle(10.5, 10, 10, 20, SketchJson::object())),
        rectangle(0, 0, 40, 40, filled({255, 0, 0, 128}))},
       {{15, 15, {128, 127, 0}}, {10, 15, {64, 191, 0}}}},
      {"a mask casts its shadow outside",
       {below, masking(rectangle(10.5, 10, 10, 20, shaded)), paper},
       {{25, 15, kRed}, {15, 15, kRed}, {31, 15, kGreen}}},
  });
}

SketchJson shapeGroup(const List& parts, int windingRule = 1) {
  SketchJson style = filled(kRed);
  style["windingRule"] = windingRule;
  return with(container("shapeGroup", frame(0, 0, 40, 40), parts), {{"style", style}});
}

TEST(LayerPainterTest, BooleanGroups) {
  const auto part = [](double x, int operation) {
    return with(layer("rectangle", frame(x, 0, 20, 40)), {{"booleanOperation", operation}});
  };
  // Left alone, both, right alone.
  const struct {
    int operation, rule;
    bool left, both, right;
  } cases[] = {{0, 1, true, true, true},  {1, 1, true, false, false}, {2, 1, false, true, false},
               {3, 1, true, false, true}, {-1, 1, true, false, true}, {-1, 0, true, true, true}};
  for (const auto& [operation, rule, left, both, right] : cases) {
    const auto expected = [](bool isFilled) { return isFilled ? kRed : kNothing; };
    expectColors(draw({shapeGroup({part(0, -1), part(10, operation)}, rule)}, 40, 40),
                 {{5, 20, expected(left)}, {15, 20, expected(both)}, {25, 20, expected(right)}},
                 qPrintable(QStringLiteral("operation %1").arg(operation)));
  }
}

/// A path whose sides cross nearly all of each other.
SketchJson star(int count, const SketchJson& style) {
  SketchJson points = SketchJson::array();
  for (int i = 0; i < count; ++i) {
    const double angle = 2 * std::numbers::pi * i * (count / 2) / count;
    const QPointF at(0.5 + 0.5 * std::cos(angle), 0.5 + 0.5 * std::sin(angle));
    points.push_back({{"point", stringFromPoint(at).toStdString()}});
  }
  return with(layer("shapePath", frame(0, 0, 40, 40), style),
              {{"isClosed", true}, {"points", points}});
}

/// Some of these would take the painter hours.
TEST(LayerPainterTest, OutlinesWithTooManyIntersections) {
  const auto combined = [](int teeth, int operation) {
    return shapeGroup(
        {comb(teeth, 40, true), with(comb(teeth, 40, false), {{"booleanOperation", operation}})},
        1);
  };
  SketchJson winding = bordered(2, 1, kRed);
  winding["windingRule"] = 0;
  SketchJson shadowed = bordered(1, 1, kRed);
  shadowed["shadows"] =
      SketchJson::array({{{"color", color(kBlue)}, {"blurRadius", 2}, {"spread", 1}}});
  const struct {
    const char* what;
    SketchJson layer;
    bool isTooMuch;
  } cases[] = {
      {"a union", combined(400, 0), true},
      {"a difference", combined(400, 1), true},
      {"an intersection", combined(400, 2), true},
      {"what is in one of them", combined(400, 3), true},
      {"fewer teeth", combined(40, 1), false},
      {"a border around what winds", star(2001, winding), true},
      {"the shadow of a border within", star(2001, shadowed), true},
      {"a smaller star", star(41, shadowed), false},
  };
  for (const auto& [what, layer, isTooMuch] : cases) {
    const Drawing drawing = draw({layer}, 40, 40);
    ASSERT_EQ(drawing.warnings.size(), isTooMuch ? 1 : 0) << what;
    if (!isTooMuch) continue;
    EXPECT_TRUE(drawing.warnings[0].contains(u"too often")) << what;
  }
}

TEST(LayerPainterTest, PlacesLayers) {
  const SketchJson corner = rectangle(0, 0, 10, 10, filled(kRed));
  const auto group = [&](const SketchJson& members) {
    return with(container("group", frame(10, 10, 20, 20), {corner}), members);
  };
  expectDrawn({
      {"in a group", {group({})}, {{10, 10, kRed}, {19, 19, kRed}, {20, 20, kNothing}}},
      {"flipped", {group({{"isFlippedHorizontal", true}})}, {{20, 10, kRed}, {10, 10, kNothing}}},
      {"upside down", {group({{"isFlippedVertical", true}})}, {{10, 20, kRed}, {10, 10, kNothing}}},
      {"a quarter turn counter-clockwise",
       {group({{"rotation", 90}})},
       {{10, 20, kRed}, {10, 10, kNothing}, {20, 10, kNothing}}},
      {"turned, then flipped",
       {group({{"rotation", 90}, {"isFlippedHorizontal", true}})},
       {{20, 20, kRed}, {10, 20, kNothing}}},
      {"hidden", {group({{"isVisible", false}})}, {{10, 10, kNothing}}},
      {"slices draw nothing",
       {layer("slice", frame(0, 0, 40, 40), filled(kRed))},
       {{5, 5, kNothing}}},
      {"cut at the artboard", {rectangle(-10, -10, 20, 20, filled(kRed))}, {{0, 0, kRed}}},
  });
}

SketchJson framed(int clipping, const SketchJson& style) {
  return with(container("group", frame(10, 10, 20, 20), {rectangle(-5, 5, 20, 10, filled(kRed))}),
              {{"groupBehavior", 1}, {"clippingBehavior", clipping}, {"style", style}});
}

TEST(LayerPainterTest, Frames) {
  SketchJson round = filled(kBlue);
  round["corners"] = {{"radii", {10, 0, 0, 0}}};
  expectDrawn({
      {"a ground, and what is in it cut",
       {framed(0, filled(kBlue))},
       {{9, 20, kNothing}, {10, 20, kRed}, {12, 12, kBlue}, {28, 20, kBlue}}},
      {"uncut", {framed(2, filled(kBlue))}, {{5, 20, kRed}, {12, 12, kBlue}}},
      {"a round corner",
       {framed(0, round)},
       {{11, 11, kNothing}, {28, 11, kBlue}, {15, 28, kBlue}}},
      {"a border over what is in it",
       {framed(0, bordered(1, 2, kGreen))},
       {{11, 20, kGreen}, {13, 20, kRed}, {28, 20, kGreen}, {25, 20, kNothing}}},
      {"a shadow of its ground",
       {framed(0, shadow("shadows", 0, 10, 0, 0, kGreen, filled(kBlue)))},
       {{12, 35, kGreen}, {12, 12, kBlue}}},
  });
}

TEST(LayerPainterTest, FramesOnAPageAreArtboards) {
  TinyDocument tiny;
  tiny.layers = {framed(0, filled(kBlue))};
  const SketchDocumentRef document = tiny.open();
  ASSERT_EQ(document->artboards().size(), 1);
  const ImageRef image =
      ArtboardRenderer(document).render(*document->artboards()[0], 1).value_or(nullptr);
  ASSERT_TRUE(image);
  EXPECT_EQ(image->pixels().size(), QSize(20, 20));
  expectColors({image->pixels(), {}}, {{0, 10, kRed}, {2, 2, kBlue}}, "a frame");
}

QByteArray png(const QImage& image) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  image.save(&buffer, "PNG");
  return bytes;
}

/// Left half red, right half blue, 20 by 10.
QByteArray twoHalves() {
  QImage image(20, 10, QImage::Format_ARGB32);
  image.fill(kRed);
  for (int y = 0; y < 10; ++y) {
    for (int x = 10; x < 20; ++x) image.setPixelColor(x, y, kBlue);
  }
  return png(image);
}

const SketchJson kImage = {{"_class", "MSJSONFileReference"},
                           {"_ref_class", "MSImageData"},
                           {"_ref", "images/halves.png"}};

TinyDocument withImage(const List& layers) {
  TinyDocument tiny;
  tiny.files[QStringLiteral("images/halves.png")] = twoHalves();
  tiny.layers = layers;
  return tiny;
}

TEST(LayerPainterTest, ImageFills) {
  const struct {
    int mode;
    double scale;
    QList<Probe> probes;
  } cases[] = {
      {0, 1, {{5, 5, kRed}, {15, 5, kBlue}, {25, 15, kRed}, {35, 35, kBlue}}},
      {0, 2, {{15, 15, kRed}, {35, 35, kBlue}}},
      {1, 1, {{2, 2, kRed}, {17, 38, kRed}, {22, 2, kBlue}, {38, 38, kBlue}}},
      {2, 1, {{2, 2, kRed}, {17, 38, kRed}, {38, 38, kBlue}}},
      {3, 1, {{2, 8, kNothing}, {2, 12, kRed}, {38, 28, kBlue}, {38, 32, kNothing}}},
  };
  for (const auto& [mode, scale, probes] : cases) {
    SketchJson paint = {{"fillType", 4}, {"patternFillType", mode}, {"patternTileScale", scale}};
    paint["image"] = kImage;
    SketchJson style;
    style["fills"] = SketchJson::array({paint});
    expectColors(drawDocument(withImage({rectangle(0, 0, 40, 40, style)}), 40, 40), probes,
                 qPrintable(QStringLiteral("mode %1").arg(mode)));
  }
}

/// Before frames, Sketch ignored the style of artboards and symbol masters.
TEST(LayerPainterTest, ArtboardStyles) {
  for (const auto& [version, color] : {std::pair{146, kNothing}, {168, kGreen}}) {
    for (const char* kind : {"artboard", "symbolMaster"}) {
      TinyDocument tiny;
      tiny.version = version;
      tiny.layers = {with(container(kind, frame(10, 10, 20, 20), {}),
                          {{"style", filled(kGreen)}, {"symbolID", "S"}})};
      expectColors(drawDocument(tiny, 40, 40), {{20, 20, color}, {5, 5, kNothing}}, kind);
      tiny.layers.push_back(
          with(layer("symbolInstance", frame(0, 0, 10, 10)), {{"symbolID", "S"}}));
      if (kind[0] == 's') expectColors(drawDocument(tiny, 40, 40), {{5, 5, color}}, "an instance");
    }
  }
}

TEST(LayerPainterTest, Bitmaps) {
  const SketchJson bitmap = with(layer("bitmap", frame(0, 10, 40, 20)), {{"image", kImage}});
  expectColors(drawDocument(withImage({bitmap}), 40, 40),
               {{5, 9, kNothing}, {5, 10, kRed}, {35, 29, kBlue}, {35, 30, kNothing}}, "a bitmap");
  const SketchJson cropped = with(bitmap, {{"clippingMask", "{{0.25, 0}, {0.5, 0.5}}"}});
  expectColors(drawDocument(withImage({cropped}), 40, 40),
               {{9, 15, kNothing}, {10, 15, kRed}, {29, 15, kBlue}, {15, 20, kNothing}}, "a part");
  const SketchJson tinted = with(bitmap, {{"style", filled({0, 255, 0, 102})}});
  TinyDocument holed = withImage({tinted});
  QImage hole(20, 10, QImage::Format_ARGB32);
  hole.fill(Qt::transparent);
  for (int y = 0; y < 10; ++y) {
    for (int x = 10; x < 20; ++x) hole.setPixelColor(x, y, kBlue);
  }
  holed.files[QStringLiteral("images/halves.png")] = png(hole);
  expectColors(drawDocument(holed, 40, 40), {{5, 20, kNothing}, {35, 20, {0, 102, 153}}},
               "fills tint only what is opaque");
  SketchJson lost = bitmap;
  lost["image"]["_ref"] = "images/lost.png";
  EXPECT_EQ(drawDocument(withImage({lost}), 40, 40).warnings.size(), 1);
}

/// The expected numbers by the spaces' primaries and the curve that both have.
TEST(LayerPainterTest, DisplayP3BecomesSRgb) {
  const QColor dull = QColor::fromRgbF(0.5f, 0.3f, 0.3f);
  TinyDocument tiny =
      withImage({rectangle(0, 0, 10, 10, filled(dull)), rectangle(10, 0, 10, 10, filled(Qt::white)),
                 rectangle(20, 0, 10, 10, filled(QColor(0, 255, 0, 128))),
                 with(layer("bitmap", frame(0, 10, 40, 20)), {{"image", kImage}})});
  tiny.document["colorSpace"] = 2;
  const Drawing drawing = drawDocument(tiny, 40, 40);
  const struct {
    QPoint at;
    QColor color;
  } probes[] = {{{5, 5}, QColor(136, 73, 75)},
                {{15, 5}, Qt::white},
                {{25, 5}, QColor(0, 255, 0, 128)},
                {{5, 20}, kRed},
                {{35, 20}, kBlue},
                {{20, 35}, kNothing}};
  for (const auto& [at, color] : probes) {
    const QColor got = drawing.image.pixelColor(at);
    for (const auto part : {&QColor::red, &QColor::green, &QColor::blue, &QColor::alpha}) {
      EXPECT_NEAR((got.*part)(), (color.*part)(), 2) << at.x() << ", " << at.y();
    }
  }
  EXPECT_EQ(drawing.warnings, QStringList());
}

/// Two fifths less light, of the image alone.
TEST(LayerPainterTest, AdjustsImageColors) {
  SketchJson style;
  style["colorControls"] = {{"isEnabled", true}, {"brightness", -0.4}, {"contrast", 1}};
  SketchJson bitmap = with(layer("bitmap", frame(0, 0, 40, 20), style), {{"image", kImage}});
  SketchJson paint = {{"fillType", 4}, {"patternFillType", 2}, {"image", kImage}};
  style["fills"] = SketchJson::array({paint});
  SketchJson plain = style;
  plain["fills"] = filled(kRed)["fills"];
  const QColor dark(153, 0, 0);
  expectColors(drawDocument(withImage({bitmap}), 40, 40), {{5, 10, dark}}, "a bitmap");
  expectColors(drawDocument(withImage({rectangle(0, 0, 40, 40, style)}), 40, 40),
               {{5, 10, dark}, {35, 10, {0, 0, 153}}}, "a fill with a image");
  expectColors(draw({rectangle(0, 0, 40, 40, plain)}, 40, 40), {{5, 10, kRed}}, "a plain fill");
}

/// A bar of 4 pixels' width, seen through a motion of 8 both ways: 4 of 17 pixels, across alone.
TEST(LayerPainterTest, MotionBlurFollowsItsAngle) {
  for (const int angle : {0, 90}) {
    SketchJson style = filled(kRed);
    style["blur"] = {{"isEnabled", true}, {"type", 1}, {"radius", 8}, {"motionAngle", angle}};
    const bool isAcross = angle == 0;
    const Drawing drawing =
        draw({isAcross ? rectangle(18, 0, 4, 40, style) : rectangle(0, 18, 40, 4, style)}, 40, 40);
    const auto alphaAt = [&](int along) {
      return isAcross ? drawing.at(along, 20).alpha() : drawing.at(20, along).alpha();
    };
    EXPECT_NEAR(alphaAt(20), 255 * 4 / 17, 2) << angle;
    EXPECT_NEAR(alphaAt(13), 255 * 4 / 17, 2) << angle;
    EXPECT_EQ(alphaAt(9), 0) << angle;
    EXPECT_EQ(alphaAt(30), 0) << angle;
  }
  SketchJson style = filled(kRed);
  style["blur"] = {{"isEnabled", true}, {"type", 1}, {"radius", 8}, {"motionAngle", 45}};
  const Drawing turned = draw({rectangle(18, 18, 4, 4, style)}, 40, 40);
  EXPECT_GT(turned.at(24, 15).alpha(), 0) << "counter-clockwise";
  EXPECT_EQ(turned.at(24, 24).alpha(), 0);
}

/// What one blur brings into sight, the next one spreads: no matter where the image ends.
TEST(LayerPainterTest, AppliesBlursInSequence) {
  SketchJson style = filled(kRed);
  style["blurs"] = SketchJson::array(
      {{{"type", 1}, {"radius", 8}, {"motionAngle", 0}}, {{"type", 0}, {"radius", 2}}});
  const Drawing whole = draw({rectangle(16, 10, 4, 20, style)}, 60, 40);
  const Drawing cut = draw({rectangle(-4, 10, 4, 20, style)}, 40, 40);
  EXPECT_GT(cut.at(0, 20).alpha(), 20);
  for (int x = 0; x < 20; ++x) EXPECT_NEAR(cut.at(x, 20).alpha(), whole.at(x + 20, 20).alpha(), 1);
}

/// Grains over half of the black below, brighter on the whole.
TEST(LayerPainterTest, NoiseHasGrains) {
  SketchJson style;
  style["fills"] = SketchJson::array(
      {fill(Qt::black), {{"fillType", 5}, {"noiseIndex", 2}, {"noiseIntensity", 0.5}}});
  const Drawing drawing = draw({rectangle(0, 0, 100, 100, style)}, 100, 100);
  double sum = 0;
  int darkest = 255, lightest = 0;
  for (int y = 0; y < 100; ++y) {
    for (int x = 0; x < 100; ++x) {
      const int gray = drawing.at(x, y).green();
      sum += gray;
      darkest = std::min(darkest, gray);
      lightest = std::max(lightest, gray);
    }
  }
  EXPECT_NEAR(sum / 10'000, 64, 2);
  EXPECT_LT(darkest, 3);
  EXPECT_GT(lightest, 124);
}

TEST(LayerPainterTest, BlurExtendsLayer) {
  SketchJson style = filled(kRed);
  style["blur"] = {{"isEnabled", true}, {"type", 0}, {"radius", 3}};
  const Drawing drawing = draw({rectangle(-40, 0, 60, 40, style)}, 40, 40);
  EXPECT_NEAR(drawing.at(19, 20).alpha(), 255 * 0.566, 4);  // Half a pixel within the edge.
  EXPECT_NEAR(drawing.at(22, 20).alpha(), 255 * 0.202, 4);
}

SketchJson instance(const List& overrides, const SketchJson& members = SketchJson::object()) {
  return with(with(layer("symbolInstance", frame(0, 0, 20, 20)),
                   {{"symbolID", "S"}, {"overrideValues", overrides}}),
              members);
}

SketchJson change(const char* name, const SketchJson& value) {
  return {{"_class", "overrideValue"}, {"overrideName", name}, {"value", value}};
}

/// Masters off the artboard: S holds a bar B at its left and an instance N of T; T is a square Q in
/// its lower right; U is all green.
TinyDocument withSymbols(const List& layers) {
  const auto master = [](const char* id, const List& layers) {
    return with(container("symbolMaster", frame(1000, 0, 20, 20), layers), {{"symbolID", id}});
  };
  const SketchJson bar = with(rectangle(0, 0, 5, 20, filled(kRed)),
                              {{"do_objectID", "B"}, {"resizingConstraint", 63 & ~(4 | 2)}});
  const SketchJson square = with(rectangle(10, 10, 10, 10, filled(kBlue)), {{"do_objectID", "Q"}});
  const SketchJson nested =
      with(layer("symbolInstance", frame(0, 0, 20, 20)), {{"symbolID", "T"}, {"do_objectID", "N"}});
  TinyDocument tiny = withImage({master("S", {bar, nested}), master("T", {square}),
                                 master("U", {rectangle(0, 0, 20, 20, filled(kGreen))}),
                                 master("Self", {instance({}, {{"symbolID", "Self"}})})});
  SketchJson shared = {{"do_objectID", "STYLE"}};
  shared["value"] = filled(kGreen);
  tiny.document["layerStyles"]["objects"].push_back(shared);
  for (const SketchJson& layer : layers) tiny.layers.push_back(layer);
  return tiny;
}

/// Draws only the layers after the masters.
Drawing drawInstances(const List& layers) {
  TinyDocument tiny = withSymbols({});
  tiny.layers.push_back(container("artboard", frame(0, 0, 40, 40), layers));
  const SketchDocumentRef document = tiny.open();
  ArtboardRenderer renderer(document);
  const ImageRef image = renderer.render(*document->artboards().last(), 1).value_or(nullptr);
  EXPECT_TRUE(image);
  return {image ? image->pixels() : QImage(), renderer.warnings()};
}

TEST(LayerPainterTest, SymbolInstances) {
  const std::vector<Case> cases = {
      {"as the master",
       {instance({})},
       {{2, 5, kRed}, {7, 5, kNothing}, {15, 15, kBlue}, {15, 5, kNothing}}},
      {"another symbol within", {instance({change("N_symbolID", "U")})}, {{15, 5, kGreen}}},
      {"no symbol within", {instance({change("N_symbolID", "")})}, {{15, 15, kNothing}}},
      {"a layer's style", {instance({change("B_layerStyle", "STYLE")})}, {{2, 5, kGreen}}},
      {"a style in a nested instance",
       {instance({change("N/Q_layerStyle", "STYLE")})},
       {{15, 15, kGreen}, {2, 5, kRed}}},
      {"a color", {instance({change("B_color:fill-0", color(kGreen))})}, {{2, 5, kGreen}}},
      {"a tint", {instance({change("N_color:tint", color(kGreen))})}, {{15, 15, kGreen}}},
      {"the old form",
       {with(instance({}), {{"overrides", {{"0", {{"N", {{"symbolID", "U"}}}}}}}})},
       {{15, 5, kGreen}}},
      {"resized",
       {instance({}, {{"frame", frame(0, 0, 40, 40)}})},
       {{4, 35, kRed}, {6, 35, kNothing}, {19, 30, kNothing}, {20, 20, kBlue}, {39, 39, kBlue}}},
      {"enlarged",
       {instance({}, {{"frame", frame(0, 0, 40, 40)}, {"scale", 2}})},
       {{9, 35, kRed}, {11, 15, kNothing}, {39, 39, kBlue}}},
  };
  for (const Case& c : cases) expectColors(drawInstances(c.layers), c.probes, c.what);
}

SketchJson laidOut(const SketchJson& container, int axis, int anchor = 0) {
  return with(
      container,
      {{"groupLayout",
        {{"_class", "MSImmutableInferredGroupLayout"}, {"axis", axis}, {"layoutAnchor", anchor}}}});
}

Drawing drawInstance(const List& masters, const SketchJson& instance, double width) {
  TinyDocument tiny;
  tiny.layers = masters;
  tiny.layers.push_back(container("artboard", frame(0, 0, width, 20), {instance}));
  const SketchDocumentRef document = tiny.open();
  ArtboardRenderer renderer(document);
  const ImageRef image = renderer.render(*document->artboards().last(), 1).value_or(nullptr);
  EXPECT_TRUE(image);
  return {image ? image->pixels() : QImage(), renderer.warnings()};
}

/// A hidden layer's place, and the gap behind it, go to what comes after.
TEST(LayerPainterTest, SymbolsWithSmartLayout) {
  const auto piece = [](const char* id, double x, const QColor& c) {
    return with(rectangle(x, 5, 10, 10, filled(c)), {{"do_objectID", id}});
  };
  const List pieces = {rectangle(0, 0, 60, 20, filled(kRed)), piece("A", 5, kGreen),
                       piece("B", 25, kBlue), piece("C", 45, kGreen)};
  const auto master = [](const char* id, const SketchJson& frame, const List& layers) {
    return with(container("symbolMaster", frame, layers), {{"symbolID", id}});
  };
  const SketchJson self = laidOut(master("S", frame(1000, 0, 60, 20), pieces), 0);
  const SketchJson hidden = change("A_isVisible", false);
  const QList<Probe> closed = {{2, 10, kRed},    {6, 10, kBlue}, {14, 10, kBlue},   {20, 10, kRed},
                               {26, 10, kGreen}, {38, 10, kRed}, {41, 10, kNothing}};
  const SketchJson narrow = instance({hidden}, {{"frame", frame(0, 0, 40, 20)}});
  expectColors(drawInstance({self}, narrow, 60), closed, "a layout");
  const SketchJson said = instance({change("A_isVisible", "0")}, {{"frame", frame(0, 0, 40, 20)}});
  expectColors(drawInstance({self}, said, 60), closed, "a layout, in other words");

  // In a group of a master without a layout, from the left, the middle and the right.
  for (const int anchor : {0, 1, 2}) {
    const SketchJson group = laidOut(container("group", frame(0, 0, 60, 20), pieces), 0, anchor);
    const SketchJson outer = master("S", frame(1000, 0, 60, 20), {group});
    QList<Probe> moved = closed;
    for (Probe& probe : moved) probe.x += 10 * anchor;
    expectColors(drawInstance({outer}, instance({hidden}, {{"frame", frame(0, 0, 60, 20)}}), 80),
                 moved, "a group's layout");
  }

  // A nested instance that grows narrower takes what comes after it along.
  const SketchJson nested =
      with(layer("symbolInstance", frame(0, 0, 60, 20)), {{"symbolID", "S"}, {"do_objectID", "N"}});
  const SketchJson row =
      laidOut(master("R", frame(2000, 0, 80, 20), {nested, piece("D", 65, kGreen)}), 0);
  QList<Probe> shifted = closed;
  shifted.last() = {46, 10, kGreen};
  expectColors(drawInstance({self, row},
                            instance({change("N/A_isVisible", false)},
                                     {{"symbolID", "R"}, {"frame", frame(0, 0, 60, 20)}}),
                            80),
               shifted, "a nested layout");
}

TEST(LayerPainterTest, SymbolsThatCannotBeDrawn) {
  for (const char* id : {"Self", "lost"}) {
    EXPECT_EQ(drawInstances({instance({}, {{"symbolID", id}})}).warnings.size(), 1) << id;
  }
}

TEST(LayerPainterTest, GroupFillsTintContents) {
  const SketchJson across =
      gradient(0, "{0, 0}", "{1, 0}", {stop(0, kRed), stop(1, {0, 0, 255, 0})});
  expectDrawn(
      {{"a gradient",
        {with(container("group", frame(0, 0, 40, 40), {rectangle(0, 0, 40, 20, filled(kGreen))}),
              {{"style", across}})},
        {{0, 10, {252, 3, 0}}, {20, 10, {62, 131, 62}}, {39, 10, kGreen}, {20, 30, kNothing}}}});
}

TEST(LayerPainterTest, GroupTintsDependOnDocumentVersion) {
  for (const auto& [version, expected] : {std::pair{112, kRed}, {130, kBlue}}) {
    TinyDocument tiny;
    tiny.version = version;
    tiny.layers = {
        with(container("group", frame(0, 0, 40, 40), {rectangle(0, 0, 20, 40, filled(kRed))}),
             {{"style", filled(kBlue)}})};
    expectColors(drawDocument(tiny, 40, 40), {{10, 10, expected}, {30, 10, kNothing}}, "a tint");
  }
}

TEST(LayerPainterTest, NamesUnsupportedFeatures) {
  SketchJson noisy;
  noisy["fills"] = SketchJson::array({{{"fillType", 5}, {"noiseIntensity", 0.5}}});
  SketchJson zooming = filled(kRed);
  zooming["blur"] = {{"isEnabled", true}, {"type", 2}, {"radius", 3}, {"center", "{0.5, 0.5}"}};
  for (const SketchJson& layer : {rectangle(0, 0, 10, 10, noisy), rectangle(0, 0, 10, 10, zooming),
                                  kelvar::render::layer("hologram", frame(0, 0, 10, 10)),
                                  rectangle(1e300, 0, 10, 10, filled(kRed))}) {
    EXPECT_EQ(draw({layer}, 40, 40).warnings.size(), 1) << layer.dump();
  }
  EXPECT_EQ(drawInstances({instance({change("B_layerStyle", "LOST")})}).warnings.size(), 1);
  EXPECT_EQ(drawInstances({instance({change("B_volume", "11")})}).warnings.size(), 1);
  EXPECT_EQ(drawInstances({instance({change("B_textLetterSpacing", "inf")})}).warnings.size(), 1);
  EXPECT_EQ(drawInstances({instance({}, {{"verticalSpacing", 4}})}).warnings.size(), 1);
  EXPECT_EQ(drawInstances({instance({change("B_flowDestination", "back")})}).warnings.size(), 0);
}

/// A green heart of 20, in a text at (10, 10) that has nothing else, at both sizes.
TEST(LayerPainterTest, DrawsColoredEmoji) {
  {
    const OffscreenGuiApplication fonts;
    if (!QFontDatabase::hasFamily(QStringLiteral("Noto Color Emoji"))) GTEST_SKIP() << "no emoji";
  }
  SketchJson text = with(layer("text", frame(10, 10, 25, 24)),
                         {{"textBehaviour", 1}, {"lineSpacingBehaviour", 2}});
  text["attributedString"]["string"] = "\xF0\x9F\x92\x9A";
  text["attributedString"]["attributes"] = List{{{"location", 0}, {"length", 2}}};
  SketchJson& attributes = text["attributedString"]["attributes"][0]["attributes"];
  attributes["MSAttributedStringFontAttribute"]["attributes"] = {{"name", "Roboto-Regular"},
                                                                 {"size", 20}};
  TinyDocument tiny;
  tiny.layers = {text};
  for (const int scale : {1, 3}) {
    const Drawing drawing = drawDocument(tiny, 50, 50, scale);
    QRect covered;
    int green = 0, all = 0;
    for (int y = 0; y < drawing.image.height(); ++y) {
      for (int x = 0; x < drawing.image.width(); ++x) {
        const QColor c = drawing.at(x, y);
        if (c.alpha() < 128) continue;
        covered |= QRect(x, y, 1, 1);
        all += 1;
        green += c.green() > c.red() + 40 && c.green() > c.blue() + 40 ? 1 : 0;
      }
    }
    EXPECT_GT(green, 0.8 * all);
    EXPECT_NEAR(covered.width(), 22 * scale, 4 * scale);
    EXPECT_NEAR(covered.center().x(), 22 * scale, 3 * scale);
    EXPECT_NEAR(covered.center().y(), 21 * scale, 4 * scale);
    EXPECT_EQ(drawing.warnings, QStringList());
  }
  const Drawing inSRgb = drawDocument(tiny, 50, 50);
  tiny.document["colorSpace"] = 2;
  const Drawing inDisplayP3 = drawDocument(tiny, 50, 50);
  ASSERT_EQ(inSRgb.at(21, 20).alpha(), 255);
  for (int y = 10; y < 34; ++y) {
    if (inSRgb.at(21, y).alpha() < 255) continue;
    EXPECT_NEAR(inDisplayP3.at(21, y).green(), inSRgb.at(21, y).green(), 3) << y;
    EXPECT_NEAR(inDisplayP3.at(21, y).red(), inSRgb.at(21, y).red(), 3) << y;
  }
}

/// Black, in Roboto of 12.
SketchJson text(const char* string, const SketchJson& members, const SketchJson& axes) {
  SketchJson run = {{"_class", "stringAttribute"}, {"location", 0}};
  run["length"] = QString::fromUtf8(string).size();
  SketchJson& font = run["attributes"]["MSAttributedStringFontAttribute"]["attributes"];
  font = {{"name", "Roboto-Regular"}, {"size", 12}};
  if (axes.is_object()) font["variation"] = axes;
  SketchJson layer = kelvar::render::layer("text", frame(0, 0, 40, 20));
  layer["attributedString"] = {{"_class", "attributedString"}, {"string", string}};
  layer["attributedString"]["attributes"] = SketchJson::array({run});
  return with(layer, members);
}

/// Upwards along a line at the right, from the middle of it, as its frame lies nearest to that.
TEST(LayerPainterTest, TextFollowsShapeBelowIt) {
  SketchJson line = layer("shapePath", frame(60, 0, 1, 80));
  line["isClosed"] = false;
  line["points"] = parts::points({{0, 1, 0}, {0, 0, 0}});
  const SketchJson along = text(
      "HHHHH", {{"automaticallyDrawOnUnderlyingPath", true}, {"frame", frame(0, 26, 40, 20)}}, {});
  const SketchJson seeThrough =
      with(along, {{"style", {{"contextSettings", {{"opacity", 0.99}, {"blendMode", 0}}}}}});
  const SketchJson farOff = with(seeThrough, {{"frame", frame(-500, 26, 40, 20)}});
  for (const SketchJson& drawn :
       {along, seeThrough, farOff, with(along, {{"hasClippingMask", true}})}) {
    const Drawing drawing = draw({line, drawn}, 80, 80);
    QRect ink;
    for (int y = 0; y < 80; ++y) {
      for (int x = 0; x < 80; ++x) {
        if (drawing.at(x, y).alpha() > 64) ink |= QRect(x, y, 1, 1);
      }
    }
    EXPECT_NEAR(ink.left(), 60 - 9, 1);  // A capital's height.
    EXPECT_EQ(ink.right(), 59);
    EXPECT_NEAR(ink.bottom(), 37, 2);
    EXPECT_NEAR(ink.top(), 3, 2);  // The last letter would pass the end.
    EXPECT_EQ(drawing.warnings.size(), 1) << qPrintable(drawing.warnings.join(u'\n'));
  }
}

TEST(LayerPainterTest, NamesUnsupportedTextFeatures) {
  const struct {
    SketchJson layer;
    int warnings;
  } cases[] = {
      {text("ab", {{"textBehaviour", 1}}, {}), 0},
      {text("ab", {{"automaticallyDrawOnUnderlyingPath", true}}, {}), 1},
      {text("ab", {{"textBehaviour", 1}}, {{"2003265652", 700}}), 0},
      {text("ab", {{"textBehaviour", 1}}, {{"2003265652", 700}, {"1128354636", 1}}), 1},
      {text("\xF3\xBF\xBF\xBD", {{"textBehaviour", 1}}, {}), 1},  // In no font.
  };
  for (const auto& [layer, warnings] : cases) {
    EXPECT_EQ(draw({layer}, 40, 40).warnings.size(), warnings) << layer.dump();
  }
}

}  // namespace
}  // namespace kelvar::render
