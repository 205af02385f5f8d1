#pragma once

#include <QMap>
#include <QPainter>

#include "app/panel/Viewport.h"
#include "host/PanelModel.h"

namespace kelvar::app {

/// The shapes' outlines and corners over a picture: how they look, and what lies under the mouse.
/// Lengths are points.
struct ShapeOverlay {
  static constexpr double kHandleRadius = 5.5;
  /// How near is near enough.
  static constexpr double kReach = 11;

  const PanelModel& model;
  const Viewport& viewport;
  /// By the shape's id, why it cannot be shown.
  const QMap<QString, QString>& problems;
  QColor accent;
  /// Whether the corners can be dragged.
  bool canChange = true;

  void paint(QPainter* painter) const;
  /// The outline so far of a shape that is being made, and where it would go on.
  void paintBegun(QPainter* painter, const QList<QPointF>& corners, const QPointF& next) const;
  /// A line of text on a dark ground, its middle at `at`, within `view`.
  static void paintLabel(QPainter* painter, const QString& text, const QPointF& at,
                         const QRectF& view, const QColor& ground);

  /// The outline in the view, not closed.
  QPolygonF outline(const Arrangement::Shape& shape) const;
  /// Id of the uppermost shape at `point` of the view; null for none.
  QString shapeAt(const QPointF& point) const;
  struct Corner {
    QString shape;
    int index = -1;
    bool operator==(const Corner&) const = default;
  };
  /// The nearest corner of a selected shape within reach; of no shape when there is none.
  Corner cornerAt(const QPointF& point) const;

 private:
  void paintShape(QPainter* painter, const Arrangement::Shape& shape) const;
  /// Why it cannot be shown; empty when it can.
  QString problemOf(const Arrangement::Shape& shape) const;
  void paintProblems(QPainter* painter) const;
  /// The corner at `topLeft` is filled: the design's top left goes there.
  void paintHandles(QPainter* painter, const QPolygonF& outline, qsizetype topLeft,
                    const QColor& color) const;
};

}  // namespace kelvar::app
