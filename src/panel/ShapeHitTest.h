#pragma once

#include <QPolygonF>

#include "mockup/PanelModel.h"
#include "panel/Viewport.h"

namespace kelvar::cli {

/// The shape's outline in the view, not closed.
QPolygonF outlineInView(const Arrangement::Shape& shape, const Viewport& viewport);

/// Which shape or corner lies at a point of the view. Lengths are points.
struct ShapeHitTest {
  /// A corner within this distance counts as hit.
  static constexpr double kReach = 11;

  struct Corner {
    /// Empty for no corner.
    QString shape;
    int index = -1;
    bool operator==(const Corner&) const = default;
  };

  const PanelModel& model;
  const Viewport& viewport;

  /// The id of the topmost shape; null if there is none.
  QString shapeAt(const QPointF& point) const;
  /// The nearest corner of a selected shape within reach.
  Corner cornerAt(const QPointF& point) const;
};

}  // namespace kelvar::cli
