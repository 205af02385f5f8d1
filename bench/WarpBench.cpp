// The warp and its competitors in one process on the same work: a general quad as large as the
// image. Prints every run, then a table of medians with the ratios to the default sampling.

#include <benchmark/benchmark.h>

#include <QImage>
#include <QPainter>
#include <QTransform>
#include <cstdio>
#include <cstring>
#include <functional>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "pixels/warp/Warp.h"

#ifdef KELVAR_OPENCV
#include <opencv2/imgproc.hpp>
#endif

namespace {

using kelvar::AlphaKind;
using kelvar::ComponentType;
using kelvar::PixelFormat;
using kelvar::warp::Options;
using kelvar::warp::Quad;
using kelvar::warp::Sampling;

struct Work {
  int width, height;
  QImage source, output;
  Quad quad;
  /// For other formats: room for four floats per pixel.
  std::vector<float> anySource, anyOutput;
};

QImage noise(int width, int height) {
  QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
  std::mt19937 random(1);
  for (int y = 0; y < height; ++y) {
    auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < width; ++x) row[x] = 0xFF000000u | (random() & 0xFFFFFFu);
  }
  return image;
}

/// A phone held at a slight angle, filling most of the image.
Quad generalQuad(double w, double h) {
  return {{{w * 0.04, h * 0.06}, {w * 0.97, h * 0.02}, {w * 0.93, h * 0.96}, {w * 0.07, h * 0.91}}};
}

Work& work(int width) {
  static std::map<int, Work> all;
  const auto [found, made] = all.try_emplace(width);
  if (made) {
    const int height = width * 3 / 4;
    found->second = {width,
                     height,
                     noise(width, height),
                     QImage(width, height, QImage::Format_ARGB32_Premultiplied),
                     generalQuad(width, height),
                     {},
                     {}};
    Work& w = found->second;
    w.output.fill(0);
    w.anyOutput.resize(size_t(width) * height * 4);
    std::minstd_rand random(1);
    while (w.anySource.size() < w.anyOutput.size()) w.anySource.push_back(random() % 4096 / 4095.f);
  }
  return found->second;
}

void kelvarWarp(Work& w, const Quad& quad, int width, int height, const Options& options) {
  const QImage& in = w.source;
  if (!kelvar::warp::warp({in.constBits(), in.width(), in.height(), in.bytesPerLine()},
                          {w.output.bits(), width, height, w.output.bytesPerLine()}, quad,
                          options)) {
    std::abort();
  }
}

void withKelvar(Work& w, Sampling sampling, int threads) {
  kelvarWarp(w, w.quad, w.width, w.height, {sampling, 1, threads});
}

void inFormat(Work& w, const PixelFormat& format, int threads) {
  const auto stride = ptrdiff_t(size_t(w.width) * format.bytesPerPixel());
  const auto* in = reinterpret_cast<const uint8_t*>(w.anySource.data());
  auto* out = reinterpret_cast<uint8_t*>(w.anyOutput.data());
  if (!kelvar::warp::warp({in, w.width, w.height, stride, format},
                          {out, w.width, w.height, stride, format}, w.quad,
                          {Sampling::Bilinear, 1, threads})) {
    std::abort();
  }
}

/// On a rectangle slightly smaller than the image.
void onRectangle(Work& w, int threads) {
  const double left = w.width * 0.03, right = w.width * 0.97;
  const double top = w.height * 0.03, bottom = w.height * 0.98;
  kelvarWarp(w, {{{left, top}, {right, top}, {right, bottom}, {left, bottom}}}, w.width, w.height,
             {Sampling::Bilinear, 1, threads});
}

/// The whole image at a quarter of its width.
void toQuarter(Work& w, int threads) {
  const double width = w.width / 4.0, height = w.height / 4.0;
  kelvarWarp(w, {{{0, 0}, {width, 0}, {width, height}, {0, height}}}, w.width / 4, w.height / 4,
             {Sampling::Best, 1, threads});
}

void withPainter(Work& w, int) {
  QTransform map;
  const QPolygonF from(QRectF(0, 0, w.width, w.height));
  QPolygonF to;
  for (const auto& corner : w.quad) to << QPointF(corner.x, corner.y);
  if (!QTransform::quadToQuad(from.mid(0, 4), to, map)) std::abort();
  QPainter painter(&w.output);
  painter.setCompositionMode(QPainter::CompositionMode_Source);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.setTransform(map);
  painter.drawImage(0, 0, w.source);
}

#ifdef KELVAR_OPENCV
void opencvWarp(const Work& w, const cv::Mat& in, cv::Mat out, int threads) {
  cv::setNumThreads(threads);
  const float width = float(w.width), height = float(w.height);
  const cv::Point2f from[4] = {{0, 0}, {width, 0}, {width, height}, {0, height}};
  cv::Point2f to[4];
  for (size_t i = 0; i < 4; ++i) to[i] = {float(w.quad[i].x), float(w.quad[i].y)};
  cv::warpPerspective(in, out, cv::getPerspectiveTransform(from, to), out.size(), cv::INTER_LINEAR);
}

void withOpencv(Work& w, int threads) {
  opencvWarp(w, {w.height, w.width, CV_8UC4, w.source.bits(), size_t(w.source.bytesPerLine())},
             {w.height, w.width, CV_8UC4, w.output.bits(), size_t(w.output.bytesPerLine())},
             threads);
}

void withOpencvInFormat(Work& w, int type, int threads) {
  opencvWarp(w, {w.height, w.width, type, w.anySource.data()},
             {w.height, w.width, type, w.anyOutput.data()}, threads);
}
#endif

void copy(Work& w, int) {
  std::memcpy(w.output.bits(), w.source.constBits(), size_t(w.output.sizeInBytes()));
}

struct Contender {
  const char* name;
  bool threaded;
  std::function<void(Work&, int)> run;
};

const std::vector<Contender>& contenders() {
  static const std::vector<Contender> all = {
      {"bilinear", true, [](Work& w, int t) { withKelvar(w, Sampling::Bilinear, t); }},
      {"on a rectangle", true, onRectangle},
      {"best", true, [](Work& w, int t) { withKelvar(w, Sampling::Best, t); }},
      {"best to a quarter", true, toQuarter},
#ifdef KELVAR_OPENCV
      {"OpenCV", true, withOpencv},
#endif
      {"QPainter", false, withPainter},
      {"8 bits, 1 channel", true,
       [](Work& w, int t) {
         inFormat(w, {1, ComponentType::UInt8, AlphaKind::None}, t);
       }},
      {"8 bits, 3 channels", true,
       [](Work& w, int t) {
         inFormat(w, {3, ComponentType::UInt8, AlphaKind::None}, t);
       }},
      {"8 bits, straight", true,
       [](Work& w, int t) {
         inFormat(w, {4, ComponentType::UInt8, AlphaKind::Straight}, t);
       }},
      {"16 bits", true,
       [](Work& w, int t) {
         inFormat(w, {4, ComponentType::UInt16}, t);
       }},
      {"floats", true,
       [](Work& w, int t) {
         inFormat(w, {4, ComponentType::Float32}, t);
       }},
#ifdef KELVAR_OPENCV
      {"OpenCV, 8 x 3", true, [](Work& w, int t) { withOpencvInFormat(w, CV_8UC3, t); }},
      {"OpenCV, 16 bits", true, [](Work& w, int t) { withOpencvInFormat(w, CV_16UC4, t); }},
      {"OpenCV, floats", true, [](Work& w, int t) { withOpencvInFormat(w, CV_32FC4, t); }},
#endif
      {"memcpy", false, copy},
  };
  return all;
}

/// The usual console lines, and the medians for the table.
class Reporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.aggregate_name == "median")
        medians_[run.run_name.function_name] = run.GetAdjustedRealTime();
    }
    ConsoleReporter::ReportRuns(runs);
  }

  void printTable() const {
    std::printf("\n%-18s", "median ms (times)");
    for (const int threads : {1, 2}) {
      for (const int width : {1024, 2048, 4096}) {
        std::printf("  %6dx%d, %d th.", width, width * 3 / 4, threads);
      }
    }
    for (const Contender& contender : contenders()) {
      std::printf("\n%-18s", contender.name);
      for (const int threads : {1, 2}) {
        for (const int width : {1024, 2048, 4096}) {
          const double time = of(contender.name, width, threads);
          const double ours = of("bilinear", width, threads);
          if (time > 0) std::printf("  %8.2f (%5.2f) ", time, time / ours);
        }
      }
    }
    std::printf("\n");
  }

  static std::string key(const std::string& name, int width, int threads) {
    return name + " " + std::to_string(width) + " on " + std::to_string(threads);
  }

 private:
  double of(const std::string& name, int width, int threads) const {
    const auto found = medians_.find(key(name, width, threads));
    return found == medians_.end() ? 0 : found->second;
  }

  std::map<std::string, double> medians_;
};

}  // namespace

int main(int argc, char** argv) {
  for (const int width : {1024, 2048, 4096}) {
    for (const Contender& contender : contenders()) {
      for (int threads = 1; threads <= (contender.threaded ? 2 : 1); ++threads) {
        benchmark::RegisterBenchmark(Reporter::key(contender.name, width, threads).c_str(),
                                     [&contender, width, threads](benchmark::State& state) {
                                       Work& w = work(width);
                                       for (auto _ : state) contender.run(w, threads);
                                     })
            ->UseRealTime()
            ->MeasureProcessCPUTime()
            ->MinTime(0.2)
            ->Repetitions(5)
            ->Unit(benchmark::kMillisecond);
      }
    }
  }
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  Reporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.printTable();
}
