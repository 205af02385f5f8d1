#include "panel/CanvasView.h"

#include <QDropEvent>
#include <QFocusEvent>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QPainter>
#include <cmath>

#include "panel/Loupe.h"
#include "panel/ShapeOverlay.h"
#include "panel/droppedFiles.h"

namespace kelvar::cli {
namespace {

constexpr double kZoomStep = 1.25;
constexpr QSize kMinSize(240, 200);

const QColor kLabelBackground(20, 20, 22, 215);

}  // namespace

CanvasView::CanvasView(PanelModel* model, QWidget* parent)
    : QWidget(parent), model_(model), tool_(model, &viewport_) {
  setObjectName(QStringLiteral("canvasView"));
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setAcceptDrops(true);
  setAccessibleName(QStringLiteral("Photo with shapes"));
  tool_.onChanged = [this] { stateChanged(); };
}

QSize CanvasView::minimumSizeHint() const {
  return QWidget::minimumSizeHint().expandedTo(kMinSize);
}

void CanvasView::setImage(const ImagePyramid& image, const QImage& background) {
  image_ = image;
  background_ = background;
  if (!image_.isNull()) viewport_.setImageSize(image_.size());
  stateChanged();
}

void CanvasView::setProblems(const QMap<QString, QString>& problems) {
  problems_ = problems;
  update();
}

void CanvasView::setDrawing(bool isDrawing) {
  tool_.setDrawing(isDrawing && !image_.isNull());
  refresh();
}

void CanvasView::zoomBy(double factor) {
  viewport_.zoomBy(factor, viewport_.center());
  stateChanged();
}

void CanvasView::zoomTo(double zoom) {
  viewport_.zoomTo(zoom, viewport_.center());
  stateChanged();
}

void CanvasView::fit() {
  viewport_.fit();
  stateChanged();
}

void CanvasView::updateFromModel() {
  tool_.updateFromModel();
  QStringList names;
  for (const QString& id : model_->selection()) {
    names.append(model_->arrangement().shape(id)->name);
  }
  const QString selected = names.isEmpty() ? QStringLiteral("none") : names.join(u", ");
  setAccessibleDescription(QStringLiteral("%1 shapes, selected: %2")
                               .arg(model_->arrangement().shapesOnArtboard().size())
                               .arg(selected));
  update();
}

void CanvasView::refresh() {
  setCursor(tool_.cursorAt(mapFromGlobal(QCursor::pos())));
  update();
}

void CanvasView::stateChanged() {
  update();
  if (onStateChanged) onStateChanged();
}

void CanvasView::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  const bool isDark = palette().color(QPalette::Window).lightness() < 128;
  painter.fillRect(event->rect(), isDark ? QColor(28, 28, 30) : QColor(226, 227, 230));
  if (image_.isNull()) return;
  image_.paint(&painter, viewport_.transform(), event->rect());
  const ShapeOverlay overlay{*model_, viewport_, problems_, palette().color(QPalette::Highlight),
                             tool_.canChangeShapes()};
  overlay.paint(&painter);
  if (tool_.isDrawing()) {
    const QList<QPointF>& placed = tool_.placedCorners();
    const QPointF next = tool_.hover().value_or(viewport_.toView(placed.value(placed.size() - 1)));
    overlay.paintUnfinished(&painter, placed, viewport_.toImage(next));
  }
  paintHint(&painter);
  paintLoupe(&painter);
  if (hasFocus() && showsFocus_) paintFocus(&painter);
}

QString CanvasView::hint() const {
  static constexpr const char* kCorners[] = {"top-left", "top-right", "bottom-right",
                                             "bottom-left"};
  if (tool_.isDrawing()) {
    const qsizetype count = tool_.placedCorners().size();
    return QStringLiteral("Click where the design's %1 corner goes (%2 of 4)")
        .arg(QLatin1String(kCorners[count]))
        .arg(count + 1);
  }
  const bool isEmpty = model_->arrangement().shapes.isEmpty();
  return isEmpty && tool_.canChangeShapes() ? QStringLiteral("Press N to draw a shape") : QString();
}

void CanvasView::paintHint(QPainter* painter) const {
  const QString text = hint();
  if (text.isEmpty()) return;
  ShapeOverlay::paintLabel(painter, text, QPointF(width() / 2.0, height()), rect(),
                           kLabelBackground);
}

void CanvasView::paintLoupe(QPainter* painter) const {
  const QColor accent = palette().color(QPalette::Highlight);
  if (tool_.isDrawing() && tool_.hover()) {
    const QList<QPointF>& placed = tool_.placedCorners();
    const QPointF point = viewport_.toImage(*tool_.hover());
    QPolygonF outline;
    if (!placed.isEmpty()) outline << placed.last();
    outline << point;
    if (placed.size() == 3) outline << placed.first();
    Loupe{background_, point, outline}.paint(painter, *tool_.hover(), rect(), accent);
  }
  const auto magnified = tool_.magnifiedCorner();
  if (!magnified) return;
  const auto& corners = model_->arrangement().shape(magnified->shape)->corners;
  const auto corner = [&](int i) { return corners[size_t(i % 4)]; };
  const int index = magnified->index;
  const QPolygonF outline({corner(index + 3), corner(index), corner(index + 1)});
  Loupe{background_, corner(index), outline}.paint(painter, viewport_.toView(corner(index)), rect(),
                                                   accent);
}

void CanvasView::paintFocus(QPainter* painter) const {
  painter->setBrush(Qt::NoBrush);
  painter->setPen(QPen(palette().color(QPalette::Highlight), 2));
  painter->drawRect(QRectF(rect()).adjusted(1, 1, -1, -1));
}

void CanvasView::resizeEvent(QResizeEvent*) {
  viewport_.setViewSize(size());
  stateChanged();
}

/// The focus is marked only for those who navigate with the keys.
void CanvasView::focusInEvent(QFocusEvent* event) {
  showsFocus_ = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
  update();
}

void CanvasView::mousePressEvent(QMouseEvent* event) {
  if (image_.isNull()) return;
  tool_.press(event->position(), event->button(), event->modifiers());
  refresh();
}

void CanvasView::mouseMoveEvent(QMouseEvent* event) {
  if (tool_.move(event->position())) return update();
  setCursor(tool_.cursorAt(event->position()));
}

void CanvasView::mouseReleaseEvent(QMouseEvent* event) {
  tool_.release(event->position(), event->modifiers());
  refresh();
}

void CanvasView::leaveEvent(QEvent*) {
  tool_.leave();
  update();
}

void CanvasView::wheelEvent(QWheelEvent* event) {
  if (image_.isNull()) return;
  if (event->modifiers() & Qt::ControlModifier) {
    viewport_.zoomBy(std::pow(kZoomStep, event->angleDelta().y() / 120.0), event->position());
  } else {
    const QPoint pixels = event->pixelDelta();
    viewport_.panBy(pixels.isNull() ? QPointF(event->angleDelta()) / 2 : QPointF(pixels));
  }
  stateChanged();
  event->accept();
}

bool CanvasView::event(QEvent* event) {
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

void CanvasView::keyPressEvent(QKeyEvent* event) {
  if (image_.isNull() || !tool_.pressKey(event->key(), event->modifiers())) {
    return QWidget::keyPressEvent(event);
  }
  refresh();
}

void CanvasView::keyReleaseEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Space && !event->isAutoRepeat()) tool_.releaseSpace();
  refresh();
  QWidget::keyReleaseEvent(event);
}

void CanvasView::dragEnterEvent(QDragEnterEvent* event) {
  if (!droppedFiles(event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void CanvasView::dragMoveEvent(QDragMoveEvent* event) { event->acceptProposedAction(); }

void CanvasView::dropEvent(QDropEvent* event) {
  const QStringList files = droppedFiles(event->mimeData());
  if (files.isEmpty() || !onFilesDropped) return;
  event->acceptProposedAction();
  onFilesDropped(files, ShapeHitTest{*model_, viewport_}.shapeAt(event->position()));
}

}  // namespace kelvar::cli
