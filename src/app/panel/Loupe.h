#pragma once

#include <QImage>
#include <QPainter>
#include <QPolygonF>

namespace kelvar::app {

/// Shows the pixels around one point of a picture, with the outline that has its corner there.
struct Loupe {
  /// Points, from the middle to the rim.
  static constexpr double kRadius = 58;
  /// Points a pixel.
  static constexpr double kZoom = 9;

  /// The picture's pixels.
  const QImage& picture;
  /// What is looked at, in them.
  QPointF point;
  /// In them too; not closed.
  QPolygonF outline;

  /// Beside `at`, where the point itself lies in the view, and wholly within `view`.
  void paint(QPainter* painter, const QPointF& at, const QRectF& view, const QColor& accent) const;
};

}  // namespace kelvar::app
