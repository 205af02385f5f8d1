#include "panel/ShapeTool.h"

#include <QGuiApplication>
#include <QStyleHints>
#include <cmath>

namespace kelvar::cli {
namespace {

/// Corners are kept to hundredths of a pixel: finer than any screen shows, and short in files.
QPointF rounded(const QPointF& point) {
  return {std::round(point.x() * 100) / 100, std::round(point.y() * 100) / 100};
}

}  // namespace

void ShapeTool::changed() const {
  if (onChanged) onChanged();
}

void ShapeTool::setDrawing(bool isDrawing) {
  isDrawing_ = isDrawing && canChangeShapes_;
  placed_.clear();
  if (isDrawing_) model_->select({});
  changed();
}

void ShapeTool::updateFromModel() {
  if (!model_->isSelected(corner_.shape)) corner_ = {};
}

std::optional<ShapeHitTest::Corner> ShapeTool::magnifiedCorner() const {
  const bool isMagnified = showsLoupe_ && !isDrawing_ && !corner_.shape.isEmpty();
  return isMagnified ? std::optional(corner_) : std::nullopt;
}

Qt::CursorShape ShapeTool::cursorAt(const QPointF& point) const {
  if (drag_ == Drag::Pan && hasMoved_) return Qt::ClosedHandCursor;
  if (holdsSpace_) return Qt::OpenHandCursor;
  if (isDrawing_ || drag_ == Drag::Corner) return Qt::CrossCursor;
  if (!canChangeShapes_) return Qt::ArrowCursor;
  if (!hitTest().cornerAt(point).shape.isEmpty()) return Qt::CrossCursor;
  return model_->isSelected(hitTest().shapeAt(point)) ? Qt::SizeAllCursor : Qt::ArrowCursor;
}

void ShapeTool::press(const QPointF& point, Qt::MouseButton button,
                      Qt::KeyboardModifiers modifiers) {
  if (drag_ != Drag::None) return;
  pressedAt_ = lastAt_ = point;
  hasMoved_ = false;
  const bool isLeft = button == Qt::LeftButton;
  if (button == Qt::MiddleButton || (isLeft && holdsSpace_)) {
    drag_ = Drag::Pan;
    hasMoved_ = true;
  } else if (isLeft && isDrawing_) {
    drag_ = Drag::Place;
    hover_ = point;
  } else if (isLeft) {
    pressShapes(point, modifiers & Qt::ShiftModifier);
  }
}

void ShapeTool::pressShapes(const QPointF& point, bool adds) {
  const ShapeHitTest::Corner corner = hitTest().cornerAt(point);
  pressedShape_ = hitTest().shapeAt(point);
  corner_ = {};
  showsLoupe_ = false;
  if (!corner.shape.isEmpty() && canChangeShapes_ && !adds) {
    drag_ = Drag::Corner;
    corner_ = corner;
    showsLoupe_ = true;
    const QPointF at = model_->arrangement().shape(corner.shape)->corners[size_t(corner.index)];
    grip_ = viewport_->toView(at) - point;
    model_->beginStep();
    return;
  }
  if (pressedShape_.isEmpty()) {
    drag_ = Drag::Pan;
    return;
  }
  if (!adds && !model_->isSelected(pressedShape_)) model_->select({pressedShape_});
  drag_ = Drag::Shapes;
  if (canChangeShapes_) model_->beginStep();
}

bool ShapeTool::move(const QPointF& point) {
  if (isDrawing_) hover_ = point;
  if (drag_ == Drag::None) return isDrawing_;
  const QPointF moved = point - pressedAt_;
  const int maxClick = QGuiApplication::styleHints()->startDragDistance() / 3;
  hasMoved_ = hasMoved_ || std::abs(moved.x()) + std::abs(moved.y()) > maxClick;
  if (hasMoved_) dragTo(point);
  return true;
}

void ShapeTool::dragTo(const QPointF& point) {
  if (drag_ == Drag::Pan || (drag_ == Drag::Shapes && !canChangeShapes_)) {
    viewport_->panBy(point - lastAt_);
    changed();
  } else if (drag_ == Drag::Corner) {
    model_->setCorner(corner_.shape, corner_.index, rounded(viewport_->toImage(point + grip_)));
  } else if (drag_ == Drag::Shapes && model_->isSelected(pressedShape_)) {
    // In rounded steps, each from the last, so that rounding errors do not add up.
    const QPointF by = rounded((point - lastAt_) / viewport_->zoom());
    model_->moveSelected(by);
    lastAt_ += by * viewport_->zoom();
    return;
  }
  lastAt_ = point;
}

void ShapeTool::release(const QPointF& point, Qt::KeyboardModifiers modifiers) {
  if (drag_ == Drag::None) return;
  const Drag drag = drag_;
  drag_ = Drag::None;
  showsLoupe_ = false;
  model_->endStep();
  const bool adds = modifiers & Qt::ShiftModifier;
  if (drag == Drag::Place) placeCorner(point);
  if (drag == Drag::Shapes && !hasMoved_) click(adds);
  if (drag == Drag::Pan && !hasMoved_ && !adds) model_->select({});
}

void ShapeTool::click(bool adds) {
  if (adds) {
    model_->toggleSelected(pressedShape_);
  } else {
    model_->select({pressedShape_});
  }
}

void ShapeTool::placeCorner(const QPointF& point) {
  placed_.append(rounded(viewport_->toImage(point)));
  if (placed_.size() < 4) return;
  const std::array<QPointF, 4> corners{placed_[0], placed_[1], placed_[2], placed_[3]};
  setDrawing(false);
  model_->addShape(corners);
}

/// For use without a mouse: a shape whose corners the keys then move.
void ShapeTool::placeInCenter() {
  const QPointF center = rounded(viewport_->toImage(viewport_->center()));
  const double x = std::round(viewport_->viewSize().width() / viewport_->zoom() / 6);
  const double y = std::round(viewport_->viewSize().height() / viewport_->zoom() / 6);
  setDrawing(false);
  model_->addShape({center + QPointF(-x, -y), center + QPointF(x, -y), center + QPointF(x, y),
                    center + QPointF(-x, y)});
}

bool ShapeTool::pressKey(int key, Qt::KeyboardModifiers modifiers) {
  if (isDrawing_ && pressDrawingKey(key)) return true;
  switch (key) {
    case Qt::Key_Space:
      holdsSpace_ = true;
      return true;
    case Qt::Key_Escape:
      model_->select({});
      return true;
    case Qt::Key_PageDown:
      model_->selectNext(1);
      return true;
    case Qt::Key_PageUp:
      model_->selectNext(-1);
      return true;
    case Qt::Key_C:
      if (modifiers != Qt::NoModifier) return false;
      markNextCorner();
      return true;
    default:
      return nudge(key, modifiers & Qt::ShiftModifier ? 10 : 1);
  }
}

bool ShapeTool::pressDrawingKey(int key) {
  switch (key) {
    case Qt::Key_Escape:
      setDrawing(false);
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      placeInCenter();
      return true;
    case Qt::Key_Backspace:
      if (!placed_.isEmpty()) placed_.removeLast();
      return true;
    default:
      return false;
  }
}

bool ShapeTool::nudge(int key, double step) {
  const QPointF by = QPointF((key == Qt::Key_Right) - (key == Qt::Key_Left),
                             (key == Qt::Key_Down) - (key == Qt::Key_Up)) *
                     step;
  if (by.isNull()) return false;
  if (model_->selection().isEmpty() || !canChangeShapes_) {
    viewport_->panBy(-by * 20);
    changed();
  } else if (corner_.shape.isEmpty()) {
    model_->moveSelected(by);
  } else {
    const QPointF at = model_->arrangement().shape(corner_.shape)->corners[size_t(corner_.index)];
    model_->setCorner(corner_.shape, corner_.index, at + by);
  }
  return true;
}

/// Marks the corners of the first selected shape in turn, and after the last one the whole shape.
void ShapeTool::markNextCorner() {
  if (model_->selection().isEmpty() || !canChangeShapes_) return;
  corner_ = {model_->selection().first(), corner_.index + 1};
  if (corner_.index == 4) corner_ = {};
  showsLoupe_ = !corner_.shape.isEmpty();
}

}  // namespace kelvar::cli
