#include "sketch/render/ArtboardRenderer.h"

#include <gtest/gtest.h>

#include <QDir>
#include <chrono>
#include <thread>

#include "sketch/render/TinyDocument.h"

namespace kelvar {
namespace {

using render::container;
using render::filled;
using render::frame;
using render::rectangle;
using render::TinyDocument;
using render::with;

SketchJson shadowed(double y, double blurRadius) {
  SketchJson shadow = {{"color", render::color(Qt::black)}, {"blurRadius", blurRadius}};
  shadow["offsetX"] = 0;
  shadow["offsetY"] = y;
  SketchJson style = filled(Qt::red);
  style["shadows"] = SketchJson::array({shadow});
  return style;
}

QImage preview(const TinyDocument& tiny) {
  ArtboardRenderer renderer(tiny.open());
  const auto image = renderer.renderPreview();
  return image ? (*image)->pixels() : QImage();
}

TEST(ArtboardRendererTest, PreviewBoundsMatchSketch) {
  const SketchJson card = rectangle(100, 50, 40, 20, shadowed(3, 5));
  const SketchJson mask =
      with(rectangle(0, 0, 10, 10, filled(Qt::red)), {{"hasClippingMask", true}});
  const struct {
    const char* what;
    int version;
    render::List layers;
    QSize size;
  } cases[] = {
      {"a shadow to its blur", 130, {card}, {50, 30}},
      {"in old documents to twice that", 101, {card}, {60, 40}},
      {"hidden layers not",
       130,
       {card, with(card, {{"isVisible", false}, {"frame", frame(0, 0, 1, 1)}})},
       {50, 30}},
      {"an artboard is its frame",
       130,
       {container("artboard", frame(7, 7, 30, 31), {card})},
       {30, 31}},
      {"and one unit more for lost digits",
       130,
       {container("artboard", frame(7, -5.7e-14, 30, 31), {card})},
       {30, 32}},
      {"content reaches out of a symbol master",
       130,
       {container("symbolMaster", frame(7, 7, 20, 20),
                  {rectangle(-5, 10, 60, 30, filled(Qt::red))})},
       {60, 40}},
      {"unless that is cut",
       130,
       {with(container("symbolMaster", frame(7, 7, 20, 20),
                       {rectangle(-5, 0, 60, 30, filled(Qt::red))}),
             {{"clippingBehavior", 1}})},
       {20, 20}},
      {"what a mask cuts off not",
       130,
       {container("group", frame(0, 0, 10, 10), {mask, rectangle(0, 0, 99, 99, filled(Qt::red))})},
       {10, 10}},
      {"what is long is scaled down",
       130,
       {rectangle(0, 0, 4096, 100, filled(Qt::red))},
       {2048, 50}},
  };
  for (const auto& [what, version, layers, size] : cases) {
    TinyDocument tiny;
    tiny.version = version;
    tiny.layers = layers;
    const QImage image = preview(tiny);
    EXPECT_EQ(image.size(), size) << what;
    EXPECT_EQ(qAlpha(image.pixel(0, 0)), 255) << what;
  }
}

/// A page of 4099.6 by 1001.8 units, not on whole units, with an artboard in its upper left corner.
TEST(ArtboardRendererTest, PreviewsAreMadeAsBySketchVersion) {
  const SketchJson artboard =
      with(container("artboard", frame(10.4, 20.2, 300, 200), {}),
           {{"hasBackgroundColor", true}, {"backgroundColor", render::color(Qt::blue)}});
  const SketchJson unexported = with(artboard, {{"includeBackgroundColorInExport", false}});
  const SketchJson far = rectangle(4000, 1000, 110, 22, filled(Qt::red));
  const struct {
    const char* appVersion;
    SketchJson artboard;
    QSize size;
    QRgb corner;
  } cases[] = {
      {"90.1", artboard, {2048, 500}, 0xff0000ff}, {"90.1", unexported, {2048, 500}, 0xffffffff},
      {"91", artboard, {1024, 250}, 0xff0000ff},   {"92", unexported, {1024, 250}, 0xff0000ff},
      {"95.3", artboard, {300, 200}, 0xff0000ff},  {"2025.1.3", unexported, {300, 200}, 0}};
  for (const auto& [appVersion, first, size, corner] : cases) {
    TinyDocument tiny;
    tiny.appVersion = appVersion;
    tiny.layers = {first, far};
    const QImage image = preview(tiny);
    EXPECT_EQ(image.size(), size) << appVersion;
    EXPECT_EQ(image.pixel(0, 0), corner) << appVersion;
  }
}

TEST(ArtboardRendererTest, BoundsIncludeWhatReachesOutOfInstances) {
  for (const bool clips : {false, true}) {
    TinyDocument tiny;
    const SketchJson master =
        with(container("symbolMaster", frame(500, 0, 20, 20),
                       {rectangle(-5, 10, 60, 30, filled(Qt::red))}),
             {{"symbolID", "S"}, {"clippingBehavior", clips ? 1 : 0}, {"isVisible", false}});
    tiny.layers = {master,
                   with(render::layer("symbolInstance", frame(0, 0, 20, 20)), {{"symbolID", "S"}})};
    EXPECT_EQ(preview(tiny).size(), clips ? QSize(20, 20) : QSize(60, 40));
  }
}

TEST(ArtboardRendererTest, ExportsBackgroundIfArtboardSaysSo) {
  for (const auto& [has, exported, expected] :
       {std::tuple{true, true, 0xff0000ffu}, {true, false, 0u}, {false, true, 0u}}) {
    TinyDocument tiny;
    tiny.layers = {with(container("artboard", frame(9, 9, 10, 10), {}),
                        {{"hasBackgroundColor", has},
                         {"includeBackgroundColorInExport", exported},
                         {"backgroundColor", render::color(Qt::blue)}})};
    const SketchDocumentRef document = tiny.open();
    const ImageRef image =
        ArtboardRenderer(document).render(*document->artboards()[0], 2).value_or(nullptr);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->pixels().size(), QSize(20, 20));
    EXPECT_EQ(image->size(), QSizeF(10, 10));
    EXPECT_EQ(image->pixels().pixel(5, 5), expected);
  }
}

TEST(ArtboardRendererTest, OmitsImagesOfExcludedLayers) {
  SketchJson paint = {{"fillType", 4}, {"patternFillType", 2}};
  paint["image"] = {{"_class", "MSJSONFileReference"}, {"_ref", "images/missing.png"}};
  SketchJson style = filled(Qt::blue);
  style["fills"].push_back(paint);
  TinyDocument tiny;
  tiny.layers = {container("artboard", frame(0, 0, 10, 10),
                           {with(rectangle(0, 0, 10, 10, style), {{"do_objectID", "X"}})})};
  const SketchDocumentRef document = tiny.open();
  for (const bool excluded : {false, true}) {
    ArtboardRenderer renderer(document);
    if (excluded) renderer.setWithoutImages({QStringLiteral("X")});
    const ImageRef image = renderer.render(*document->artboards()[0], 1).value_or(nullptr);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->pixels().pixel(5, 5), 0xff0000ff);
    EXPECT_EQ(renderer.warnings().isEmpty(), excluded);
  }
}

TEST(ArtboardRendererTest, RejectsOversizedOutput) {
  for (const auto& [width, height, scale] :
       {std::tuple{1e9, 10.0, 1.0}, {10.0, 10.0, 1e6}, {0.0, 10.0, 1.0}, {-5.0, 10.0, 1.0}}) {
    TinyDocument tiny;
    tiny.layers = {container("artboard", frame(0, 0, width, height), {})};
    const SketchDocumentRef document = tiny.open();
    const auto image = ArtboardRenderer(document).render(*document->artboards()[0], scale);
    ASSERT_FALSE(image);
    EXPECT_FALSE(image.error().message.empty());
  }
}

/// Each master holds the one before it ten times.
TEST(ArtboardRendererTest, LimitsSymbolExpansion) {
  TinyDocument tiny;
  for (int i = 0; i < 9; ++i) {
    const SketchJson instance =
        with(render::layer("symbolInstance", frame(0, 0, 10, 10)),
             {{"symbolID", std::to_string(i - 1)},
              {"style", {{"contextSettings", {{"opacity", 0.5}, {"blendMode", 0}}}}}});
    tiny.layers.push_back(
        with(container("symbolMaster", frame(0, 0, 10, 10), render::List(10, instance)),
             {{"symbolID", std::to_string(i)}}));
  }
  const SketchDocumentRef document = tiny.open();
  ArtboardRenderer renderer(document);
  EXPECT_TRUE(renderer.render(*document->artboards().last(), 1));
  EXPECT_FALSE(renderer.warnings().isEmpty());
}

SketchJson master(const std::string& symbolID, const render::List& layers) {
  return with(container("symbolMaster", frame(0, 0, 10, 10), layers), {{"symbolID", symbolID}});
}

SketchJson instance(const std::string& symbolID, const SketchJson& more = SketchJson::object()) {
  return with(with(render::layer("symbolInstance", frame(0, 0, 10, 10)),
                   {{"symbolID", symbolID}, {"do_objectID", "of " + symbolID}}),
              more);
}

TEST(ArtboardRendererTest, RecursiveAndDeepSymbolsTerminate) {
  const SketchJson red = rectangle(0, 0, 10, 10, filled(Qt::red));
  const SketchJson override = SketchJson::array(
      {{{"_class", "overrideValue"}, {"overrideName", "of plain_symbolID"}, {"value", "a"}}});
  render::List chain{master("0", {red, instance("1")})};
  for (int i = 1; i < 2000; ++i) {
    chain.push_back(master(std::to_string(i), {instance(std::to_string(i + 1))}));
  }
  const SketchJson mask = with(red, {{"hasClippingMask", true}, {"clippingMaskMode", 1}});
  const struct {
    const char* what;
    render::List layers;
    const char* warning;
  } cases[] = {
      {"itself", {master("a", {red, instance("a")})}, "contains itself"},
      {"a circle",
       {master("a", {red, instance("b")}), master("b", {instance("c")}),
        master("c", {instance("a")})},
       "contains itself"},
      {"through an override",
       {master("a", {red, instance("b", {{"overrideValues", override}})}),
        master("b", {instance("plain")}), master("plain", {})},
       "contains itself"},
      {"a chain", chain, "nested too deep"},
      {"masks in masks",
       {container("artboard", frame(0, 0, 10, 10), render::List(2000, mask))},
       "nested too deep"},
  };
  for (const auto& [what, layers, warning] : cases) {
    TinyDocument tiny;
    tiny.layers = layers;
    const SketchDocumentRef document = tiny.open();
    ArtboardRenderer renderer(document);
    const ImageRef image = renderer.render(*document->artboards()[0], 1).value_or(nullptr);
    ASSERT_TRUE(image) << what;
    EXPECT_EQ(image->pixels().pixel(5, 5), 0xffff0000) << what;
    ASSERT_EQ(renderer.warnings().size(), 1) << what;
    EXPECT_TRUE(renderer.warnings()[0].contains(QLatin1String(warning))) << what;
  }
}

SketchJson styled(const char* list, const SketchJson& part) {
  SketchJson style = filled(Qt::red);
  style[list] = render::List(5'000, part);
  return style;
}

/// Each of these would take many minutes.
TEST(ArtboardRendererTest, CanBeCanceledMidway) {
  const SketchJson black = render::color(Qt::black);
  SketchJson angular = {{"fillType", 1}};
  angular["gradient"] = {{"gradientType", 2},
                         {"from", "{0.5, 0.5}"},
                         {"to", "{1, 0.5}"},
                         {"stops", render::List(2, {{"position", 0.5}, {"color", black}})}};
  const SketchJson shadow = {{"color", black}, {"blurRadius", 40}};
  const SketchJson border = {{"color", black}, {"thickness", 30}, {"position", 2}};
  const SketchJson part = with(render::comb(60, 500, true), {{"booleanOperation", 0}});
  render::List parts(1000, part);
  for (size_t i = 0; i < parts.size(); i += 2) parts[i]["rotation"] = 90;
  render::List masters;
  for (int i = 0; i < 9; ++i) {
    masters.push_back(master(std::to_string(i), render::List(20, instance(std::to_string(i - 1)))));
    masters.back()["layers"].push_back(rectangle(0, 0, 500, 500, styled("shadows", shadow)));
  }
  const auto board = [](const render::List& layers) {
    return render::List{container("artboard", frame(0, 0, 500, 500), layers)};
  };
  const auto square = [](const SketchJson& style) { return rectangle(0, 0, 500, 500, style); };
  const struct {
    const char* what;
    render::List layers;
  } cases[] = {
      {"fills", board({square(styled("fills", angular))})},
      {"shadows", board({square(styled("shadows", shadow))})},
      {"inner shadows", board({square(styled("innerShadows", shadow))})},
      {"borders",
       board({with(render::comb(300, 500, true), {{"style", styled("borders", border)}})})},
      {"layers", board(render::List(5'000, square(shadowed(0, 40))))},
      {"shapes in a group", board({with(container("shapeGroup", frame(0, 0, 500, 500), parts),
                                        {{"style", filled(Qt::red)}})})},
      {"one fill of many sides",
       board({with(render::comb(4'000, 500, false), {{"style", filled(Qt::red)}})})},
      {"symbols", masters},
  };
  for (const auto& [what, layers] : cases) {
    TinyDocument tiny;
    tiny.layers = layers;
    const SketchDocumentRef document = tiny.open();
    ArtboardRenderer renderer(document);
    std::stop_source stop;
    renderer.setStop(stop.get_token());
    const std::jthread stopper([&] {
      std::this_thread::sleep_for(std::chrono::milliseconds(100));
      stop.request_stop();
    });
    const auto begin = std::chrono::steady_clock::now();
    const auto image = renderer.render(*document->artboards().last(), 3);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(60)) << what;
    ASSERT_FALSE(image) << what;
    EXPECT_EQ(image.error().kind, Error::Kind::Stopped) << what;
  }
}

TEST(ArtboardRendererTest, LimitsWarningsToOneHundred) {
  render::List lost;
  for (int i = 0; i < 20000; ++i) {
    lost.push_back(with(rectangle(1e300, 0, 1, 1, filled(Qt::red)), {{"name", std::to_string(i)}}));
  }
  TinyDocument tiny;
  tiny.layers = {container("artboard", frame(0, 0, 10, 10), lost)};
  const SketchDocumentRef document = tiny.open();
  ArtboardRenderer renderer(document);
  EXPECT_TRUE(renderer.render(*document->artboards()[0], 1));
  EXPECT_EQ(renderer.warnings().size(), 101);
}

}  // namespace
}  // namespace kelvar
