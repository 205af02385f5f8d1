#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>

#include "mockup/PanelModel.h"
#include "ui/KVResizeViewController.h"
#include "ui/KVViewController.h"

namespace kelvar::cli {

/// The row of settings that apply to all selected shapes, in one of two layouts, depending on the
/// width.
///
/// It is the delegate of the row's controllers: it passes the user's actions to the model, and the
/// model's new values back to the controllers.
class SettingsRow : public QWidget {
 public:
  /// The model outlives the row.
  explicit SettingsRow(PanelModel* model, QWidget* parent = nullptr);

  /// Called when the user requests that the designs of the selected shapes be read again.
  std::function<void()> onRefresh;

  /// The narrow layout, which needs the least width.
  const QWidget* narrowView() const { return narrow_->view(); }
  /// Points. Chooses the layout.
  void setAvailableWidth(int width);
  /// The selected shapes' part of the image.
  void setPreview(const ImageRef& preview);
  /// While the image is drawn, disables the controls that would change it again.
  void setBusy(bool isBusy);

  /// Call it when the model has changed.
  void updateFromModel();

 private:
  void makeDelegate();
  KVViewController& current() const;
  void rememberFocus();
  void enableControls();

  PanelModel* model_;
  std::shared_ptr<KVViewControllerDelegate> delegate_;
  KVViewControllerRef narrow_;
  KVViewControllerRef wide_;
  int availableWidth_ = 0;
  ImageRef preview_;
  bool isBusy_ = false;
  /// The widget that had the focus when it was disabled.
  QPointer<QWidget> focusBefore_;
};

}  // namespace kelvar::cli
