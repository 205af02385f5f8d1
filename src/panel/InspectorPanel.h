#pragma once

#include <QMap>
#include <QWidget>
#include <functional>

#include "mockup/PanelModel.h"
#include "platform/image/Image.h"

class QLabel;
class QScrollArea;
class QVBoxLayout;

namespace kelvar::cli {

class DesignCells;
class SettingsRow;

/// The right side of the window: a chooser of the design for each selected shape, and one row of
/// settings for all of them.
class InspectorPanel : public QWidget {
 public:
  /// The model outlives the panel.
  explicit InspectorPanel(PanelModel* model, QWidget* parent = nullptr);

  /// Called when the user requests that the designs of the selected shapes be read again.
  std::function<void()> onRefresh;
  /// Called when image files are dropped on the chooser of a shape.
  std::function<void(const QStringList& files, const QString& shape)> onFilesDropped;

  /// Whether shapes can be drawn; if not, they come from the opened document.
  void setCanMakeShapes(bool can);
  /// The designs' images in menus and choosers, by design id.
  void setThumbnails(const QMap<QString, ImageRef>& thumbnails);
  /// The selected shapes' part of the image.
  void setPreview(const ImageRef& preview);
  /// By the shape's id, a message for each shape that is not shown correctly.
  void setProblems(const QMap<QString, QString>& problems);
  /// While the image is drawn, disables the controls that would change it again.
  void setBusy(bool isBusy);

  /// Call it when the model has changed.
  void updateFromModel();

  /// Adds a view above the settings, in full width. It scrolls with them.
  void addAbove(QWidget* widget);
  /// Adds a view at the bottom that is always visible.
  void addBelow(QWidget* widget);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  QWidget* makeContents();
  void showProblems();
  QString emptyHint() const;

  PanelModel* model_;
  QScrollArea* scroll_ = nullptr;
  QVBoxLayout* above_ = nullptr;
  QVBoxLayout* below_ = nullptr;
  DesignCells* cells_ = nullptr;
  SettingsRow* settings_ = nullptr;
  QLabel* title_ = nullptr;
  QLabel* empty_ = nullptr;
  QLabel* problem_ = nullptr;

  QMap<QString, QString> problems_;
  bool canMakeShapes_ = true;
};

}  // namespace kelvar::cli
