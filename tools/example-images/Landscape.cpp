#include "Landscape.h"

#include <QPainterPath>
#include <numbers>

#include "Noise.h"

namespace kelvar::examples {
namespace {

constexpr QColor kDay(0xFF, 0xE9, 0xC4);

/// A mountain range: its height across the width of the image, from 0 at the shore to 1 at the top.
struct Ridge {
  double height;
  double swing;
  double peaksPerWidth;
  double seed;
  QColor top;
  QColor foot;
};

const Ridge kRidges[] = {
    {0.33, 0.40, 2.4, 2.0, QColor(0xC9, 0x93, 0x94), QColor(0xF0, 0xBE, 0x9E)},
    {0.23, 0.38, 3.1, 7.6, QColor(0x87, 0x70, 0x8C), QColor(0xC7, 0x99, 0x98)},
    {0.12, 0.30, 3.6, 4.3, QColor(0x4A, 0x5A, 0x78), QColor(0x84, 0x74, 0x8C)},
    {0.03, 0.20, 4.2, 9.1, QColor(0x1F, 0x43, 0x58), QColor(0x3B, 0x58, 0x70)},
};

void drawSky(QPainter& painter, const QRectF& frame, double shore) {
  QLinearGradient sky(0, frame.top(), 0, shore);
  sky.setColorAt(0.0, QColor(0x2C, 0x5F, 0x83));
  sky.setColorAt(0.34, QColor(0x7E, 0x9C, 0xA9));
  sky.setColorAt(0.62, QColor(0xF2, 0xBE, 0x94));
  sky.setColorAt(1.0, kDay);
  painter.fillRect(frame, sky);
}

void drawSun(QPainter& painter, QPointF middle, double radius) {
  QRadialGradient glow(middle, radius * 7);
  glow.setColorAt(0, QColor(0xFF, 0xE2, 0xAE, 200));
  glow.setColorAt(0.35, QColor(0xFF, 0xCF, 0x94, 70));
  glow.setColorAt(1, QColor(0xFF, 0xCF, 0x94, 0));
  painter.fillRect(
      QRectF(middle.x() - 7 * radius, middle.y() - 7 * radius, 14 * radius, 14 * radius), glow);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0xFF, 0xF6, 0xDE));
  painter.drawEllipse(middle, radius, radius);
}

/// Sharp ridges: several octaves of noise, each folded at its midpoint.
double crest(double x) {
  double sum = 0, weight = 0.6;
  for (int i = 0; i < 6; ++i) {
    sum += weight * (1 - std::abs(2 * noise({x, 0.5, 0.5}) - 1));
    x = x * 2.07 + 3.1;
    weight *= 0.42;
  }
  return sum;
}

void drawRidge(QPainter& painter, const Ridge& ridge, const QRectF& frame, double shore) {
  const double tall = shore - frame.top();
  const double most = shore - tall * (ridge.height + ridge.swing * 0.75);
  QPainterPath path(QPointF(frame.left(), shore));
  for (double x = frame.left(); x <= frame.right() + 1; x += 0.5) {
    const double along = (x - frame.left()) / frame.width() * ridge.peaksPerWidth + ridge.seed;
    path.lineTo(x, shore - tall * (ridge.height + ridge.swing * (crest(along) - 0.45)));
  }
  path.lineTo(frame.right() + 1, shore);
  path.closeSubpath();
  QLinearGradient haze(0, most, 0, shore);
  haze.setColorAt(0, ridge.top);
  haze.setColorAt(1, ridge.foot);
  painter.fillPath(path, haze);
}

/// A fir with five tiers and its base at `foot`.
void drawTree(QPainter& painter, QPointF foot, double height, const QColor& color) {
  QPolygonF side{QPointF(0, -height)};
  for (int tier = 1; tier <= 5; ++tier) {
    const double down = tier / 5.0;
    const double half = height * 0.2 * (0.25 + 0.75 * down);
    side << QPointF(half, height * (down * 0.94 - 1))
         << QPointF(half / 2, height * (down * 0.94 - 1.02));
  }
  side << QPointF(height * 0.02, 0);
  QPolygonF tree = side;
  for (auto point = side.rbegin(); point != side.rend(); ++point) {
    tree << QPointF(-point->x(), point->y());
  }
  QPainterPath path;
  path.addPolygon(tree.translated(foot));
  path.closeSubpath();
  painter.fillPath(path, color);
}

void drawForest(QPainter& painter, const QRectF& frame, double shore) {
  for (int i = 0; i < 90; ++i) {
    const double x = frame.left() + frame.width() * (i + noise({i * 5.3, 1, 1})) / 90;
    const double edge = std::abs((x - frame.center().x()) / frame.width() + 0.06) * 2;
    const double height = 9 + 34 * std::pow(edge, 2.2) * (0.6 + 0.8 * noise({i * 3.1, 2, 2}));
    drawTree(painter, QPointF(x, shore + 2), height, QColor(0x10, 0x2B, 0x38));
  }
}

/// The reflection of what is above the shore, dimmed and broken by ripples.
void drawLake(QPainter& painter, const QImage& above, const QRectF& frame, double shore,
              double scale) {
  const QRectF lake(frame.left(), shore, frame.width(), frame.bottom() - shore);
  const QImage mirrored = above.mirrored();
  const double mirrorTop = above.height() - (shore - frame.top()) * scale;
  for (double y = 0; y < lake.height(); y += 1 / scale) {
    const double swing = (0.4 + 0.06 * y) * (2 * noise({y * (2.2 - 0.006 * y), 3, 3}) - 1) * 2;
    const QRectF from(0, mirrorTop + y * 1.25 * scale, above.width(), 1);
    painter.drawImage(QRectF(lake.left() + swing - 10, shore + y, lake.width() + 20, 1 / scale),
                      mirrored, from);
  }
  QLinearGradient depth(0, lake.top(), 0, lake.bottom());
  depth.setColorAt(0, QColor(0x18, 0x3A, 0x4A, 60));
  depth.setColorAt(1, QColor(0x0C, 0x26, 0x34, 225));
  painter.fillRect(lake, depth);
}

}  // namespace

void drawLandscape(QPainter& painter, const QRectF& frame) {
  const double scale = painter.transform().m11();
  const double shore = frame.top() + frame.height() * 0.68;
  QImage above((frame.size() * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
  above.fill(Qt::black);
  QPainter p(&above);
  p.setRenderHint(QPainter::Antialiasing);
  p.scale(scale, scale);
  p.translate(-frame.topLeft());
  drawSky(p, frame, shore);
  drawSun(p, QPointF(frame.left() + frame.width() * 0.70, frame.top() + frame.height() * 0.305),
          19);
  for (const Ridge& ridge : kRidges) drawRidge(p, ridge, frame, shore);
  drawForest(p, frame, shore);
  p.end();
  painter.drawImage(frame, above);
  drawLake(painter, above, frame, shore, scale);
}

}  // namespace kelvar::examples
