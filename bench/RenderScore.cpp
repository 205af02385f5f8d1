/// Compares rendered documents with the previews that Sketch stored in them:
///
///     kelvar-render-score [--images FOLDER] DOCUMENT-OR-FOLDER…
///
/// Prints a table for each folder: each document's mean SSIM, the lowest first, and their mean.
/// Then the overall mean. Exits with 1 if a document cannot be compared. With --images, also writes
/// each comparison there: stored, rendered and difference, side by side.
///
/// SSIM after Wang, Bovik, Sheikh, Simoncelli, "Image quality assessment: from error visibility to
/// structural similarity", 2004: luma (Rec. 601) of both images on white, windows of 11 by 11
/// pixels weighted by a Gaussian of 1.5, K1 = 0.01, K2 = 0.03, L = 255, averaged over all windows
/// that are inside the image.
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPainter>
#include <array>
#include <cmath>
#include <cstdio>
#include <map>
#include <vector>

#include "sketch/render/ArtboardRenderer.h"

namespace {

constexpr int kWindow = 11;
constexpr double kDeviation = 1.5;

/// One number per pixel.
struct Plane {
  int width, height;
  std::vector<double> values;
};

std::array<double, kWindow> weights() {
  std::array<double, kWindow> weights{};
  double sum = 0;
  for (int i = 0; i < kWindow; ++i) {
    const double x = i - kWindow / 2;
    sum += weights[i] = std::exp(-x * x / (2 * kDeviation * kDeviation));
  }
  for (double& weight : weights) weight /= sum;
  return weights;
}

QImage onWhite(const QImage& image) {
  QImage white(image.size(), QImage::Format_RGB32);
  white.fill(Qt::white);
  QPainter painter(&white);
  painter.drawImage(0, 0, image);
  return white;
}

Plane luma(const QImage& image) {
  Plane plane{image.width(), image.height(), {}};
  plane.values.reserve(size_t(plane.width) * plane.height);
  for (int y = 0; y < plane.height; ++y) {
    for (int x = 0; x < plane.width; ++x) {
      const QRgb p = image.pixel(x, y);
      plane.values.push_back(0.299 * qRed(p) + 0.587 * qGreen(p) + 0.114 * qBlue(p));
    }
  }
  return plane;
}

/// The weighted mean of each whole window.
Plane windowMeans(const Plane& plane) {
  static const std::array<double, kWindow> kWeights = weights();
  const int width = plane.width - kWindow + 1, height = plane.height - kWindow + 1;
  std::vector<double> across(size_t(width) * plane.height);
  for (int y = 0; y < plane.height; ++y) {
    for (int x = 0; x < width; ++x) {
      double sum = 0;
      for (int i = 0; i < kWindow; ++i) {
        sum += kWeights[i] * plane.values[size_t(y) * plane.width + x + i];
      }
      across[size_t(y) * width + x] = sum;
    }
  }
  Plane means{width, height, std::vector<double>(size_t(width) * height)};
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      for (int i = 0; i < kWindow; ++i) {
        means.values[size_t(y) * width + x] += kWeights[i] * across[size_t(y + i) * width + x];
      }
    }
  }
  return means;
}

Plane product(const Plane& a, const Plane& b) {
  Plane result = a;
  for (size_t i = 0; i < a.values.size(); ++i) result.values[i] *= b.values[i];
  return result;
}

double ssim(const QImage& first, const QImage& second) {
  const Plane a = luma(first), b = luma(second);
  const Plane meanA = windowMeans(a), meanB = windowMeans(b), squareA = windowMeans(product(a, a)),
              squareB = windowMeans(product(b, b)), both = windowMeans(product(a, b));
  constexpr double kC1 = 0.01 * 255 * 0.01 * 255, kC2 = 0.03 * 255 * 0.03 * 255;
  double sum = 0;
  for (size_t i = 0; i < meanA.values.size(); ++i) {
    const double ma = meanA.values[i], mb = meanB.values[i];
    const double varianceA = squareA.values[i] - ma * ma, varianceB = squareB.values[i] - mb * mb;
    const double covariance = both.values[i] - ma * mb;
    sum += (2 * ma * mb + kC1) * (2 * covariance + kC2) /
           ((ma * ma + mb * mb + kC1) * (varianceA + varianceB + kC2));
  }
  return sum / double(meanA.values.size());
}

void writeImages(const QImage& stored, const QImage& drawn, const QString& path) {
  QImage sheet(stored.width() * 3, stored.height(), QImage::Format_RGB32);
  QPainter painter(&sheet);
  painter.drawImage(0, 0, stored);
  painter.drawImage(stored.width(), 0, drawn);
  painter.drawImage(2 * stored.width(), 0, stored);
  painter.setCompositionMode(QPainter::CompositionMode_Difference);
  painter.drawImage(2 * stored.width(), 0, drawn);
  painter.end();
  sheet.save(path);
}

/// Negative, and a line on standard error, when the two cannot be compared.
double score(const QString& path, const QString& folder) {
  std::string error;
  const auto document = kelvar::SketchDocument::open(path);
  QImage stored, drawn;
  if (document) {
    stored.loadFromData((*document)->file(QStringLiteral("previews/preview.png")));
    kelvar::ArtboardRenderer renderer(*document);
    const auto image = renderer.renderPreview();
    if (image) drawn = (*image)->pixels();
    if (!image) error = image.error().message;
    for (const QString& warning : renderer.warnings()) {
      std::fprintf(stderr, "%s: %s\n", qPrintable(path), qPrintable(warning));
    }
  } else {
    error = document.error().message;
  }
  if (drawn.size() != stored.size() && !drawn.isNull() && !stored.isNull()) {
    std::fprintf(stderr, "%s: stored %dx%d, drawn %dx%d\n", qPrintable(path), stored.width(),
                 stored.height(), drawn.width(), drawn.height());
    drawn = drawn.scaled(stored.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  }
  if (drawn.size() != stored.size() || drawn.width() < kWindow || drawn.height() < kWindow) {
    std::fprintf(stderr, "%s: stored %dx%d, drawn %dx%d %s\n", qPrintable(path), stored.width(),
                 stored.height(), drawn.width(), drawn.height(), error.c_str());
    return -1;
  }
  stored = onWhite(stored);
  drawn = onWhite(drawn);
  if (!folder.isEmpty()) {
    writeImages(stored, drawn,
                QDir(folder).filePath(QFileInfo(path).baseName() + QStringLiteral(".png")));
  }
  return ssim(stored, drawn);
}

/// Documents by folder. A folder stands for the documents in it.
std::map<QString, QStringList> documentsByFolder(const QStringList& paths) {
  std::map<QString, QStringList> documents;
  for (const QString& path : paths) {
    const QFileInfo file(path);
    if (!file.isDir()) {
      documents[file.path()].append(path);
      continue;
    }
    for (const QString& name : QDir(path).entryList({QStringLiteral("*.sketch")}, QDir::Files)) {
      documents[QDir::cleanPath(path)].append(QDir(path).filePath(name));
    }
  }
  return documents;
}

struct Sum {
  double total = 0;
  qsizetype compared = 0, documents = 0;
  void print(const char* of) const {
    if (compared > 0) std::printf("%.4f  mean of %td%s\n", total / double(compared), compared, of);
  }
};

Sum printTable(const QStringList& documents, const QString& images) {
  Sum sum{.documents = documents.size()};
  std::multimap<double, QString> scores;
  for (const QString& path : documents) {
    const double value = score(path, images);
    if (value < 0) continue;
    scores.emplace(value, QFileInfo(path).fileName());
    sum.total += value;
    ++sum.compared;
  }
  for (const auto& [value, name] : scores) std::printf("%.4f  %s\n", value, qPrintable(name));
  sum.print("");
  return sum;
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  QStringList paths = application.arguments().mid(1);
  QString images;
  if (paths.size() > 1 && paths.first() == QStringLiteral("--images")) {
    images = paths[1];
    paths = paths.mid(2);
  }
  Sum all;
  const auto folders = documentsByFolder(paths);
  for (const auto& [folder, documents] : folders) {
    std::printf("%s\n", qPrintable(folder));
    const Sum sum = printTable(documents, images);
    std::printf("\n");
    all.total += sum.total;
    all.compared += sum.compared;
    all.documents += sum.documents;
  }
  if (folders.size() > 1) all.print(" in all folders");
  return all.compared == all.documents && all.compared > 0 ? 0 : 1;
}
