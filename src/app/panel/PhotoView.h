#pragma once

#include <QImage>
#include <QMap>
#include <QWidget>
#include <functional>
#include <optional>

#include "app/panel/PicturePyramid.h"
#include "app/panel/ShapeOverlay.h"
#include "app/panel/Viewport.h"
#include "host/PanelModel.h"

namespace kelvar::app {

/// The picture with its shapes, on which shapes are made, selected and moved.
///
/// A click on each of four corners makes a shape while `isDrawing`. Otherwise a click selects, with
/// shift adds or takes away; corners and shapes are dragged; dragging beside them, or with the
/// middle button or the space key, pans. Changes go straight to the model.
class PhotoView : public QWidget {
 public:
  /// The model outlives the view.
  explicit PhotoView(PanelModel* model, QWidget* parent = nullptr);

  /// Called when drawing begins or ends, and when the zoom changes.
  std::function<void()> stateDidChange;
  /// Picture files were dropped on a shape; or on none, whose id is then null.
  std::function<void(const QStringList& files, const QString& shape)> didDropFiles;

  /// What is shown, and the same without designs, which is what the loupe looks at.
  void setPicture(const PicturePyramid& picture, const QImage& ground);
  void setProblems(const QMap<QString, QString>& problems);
  void setCanChangeShapes(bool can) { canChangeShapes_ = can; }
  const PicturePyramid& picture() const { return picture_; }

  bool isDrawing() const { return isDrawing_; }
  void setDrawing(bool isDrawing);

  const Viewport& viewport() const { return viewport_; }
  void zoomBy(double factor);
  void zoomTo(double zoom);
  void fit();

  QSize minimumSizeHint() const override;

  /// To be called when the model has changed.
  void modelDidChange();

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  enum class Drag { None, Pan, Corner, Shapes, Place };

  ShapeOverlay overlay() const;
  void paintHint(QPainter* painter) const;
  void paintLoupe(QPainter* painter) const;
  void pressShapes(QMouseEvent* event);
  void dragTo(const QPointF& to);
  void clickShapes(bool adds);
  void placeCorner(const QPointF& point);
  void placeInTheMiddle();
  bool pressKey(int key, Qt::KeyboardModifiers modifiers);
  bool nudge(int key, double step);
  void nextCorner();
  void showCursor();
  void stateChanged();

  PanelModel* model_;
  PicturePyramid picture_;
  QImage ground_;
  QMap<QString, QString> problems_;
  Viewport viewport_;
  bool canChangeShapes_ = true;

  bool isDrawing_ = false;
  /// Placed so far, in the picture's pixels.
  QList<QPointF> placed_;

  Drag drag_ = Drag::None;
  /// Far enough that it is no click.
  bool hasMoved_ = false;
  bool holdsSpace_ = false;
  QPointF pressedAt_;
  QPointF lastAt_;
  QString pressedShape_;
  /// From where the mouse took it to the corner itself.
  QPointF grip_;
  /// The corner that is dragged, or that keys move.
  ShapeOverlay::Corner corner_;
  bool showsLoupe_ = false;
  bool showsFocus_ = false;
  std::optional<QPointF> hover_;
};

}  // namespace kelvar::app
