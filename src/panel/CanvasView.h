#pragma once

#include <QImage>
#include <QMap>
#include <QWidget>
#include <functional>

#include "mockup/PanelModel.h"
#include "panel/ImagePyramid.h"
#include "panel/ShapeTool.h"
#include "panel/Viewport.h"

namespace kelvar::cli {

/// Shows the image with its shapes, zoomed and panned. Its `ShapeTool` handles the mouse and the
/// keys.
class CanvasView : public QWidget {
 public:
  /// The model outlives the view.
  explicit CanvasView(PanelModel* model, QWidget* parent = nullptr);

  /// Called when drawing a shape begins or ends, and when the zoom changes.
  std::function<void()> onStateChanged;
  /// Called when image files are dropped on a shape, or, with a null id, outside all shapes.
  std::function<void(const QStringList& files, const QString& shape)> onFilesDropped;

  /// Sets the image to show, and the same image without designs for the loupe.
  void setImage(const ImagePyramid& image, const QImage& background);
  /// By the shape's id, a message for each shape that is not shown correctly.
  void setProblems(const QMap<QString, QString>& problems);
  void setCanChangeShapes(bool can) { tool_.setCanChangeShapes(can); }
  const ImagePyramid& image() const { return image_; }

  bool isDrawing() const { return tool_.isDrawing(); }
  void setDrawing(bool isDrawing);

  const Viewport& viewport() const { return viewport_; }
  void zoomBy(double factor);
  void zoomTo(double zoom);
  void fit();

  QSize minimumSizeHint() const override;

  /// Call it when the model has changed.
  void updateFromModel();

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
  void paintHint(QPainter* painter) const;
  void paintLoupe(QPainter* painter) const;
  void paintFocus(QPainter* painter) const;
  QString hint() const;
  /// Repaints after the mouse or a key has done something.
  void refresh();
  void stateChanged();

  PanelModel* model_;
  ImagePyramid image_;
  QImage background_;
  QMap<QString, QString> problems_;
  Viewport viewport_;
  ShapeTool tool_;
  bool showsFocus_ = false;
};

}  // namespace kelvar::cli
