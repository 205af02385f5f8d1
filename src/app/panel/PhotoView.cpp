#include "app/panel/PhotoView.h"

#include <QDropEvent>
#include <QFocusEvent>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QStyleHints>
#include <cmath>

#include "app/panel/Loupe.h"
#include "app/panel/droppedFiles.h"

namespace kelvar::app {
namespace {

constexpr double kZoomStep = 1.25;
constexpr QSize kLeastSize(240, 200);

const QColor kLabelGround(20, 20, 22, 215);

/// Corners keep hundredths of a pixel: finer than any screen shows, and short to write down.
QPointF rounded(const QPointF& point) {
  return {std::round(point.x() * 100) / 100, std::round(point.y() * 100) / 100};
}

}  // namespace

PhotoView::PhotoView(PanelModel* model, QWidget* parent) : QWidget(parent), model_(model) {
  setObjectName(QStringLiteral("photoView"));
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setAcceptDrops(true);
  setAccessibleName(QStringLiteral("Photo with shapes"));
}

QSize PhotoView::minimumSizeHint() const {
  return QWidget::minimumSizeHint().expandedTo(kLeastSize);
}

void PhotoView::setPicture(const PicturePyramid& picture, const QImage& ground) {
  picture_ = picture;
  ground_ = ground;
  if (!picture_.isNull()) viewport_.setPicture(picture_.size());
  stateChanged();
}

void PhotoView::setProblems(const QMap<QString, QString>& problems) {
  problems_ = problems;
  update();
}

void PhotoView::setDrawing(bool isDrawing) {
  if (isDrawing && (!canChangeShapes_ || picture_.isNull())) isDrawing = false;
  isDrawing_ = isDrawing;
  placed_.clear();
  if (isDrawing) model_->select({});
  showCursor();
  stateChanged();
}

void PhotoView::zoomBy(double factor) {
  viewport_.zoomBy(factor, viewport_.middle());
  stateChanged();
}

void PhotoView::zoomTo(double zoom) {
  viewport_.zoomTo(zoom, viewport_.middle());
  stateChanged();
}

void PhotoView::fit() {
  viewport_.fit();
  stateChanged();
}

void PhotoView::modelDidChange() {
  if (!model_->isSelected(corner_.shape)) corner_ = {};
  QStringList names;
  for (const QString& id : model_->selection()) {
    names.append(model_->arrangement().shape(id)->name);
  }
  const QString selected = names.isEmpty() ? QStringLiteral("none") : names.join(u", ");
  setAccessibleDescription(QStringLiteral("%1 shapes, selected: %2")
                               .arg(model_->arrangement().shapesInSight().size())
                               .arg(selected));
  update();
}

void PhotoView::stateChanged() {
  update();
  if (stateDidChange) stateDidChange();
}

ShapeOverlay PhotoView::overlay() const {
  return {*model_, viewport_, problems_, palette().color(QPalette::Highlight), canChangeShapes_};
}

void PhotoView::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  const bool isDark = palette().color(QPalette::Window).lightness() < 128;
  painter.fillRect(event->rect(), isDark ? QColor(28, 28, 30) : QColor(226, 227, 230));
  if (picture_.isNull()) return;
  picture_.paint(&painter, viewport_.transform(), event->rect());
  const ShapeOverlay shapes = overlay();
  shapes.paint(&painter);
  if (isDrawing_) {
    const QPointF next = hover_.value_or(viewport_.toView(placed_.value(placed_.size() - 1)));
    shapes.paintBegun(&painter, placed_, viewport_.toPicture(next));
  }
  paintHint(&painter);
  paintLoupe(&painter);
  if (!hasFocus() || !showsFocus_) return;
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
  painter.drawRect(QRectF(rect()).adjusted(1, 1, -1, -1));
}

void PhotoView::paintHint(QPainter* painter) const {
  static constexpr const char* kCorners[] = {"top-left", "top-right", "bottom-right",
                                             "bottom-left"};
  QString text;
  if (isDrawing_) {
    text = QStringLiteral("Click where the design's %1 corner goes (%2 of 4)")
               .arg(QLatin1String(kCorners[placed_.size()]))
               .arg(placed_.size() + 1);
  } else if (canChangeShapes_ && model_->arrangement().shapes.isEmpty()) {
    text = QStringLiteral("Press N to draw a shape");
  }
  if (text.isEmpty()) return;
  ShapeOverlay::paintLabel(painter, text, QPointF(width() / 2.0, height()), rect(), kLabelGround);
}

void PhotoView::paintLoupe(QPainter* painter) const {
  const QColor accent = palette().color(QPalette::Highlight);
  if (isDrawing_ && hover_) {
    QPolygonF outline;
    if (!placed_.isEmpty()) outline << placed_.last();
    outline << viewport_.toPicture(*hover_);
    if (placed_.size() == 3) outline << placed_.first();
    Loupe{ground_, viewport_.toPicture(*hover_), outline}.paint(painter, *hover_, rect(), accent);
  }
  const Arrangement::Shape* shape = model_->arrangement().shape(corner_.shape);
  if (isDrawing_ || !showsLoupe_ || !shape) return;
  const auto corner = [&](int i) { return shape->corners[size_t(i % 4)]; };
  const QPolygonF outline(
      {corner(corner_.index + 3), corner(corner_.index), corner(corner_.index + 1)});
  const QPointF point = corner(corner_.index);
  Loupe{ground_, point, outline}.paint(painter, viewport_.toView(point), rect(), accent);
}

void PhotoView::resizeEvent(QResizeEvent*) {
  viewport_.setView(size());
  stateChanged();
}

/// Whoever comes with the mouse knows where the focus is.
void PhotoView::focusInEvent(QFocusEvent* event) {
  showsFocus_ = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
  update();
}

void PhotoView::mousePressEvent(QMouseEvent* event) {
  if (picture_.isNull() || drag_ != Drag::None) return;
  pressedAt_ = lastAt_ = event->position();
  hasMoved_ = false;
  const bool isLeft = event->button() == Qt::LeftButton;
  if (event->button() == Qt::MiddleButton || (isLeft && holdsSpace_)) {
    drag_ = Drag::Pan;
    hasMoved_ = true;
  } else if (isLeft && isDrawing_) {
    drag_ = Drag::Place;
    hover_ = event->position();
  } else if (isLeft) {
    pressShapes(event);
  }
  showCursor();
  update();
}

void PhotoView::pressShapes(QMouseEvent* event) {
  const ShapeOverlay shapes = overlay();
  const bool adds = event->modifiers() & Qt::ShiftModifier;
  const ShapeOverlay::Corner corner = shapes.cornerAt(event->position());
  pressedShape_ = shapes.shapeAt(event->position());
  corner_ = {};
  showsLoupe_ = false;
  if (!corner.shape.isEmpty() && canChangeShapes_ && !adds) {
    drag_ = Drag::Corner;
    corner_ = corner;
    showsLoupe_ = true;
    const QPointF at = model_->arrangement().shape(corner.shape)->corners[size_t(corner.index)];
    grip_ = viewport_.toView(at) - event->position();
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

void PhotoView::mouseMoveEvent(QMouseEvent* event) {
  const QPointF to = event->position();
  if (isDrawing_) hover_ = to;
  if (drag_ == Drag::None) {
    showCursor();
    if (isDrawing_) update();
    return;
  }
  const QPointF moved = to - pressedAt_;
  const int click = QGuiApplication::styleHints()->startDragDistance() / 3;
  hasMoved_ = hasMoved_ || std::abs(moved.x()) + std::abs(moved.y()) > click;
  if (hasMoved_) dragTo(to);
  update();
}

void PhotoView::dragTo(const QPointF& to) {
  if (drag_ == Drag::Pan || (drag_ == Drag::Shapes && !canChangeShapes_)) {
    viewport_.panBy(to - lastAt_);
    stateChanged();
  } else if (drag_ == Drag::Corner) {
    model_->setCorner(corner_.shape, corner_.index, rounded(viewport_.toPicture(to + grip_)));
  } else if (drag_ == Drag::Shapes && model_->isSelected(pressedShape_)) {
    // By whole steps from the last one, so that nothing is lost to rounding.
    const QPointF by = rounded((to - lastAt_) / viewport_.zoom());
    model_->moveSelected(by);
    lastAt_ += by * viewport_.zoom();
    return;
  }
  lastAt_ = to;
}

void PhotoView::mouseReleaseEvent(QMouseEvent* event) {
  if (drag_ == Drag::None) return;
  const Drag drag = drag_;
  drag_ = Drag::None;
  showsLoupe_ = false;
  model_->endStep();
  const bool adds = event->modifiers() & Qt::ShiftModifier;
  if (drag == Drag::Place) placeCorner(event->position());
  if (drag == Drag::Shapes && !hasMoved_) clickShapes(adds);
  if (drag == Drag::Pan && !hasMoved_ && !adds) model_->select({});
  showCursor();
  update();
}

void PhotoView::clickShapes(bool adds) {
  if (adds) {
    model_->toggleSelected(pressedShape_);
  } else {
    model_->select({pressedShape_});
  }
}

void PhotoView::placeCorner(const QPointF& point) {
  placed_.append(rounded(viewport_.toPicture(point)));
  if (placed_.size() < 4) return;
  const std::array<QPointF, 4> corners{placed_[0], placed_[1], placed_[2], placed_[3]};
  setDrawing(false);
  model_->addShape(corners);
}

/// For those who work without a mouse: a shape to be moved with the keys.
void PhotoView::placeInTheMiddle() {
  const QPointF middle = rounded(viewport_.toPicture(viewport_.middle()));
  const double x = std::round(width() / viewport_.zoom() / 6);
  const double y = std::round(height() / viewport_.zoom() / 6);
  setDrawing(false);
  model_->addShape({middle + QPointF(-x, -y), middle + QPointF(x, -y), middle + QPointF(x, y),
                    middle + QPointF(-x, y)});
}

void PhotoView::leaveEvent(QEvent*) {
  hover_.reset();
  update();
}

void PhotoView::showCursor() {
  const QPointF at = mapFromGlobal(QCursor::pos());
  if (drag_ == Drag::Pan && hasMoved_) return setCursor(Qt::ClosedHandCursor);
  if (holdsSpace_) return setCursor(Qt::OpenHandCursor);
  if (isDrawing_ || drag_ == Drag::Corner) return setCursor(Qt::CrossCursor);
  const ShapeOverlay shapes = overlay();
  if (canChangeShapes_ && !shapes.cornerAt(at).shape.isEmpty()) return setCursor(Qt::CrossCursor);
  const bool canMove = canChangeShapes_ && model_->isSelected(shapes.shapeAt(at));
  setCursor(canMove ? Qt::SizeAllCursor : Qt::ArrowCursor);
}

void PhotoView::wheelEvent(QWheelEvent* event) {
  if (picture_.isNull()) return;
  if (event->modifiers() & Qt::ControlModifier) {
    viewport_.zoomBy(std::pow(kZoomStep, event->angleDelta().y() / 120.0), event->position());
  } else {
    const QPoint pixels = event->pixelDelta();
    viewport_.panBy(pixels.isNull() ? QPointF(event->angleDelta()) / 2 : QPointF(pixels));
  }
  stateChanged();
  event->accept();
}

bool PhotoView::event(QEvent* event) {
  if (event->type() == QEvent::NativeGesture) {
    const auto* const gesture = static_cast<QNativeGestureEvent*>(event);
    if (gesture->gestureType() == Qt::ZoomNativeGesture) {
      viewport_.zoomBy(1 + gesture->value(), gesture->position());
      stateChanged();
      return true;
    }
  }
  return QWidget::event(event);
}

void PhotoView::keyPressEvent(QKeyEvent* event) {
  if (picture_.isNull() || !pressKey(event->key(), event->modifiers())) {
    QWidget::keyPressEvent(event);
  }
}

bool PhotoView::pressKey(int key, Qt::KeyboardModifiers modifiers) {
  if (key == Qt::Key_Space) {
    holdsSpace_ = true;
    showCursor();
  } else if (key == Qt::Key_Escape) {
    if (isDrawing_) {
      setDrawing(false);
    } else {
      model_->select({});
    }
  } else if (isDrawing_ && (key == Qt::Key_Return || key == Qt::Key_Enter)) {
    placeInTheMiddle();
  } else if (isDrawing_ && key == Qt::Key_Backspace) {
    if (!placed_.isEmpty()) placed_.removeLast();
    update();
  } else if (key == Qt::Key_PageDown || key == Qt::Key_PageUp) {
    model_->selectNext(key == Qt::Key_PageDown ? 1 : -1);
  } else if (key == Qt::Key_C && modifiers == Qt::NoModifier) {
    nextCorner();
  } else {
    return nudge(key, modifiers & Qt::ShiftModifier ? 10 : 1);
  }
  return true;
}

bool PhotoView::nudge(int key, double step) {
  const QPointF by = QPointF((key == Qt::Key_Right) - (key == Qt::Key_Left),
                             (key == Qt::Key_Down) - (key == Qt::Key_Up)) *
                     step;
  if (by.isNull()) return false;
  if (model_->selection().isEmpty() || !canChangeShapes_) {
    viewport_.panBy(-by * 20);
    stateChanged();
  } else if (corner_.shape.isEmpty()) {
    model_->moveSelected(by);
  } else {
    const QPointF at = model_->arrangement().shape(corner_.shape)->corners[size_t(corner_.index)];
    model_->setCorner(corner_.shape, corner_.index, at + by);
  }
  return true;
}

/// The next corner of the first selected shape becomes the one that the arrow keys move; after the
/// last one, they move the whole.
void PhotoView::nextCorner() {
  if (model_->selection().isEmpty() || !canChangeShapes_) return;
  corner_ = {model_->selection().first(), corner_.index + 1};
  if (corner_.index == 4) corner_ = {};
  showsLoupe_ = !corner_.shape.isEmpty();
  update();
}

void PhotoView::keyReleaseEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Space && !event->isAutoRepeat()) holdsSpace_ = false;
  showCursor();
  QWidget::keyReleaseEvent(event);
}

void PhotoView::dragEnterEvent(QDragEnterEvent* event) {
  if (!droppedFiles(event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void PhotoView::dragMoveEvent(QDragMoveEvent* event) { event->acceptProposedAction(); }

void PhotoView::dropEvent(QDropEvent* event) {
  const QStringList files = droppedFiles(event->mimeData());
  if (files.isEmpty() || !didDropFiles) return;
  event->acceptProposedAction();
  didDropFiles(files, overlay().shapeAt(event->position()));
}

}  // namespace kelvar::app
