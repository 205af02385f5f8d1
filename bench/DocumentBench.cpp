// Opens a Sketch document of 50 MB: once as JSON unpacked, once as pictures; and saves one.

#include <benchmark/benchmark.h>

#include "host/SketchDocument.h"
#include "platform/ZipArchive.h"

namespace {

using kelvar::SketchDocument;
using kelvar::ZipArchive;

constexpr qsizetype kBytes = 50'000'000;

/// A rectangle as documents of today write it, with one fill.
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

QByteArray packed(qsizetype jsonBytes, qsizetype pictureBytes) {
  QByteArray layers = kLayer;
  const qsizetype count = jsonBytes / (layers.size() + 1);
  layers = ("," + layers).repeated(count).sliced(1);
  std::map<QString, QByteArray> files{
      {QStringLiteral("document.json"), R"({"pages":[{"_ref":"pages/one"}]})"},
      {QStringLiteral("pages/one.json"), R"({"_class":"page","layers":[)" + layers + "]}"}};
  uint32_t noise = 1;
  QByteArray picture(pictureBytes, Qt::Uninitialized);
  for (char& byte : picture) byte = char((noise = noise * 1664525u + 1013904223u) >> 24);
  files[QStringLiteral("images/one.png")] = picture;
  QString error;
  return ZipArchive::read({}, &error)->written(files, {}, &error);
}

void open(benchmark::State& state, qsizetype jsonBytes, qsizetype pictureBytes) {
  const QByteArray bytes = packed(jsonBytes, pictureBytes);
  QString error;
  for (auto _ : state) {
    const auto document = SketchDocument::read(bytes, QStringLiteral("bench"), &error);
    if (!document) return state.SkipWithError(qPrintable(error));
    benchmark::DoNotOptimize(document->pages().size());
  }
}

void save(benchmark::State& state) {
  QString error;
  const auto document =
      SketchDocument::read(packed(kBytes / 10, kBytes), QStringLiteral("bench"), &error);
  document->pages().first()->edit();
  for (auto _ : state) benchmark::DoNotOptimize(document->bytes(&error));
}

}  // namespace

BENCHMARK_CAPTURE(open, json, kBytes, 0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(open, pictures, kBytes / 10, kBytes)->Unit(benchmark::kMillisecond);
BENCHMARK(save)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
