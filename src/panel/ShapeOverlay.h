#pragma once

#include <QMap>
#include <QPainter>

#include "mockup/PanelModel.h"
#include "panel/Viewport.h"

namespace kelvar::cli {

/// Paints the shapes' outlines, corners and problems over an image. Lengths are points.
struct ShapeOverlay {
  static constexpr double kHandleRadius = 5.5;

  const PanelModel& model;
  const Viewport& viewport;
  /// By the shape's id, a message for each shape that is not shown correctly.
  const QMap<QString, QString>& problems;
  QColor accent;
  /// Whether the corners can be dragged.
  bool canChange = true;

  void paint(QPainter* painter) const;
  /// Paints the outline so far of a shape that is being drawn; `next` would be its next corner.
  void paintUnfinished(QPainter* painter, const QList<QPointF>& corners, const QPointF& next) const;
  /// Paints a line of text on a rounded background, centered at `at` but inside `view`.
  static void paintLabel(QPainter* painter, const QString& text, const QPointF& at,
                         const QRectF& view, const QColor& background);

 private:
  void paintShape(QPainter* painter, const Arrangement::Shape& shape) const;
  /// Fails if the shape is not shown correctly.
  Result<void> check(const Arrangement::Shape& shape) const;
  void paintProblems(QPainter* painter) const;
  /// Fills the handle at `topLeft`, where the design's top-left corner goes.
  void paintHandles(QPainter* painter, const QPolygonF& outline, qsizetype topLeft,
                    const QColor& color) const;
};

}  // namespace kelvar::cli
