#pragma once

#include <QImage>
#include <QPainter>
#include <QPolygonF>

namespace kelvar::cli {

/// Magnifies the pixels around one point of an image, and the outline that has a corner there.
struct Loupe {
  /// Points.
  static constexpr double kRadius = 58;
  /// Points per pixel.
  static constexpr double kZoom = 9;

  const QImage& image;
  /// In pixels of the image.
  QPointF point;
  /// In pixels of the image; not closed.
  QPolygonF outline;

  /// Paints the loupe beside `at`, the position of the point in the view, and inside `view`.
  void paint(QPainter* painter, const QPointF& at, const QRectF& view, const QColor& accent) const;
};

}  // namespace kelvar::cli
