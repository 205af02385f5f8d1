#pragma once

#include <QMap>
#include <QWidget>
#include <functional>

#include "mockup/PanelModel.h"
#include "ui/KVPopupCell.h"

class QGridLayout;

namespace kelvar::cli {

/// A chooser of the design for each selected shape, in as many columns as fit.
class DesignCells : public QWidget {
 public:
  /// The model outlives the cells.
  explicit DesignCells(PanelModel* model, QWidget* parent = nullptr);

  /// Called when image files are dropped on the chooser of a shape.
  std::function<void(const QStringList& files, const QString& shape)> onFilesDropped;

  /// The designs' images in menus and choosers, by design id.
  void setThumbnails(const QMap<QString, ImageRef>& thumbnails);
  /// Points.
  void setAvailableWidth(int width);

  /// Call it when the model has changed.
  void updateFromModel();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void addCell();
  void arrangeCells();
  void fill(KVPopupCell& cell, const Arrangement::Shape& shape, const KVMenuRef& menu) const;
  KVMenuRef makeMenu() const;

  PanelModel* model_;
  std::shared_ptr<KVPopupCellDelegate> delegate_;
  /// All cells created so far; the first ones show the selected shapes.
  QList<KVPopupCellRef> cells_;
  QGridLayout* layout_ = nullptr;
  int availableWidth_ = 0;
  QMap<QString, ImageRef> thumbnails_;
};

}  // namespace kelvar::cli
