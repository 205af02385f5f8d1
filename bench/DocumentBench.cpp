// Opens a Sketch document of 50 MB, once as uncompressed JSON and once as images; saves one; and
// draws an artboard with a thousand layers.

#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <nlohmann/json.hpp>

#include "platform/files/ZipArchive.h"
#include "sketch/document/SketchDocument.h"
#include "sketch/render/ArtboardRenderer.h"

namespace {

using kelvar::ArtboardRenderer;
using kelvar::SketchDocument;
using kelvar::ZipArchive;
using Json = nlohmann::ordered_json;

constexpr qsizetype kBytes = 50'000'000;

/// A rectangle as current documents have it, with one fill.
constexpr const char* kLayer =
    R"({"_class":"rectangle","do_objectID":"5A32F17D-D8C1-4224-8905-B4E4EC3A2BC5",)"
    R"("booleanOperation":-1,"isFixedToViewport":false,"isFlippedHorizontal":false,)"
    R"("isFlippedVertical":false,"isLocked":false,"isVisible":true,"layerListExpandedType":0,)"
    R"("name":"Background","nameIsFixed":true,"resizingConstraint":63,"resizingType":0,)"
    R"("rotation":0,"shouldBreakMaskChain":false,"frame":{"_class":"rect",)"
    R"("constrainProportions":false,"height":40.5,"width":200.3333333333333,"x":0,"y":12.25},)"
    R"("style":{"_class":"style","endMarkerType":0,"miterLimit":10,"startMarkerType":0,)"
    R"("windingRule":1,"fills":[{"_class":"fill","isEnabled":true,"fillType":0,"color":)"
    R"({"_class":"color","alpha":1,"blue":0.5333333333333334,"green":0.5882352941176471,)"
    R"("red":0.1},"noiseIndex":0,"noiseIntensity":0,"patternFillType":0,"patternTileScale":1}]},)"
    R"("edited":false,"isClosed":true,"pointRadiusBehaviour":1,"fixedRadius":8})";

QByteArray packed(qsizetype jsonBytes, qsizetype imageBytes) {
  QByteArray layers = kLayer;
  const qsizetype count = jsonBytes / (layers.size() + 1);
  layers = ("," + layers).repeated(count).sliced(1);
  std::map<QString, QByteArray> files{
      {QStringLiteral("document.json"), R"({"pages":[{"_ref":"pages/one"}]})"},
      {QStringLiteral("pages/one.json"), R"({"_class":"page","layers":[)" + layers + "]}"}};
  uint32_t noise = 1;
  QByteArray image(imageBytes, Qt::Uninitialized);
  for (char& byte : image) byte = char((noise = noise * 1664525u + 1013904223u) >> 24);
  files[QStringLiteral("images/one.png")] = image;
  return *ZipArchive::read({}).value()->written(files, {});
}

void open(benchmark::State& state, qsizetype jsonBytes, qsizetype imageBytes) {
  const QByteArray bytes = packed(jsonBytes, imageBytes);
  for (auto _ : state) {
    const auto document = SketchDocument::read(bytes, QStringLiteral("bench"));
    if (!document) return state.SkipWithError(document.error().message.c_str());
    benchmark::DoNotOptimize((*document)->pages().size());
  }
}

void save(benchmark::State& state) {
  const auto document =
      SketchDocument::read(packed(kBytes / 10, kBytes), QStringLiteral("bench")).value();
  document->pages().first()->edit();
  for (auto _ : state) benchmark::DoNotOptimize(document->bytes());
}

Json color(double red, double green, double blue, double alpha = 1) {
  return {{"_class", "color"}, {"red", red}, {"green", green}, {"blue", blue}, {"alpha", alpha}};
}

Json placed(const char* kind, int i, double width, double height) {
  return {{"_class", kind},
          {"name", std::to_string(i)},
          {"do_objectID", std::to_string(i)},
          {"frame",
           {{"x", 12 + i % 20 * 71.25},
            {"y", 12 + i / 20 * 41.5},
            {"width", width},
            {"height", height}}}};
}

/// Round corners over a gradient, a border and a shadow; one in ten mixed with what is below.
Json card(int i) {
  Json card = placed("rectangle", i, 64, 34);
  card["fixedRadius"] = 6;
  Json& style = card["style"];
  style["fills"] = Json::array({{{"fillType", 1}}});
  style["fills"][0]["gradient"] = {{"from", "{0.5, 0}"}, {"to", "{0.5, 1}"}};
  style["fills"][0]["gradient"]["stops"] =
      Json::array({{{"position", 0}, {"color", color(i % 7 / 7.0, 0.6, 0.9)}},
                   {{"position", 1}, {"color", color(0.9, i % 5 / 5.0, 0.7)}}});
  style["borders"] =
      Json::array({{{"thickness", 1}, {"position", 1}, {"color", color(0.2, 0.2, 0.3)}}});
  style["shadows"] =
      Json::array({{{"blurRadius", 6}, {"offsetY", 2}, {"color", color(0, 0, 0, 0.3)}}});
  if (i % 10 == 0) style["contextSettings"] = {{"blendMode", 2}, {"opacity", 0.8}};
  return card;
}

Json label(int i) {
  const std::string said = "Layer " + std::to_string(i);
  Json label = placed("text", i, 60, 14);
  Json run = {{"location", 0}, {"length", said.size()}};
  Json& attributes = run["attributes"];
  attributes["MSAttributedStringFontAttribute"]["attributes"] = {
      {"name", i % 2 ? "Roboto-Regular" : "Roboto-Bold"}, {"size", 12}};
  attributes["MSAttributedStringColorAttribute"] = color(0.1, 0.1, 0.2);
  label["attributedString"] = {{"string", said}};
  label["attributedString"]["attributes"] = Json::array({run});
  return label;
}

/// Two texts to three cards, on 1440 by 2100, from the document's bytes on.
void draw(benchmark::State& state) {
  Json artboard = placed("artboard", 0, 1440, 2100);
  for (int i = 0; i < 1000; ++i) artboard["layers"].push_back(i % 5 < 3 ? card(i) : label(i));
  Json page = {{"_class", "page"}};
  page["layers"] = Json::array({artboard});
  QString error;
  const QByteArray bytes = *ZipArchive::read({}).value()->written(
      {{QStringLiteral("document.json"), R"({"pages":[{"_ref":"pages/one"}]})"},
       {QStringLiteral("pages/one.json"), QByteArray::fromStdString(page.dump())}},
      {});
  for (auto _ : state) {
    const auto document = SketchDocument::read(bytes, QStringLiteral("bench")).value();
    const auto image = ArtboardRenderer(document).render(*document->artboards()[0], 1);
    if (!image) return state.SkipWithError(image.error().message.c_str());
  }
}

}  // namespace

BENCHMARK_CAPTURE(open, json, kBytes, 0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(open, images, kBytes / 10, kBytes)->Unit(benchmark::kMillisecond);
BENCHMARK(save)->Unit(benchmark::kMillisecond);
BENCHMARK(draw)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
