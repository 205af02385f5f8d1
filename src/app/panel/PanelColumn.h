#pragma once

#include <QMap>
#include <QWidget>
#include <functional>

#include "host/PanelModel.h"
#include "ui/KVPopupCell.h"
#include "ui/KVResizeViewController.h"
#include "ui/KVViewController.h"

class QLabel;
class QScrollArea;
class QGridLayout;
class QVBoxLayout;

namespace kelvar::app {

/// The right side of the window: for each selected shape a chooser of its design, and one row of
/// settings that stands for all of them.
///
/// It is the delegate of the panel's controllers: what they report goes to the model, and what the
/// model then holds goes back into them.
class PanelColumn : public QWidget {
 public:
  /// The model outlives the column.
  explicit PanelColumn(PanelModel* model, QWidget* parent = nullptr);

  /// The selected shapes' designs are to be read again.
  std::function<void()> didPressRefresh;
  /// Picture files were dropped on the chooser of a shape.
  std::function<void(const QStringList& files, const QString& shape)> didDropFiles;

  /// Whether shapes are made here, or are there from the start.
  void setCanMakeShapes(bool can);
  /// By the design's id, what menus and choosers show.
  void setThumbnails(const QMap<QString, ImageRef>& thumbnails);
  /// Of the selected shapes' part of the picture.
  void setPreview(const ImageRef& preview);
  void setProblems(const QMap<QString, QString>& problems);
  /// While the picture is being drawn, what would change it again is disabled.
  void setBusy(bool isBusy);

  /// To be called when the model has changed.
  void modelDidChange();

  /// What stands above the settings, in full width.
  void addAbove(QWidget* widget);
  /// What stays in sight below them.
  void addBelow(QWidget* widget);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void makeDelegates();
  void makeColumn();
  void addCell();
  void fillCells();
  void arrangeCells();
  void fillRow();
  void showProblems();
  QString emptyHint() const;
  KVMenuRef menu() const;
  KVViewController& row() const;
  void rememberFocus();
  void enableRow();

  PanelModel* model_;
  std::shared_ptr<KVViewControllerDelegate> rowDelegate_;
  std::shared_ptr<KVPopupCellDelegate> cellDelegate_;
  /// Two layouts of the same row, for a narrow column and a wide one.
  KVViewControllerRef narrowRow_;
  KVViewControllerRef wideRow_;
  /// As many as were ever needed; the first of them show the selected shapes.
  QList<KVPopupCellRef> cells_;

  QScrollArea* scroll_ = nullptr;
  QVBoxLayout* above_ = nullptr;
  QVBoxLayout* below_ = nullptr;
  QGridLayout* cellLayout_ = nullptr;
  QWidget* settings_ = nullptr;
  QLabel* title_ = nullptr;
  QLabel* empty_ = nullptr;
  QLabel* problem_ = nullptr;

  QMap<QString, ImageRef> thumbnails_;
  QMap<QString, QString> problems_;
  ImageRef preview_;
  bool canMakeShapes_ = true;
  bool isBusy_ = false;
  /// What had the focus when it was disabled.
  QPointer<QWidget> focusBefore_;
};

}  // namespace kelvar::app
