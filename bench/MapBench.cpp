// Compares whole processes, `kelvar map` and the ten-line OpenCV program, in alternating runs on a
// photo and on a user-interface PNG. Prints medians, the ratio of each pair and the sizes of the
// output; with a file name as its argument, writes the same as JSON.

#include <QColor>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLinearGradient>
#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <random>
#include <vector>

namespace {

constexpr int kPairs = 9;

/// Soft shapes with sensor noise.
QImage photograph(int width, int height) {
  QImage image(width, height, QImage::Format_RGB32);
  std::mt19937 random(3);
  std::normal_distribution<float> grain(0, 2.5f);
  const auto level = [&](float value) { return std::clamp(int(value + grain(random)), 0, 255); };
  for (int y = 0; y < height; ++y) {
    auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < width; ++x) {
      const float u = float(x) / float(width), v = float(y) / float(height);
      const float wave = std::sin(9 * u + 5 * v * v) * std::cos(7 * v - 3 * u);
      const float edge = std::sin(40 * u) + std::sin(31 * v + 6 * u) > 0.4f ? 40.0f : 0.0f;
      row[x] = qRgb(level(120 + 70 * wave + edge), level(110 + 60 * u - edge / 2),
                    level(90 + 80 * v - 30 * wave));
    }
  }
  return image;
}

/// Bars, cards, lines of text-like strokes and one gradient on flat ground.
QImage userInterface(int width, int height) {
  QImage image(width, height, QImage::Format_RGB32);
  image.fill(QColor(246, 247, 249));
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillRect(0, 0, width, 96, QColor(28, 36, 52));
  std::mt19937 random(5);
  for (int top = 140; top + 300 < height; top += 330) {
    for (int left = 60; left + 620 < width; left += 700) {
      QLinearGradient cover(left, top, left + 620, top + 110);
      cover.setColorAt(0, QColor::fromHsv(int(random() % 360), 90, 230));
      cover.setColorAt(1, QColor::fromHsv(int(random() % 360), 120, 190));
      painter.setPen(Qt::NoPen);
      painter.setBrush(Qt::white);
      painter.drawRoundedRect(left, top, 640, 300, 14, 14);
      painter.setBrush(cover);
      painter.drawRoundedRect(left, top, 640, 110, 14, 14);
      painter.setPen(QPen(QColor(60, 66, 80), 2));
      for (int line = 0; line < 8; ++line) {
        for (int x = left + 24; x < left + 580; x += 9) {
          const int y = top + 132 + line * 20;
          if (random() % 6) painter.drawLine(x, y, x + int(random() % 5), y + int(random() % 10));
        }
      }
    }
  }
  return image;
}

/// Seconds that a program takes as a whole, negative when it fails.
double seconds(const QString& program, const QStringList& arguments) {
  const auto start = std::chrono::steady_clock::now();
  const int status = QProcess::execute(program, arguments);
  const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
  return status == 0 ? took.count() : -1;
}

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

QJsonObject compare(const QString& name, const QString& in, int w, int h, const QString& folder) {
  const QList<double> corners = {w * 0.04, h * 0.06, w * 0.97, h * 0.02,
                                 w * 0.93, h * 0.96, w * 0.07, h * 0.91};
  QStringList points, numbers;
  for (int i = 0; i < 8; i += 2) {
    points << QStringLiteral("%1,%2").arg(corners[i]).arg(corners[i + 1]);
    numbers << QString::number(corners[i]) << QString::number(corners[i + 1]);
  }
  const QString ours = folder + QStringLiteral("/kelvar.png");
  const QString theirs = folder + QStringLiteral("/opencv.png");
  std::vector<double> kelvar, opencv, ratios;
  for (int i = -1; i < kPairs; ++i) {  // The first pair warms up.
    const double a = seconds(
        QStringLiteral(KELVAR_PROGRAM),
        {QStringLiteral("map"), in, QStringLiteral("--points"), points.join(QLatin1Char(' ')),
         QStringLiteral("--sampling"), QStringLiteral("bilinear"), QStringLiteral("-o"), ours});
    double b = 0;
#ifdef OPENCV_PROGRAM
    b = seconds(QStringLiteral(OPENCV_PROGRAM), QStringList{in, theirs} + numbers);
#endif
    if (a < 0 || b < 0) std::exit(1);
    if (i < 0) continue;
    kelvar.push_back(a);
    opencv.push_back(b);
    ratios.push_back(b > 0 ? a / b : 0);
  }
  const qint64 size = QFileInfo(ours).size(), otherSize = QFileInfo(theirs).size();
  std::printf("%-16s %8.3f s %8.3f s %8.2f %12lld %12lld\n", qPrintable(name), median(kelvar),
              median(opencv), median(ratios), size, otherSize);
  return {{QStringLiteral("image"), name},
          {QStringLiteral("kelvar_seconds"), median(kelvar)},
          {QStringLiteral("opencv_seconds"), median(opencv)},
          {QStringLiteral("ratio"), median(ratios)},
          {QStringLiteral("kelvar_bytes"), size},
          {QStringLiteral("opencv_bytes"), otherSize}};
}

}  // namespace

int main(int argc, char** argv) {
  const QTemporaryDir folder;
  const QString photo = folder.filePath(QStringLiteral("photo.png"));
  const QString ui = folder.filePath(QStringLiteral("ui.png"));
  if (!photograph(4096, 3072).save(photo) || !userInterface(2880, 1800).save(ui)) return 1;
  std::printf("%-16s %10s %10s %8s %12s %12s\n", "whole process", "kelvar", "OpenCV", "ratio",
              "bytes", "bytes OpenCV");
  const QJsonArray rows = {
      compare(QStringLiteral("photo 4096x3072"), photo, 4096, 3072, folder.path()),
      compare(QStringLiteral("ui 2880x1800"), ui, 2880, 1800, folder.path())};
  if (argc < 2) return 0;
  QFile file(QString::fromLocal8Bit(argv[1]));
  return file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(rows).toJson()) > 0 ? 0 : 1;
}
