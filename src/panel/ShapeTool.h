#pragma once

#include <QList>
#include <QPointF>
#include <functional>
#include <optional>

#include "panel/ShapeHitTest.h"

namespace kelvar::cli {

/// Handles the mouse and the keys on the canvas: creates, selects and moves shapes, and pans.
///
/// While isDrawing(), a click on each of four corners creates a shape. Otherwise a click selects,
/// and with Shift adds or removes; corners and shapes are dragged; dragging outside of them, or
/// with the middle button or the space key, pans. Changes go straight to the model and the
/// viewport. Positions are points of the view. Independent of widgets.
class ShapeTool {
 public:
  /// Both outlive the tool.
  ShapeTool(PanelModel* model, Viewport* viewport) : model_(model), viewport_(viewport) {}

  /// The viewport has changed, or drawing has begun or ended.
  std::function<void()> onChanged;

  bool canChangeShapes() const { return canChangeShapes_; }
  void setCanChangeShapes(bool can) { canChangeShapes_ = can; }
  bool isDrawing() const { return isDrawing_; }
  /// Begins or cancels drawing a shape. It does not begin if shapes cannot be changed.
  void setDrawing(bool isDrawing);
  /// Corners placed so far, in pixels of the image.
  const QList<QPointF>& placedCorners() const { return placed_; }
  /// Where the next corner would be placed, if the mouse is over the view.
  const std::optional<QPointF>& hover() const { return hover_; }
  /// The corner to show magnified: the one that is dragged or that the arrow keys move.
  std::optional<ShapeHitTest::Corner> magnifiedCorner() const;
  Qt::CursorShape cursorAt(const QPointF& point) const;

  void press(const QPointF& point, Qt::MouseButton button, Qt::KeyboardModifiers modifiers);
  /// Returns whether what the tool shows may have changed.
  bool move(const QPointF& point);
  void release(const QPointF& point, Qt::KeyboardModifiers modifiers);
  void leave() { hover_.reset(); }
  /// Returns whether the tool handles the key.
  bool pressKey(int key, Qt::KeyboardModifiers modifiers);
  void releaseSpace() { holdsSpace_ = false; }

  /// Call it when the model has changed.
  void updateFromModel();

 private:
  enum class Drag { None, Pan, Corner, Shapes, Place };

  ShapeHitTest hitTest() const { return {*model_, *viewport_}; }
  void changed() const;
  void pressShapes(const QPointF& point, bool adds);
  void dragTo(const QPointF& point);
  void click(bool adds);
  void placeCorner(const QPointF& point);
  void placeInCenter();
  bool pressDrawingKey(int key);
  bool nudge(int key, double step);
  void markNextCorner();

  PanelModel* model_;
  Viewport* viewport_;
  bool canChangeShapes_ = true;

  bool isDrawing_ = false;
  QList<QPointF> placed_;
  std::optional<QPointF> hover_;

  Drag drag_ = Drag::None;
  /// Whether the mouse has moved so far that this is not a click.
  bool hasMoved_ = false;
  bool holdsSpace_ = false;
  QPointF pressedAt_;
  QPointF lastAt_;
  QString pressedShape_;
  /// Offset from the point where the mouse grabbed the corner to the corner itself.
  QPointF grip_;
  /// The corner that is dragged, or that the arrow keys move.
  ShapeHitTest::Corner corner_;
  bool showsLoupe_ = false;
};

}  // namespace kelvar::cli
