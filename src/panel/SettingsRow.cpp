#include "panel/SettingsRow.h"

#include <QVBoxLayout>

#include "platform/MainQueue.h"

namespace kelvar::cli {

SettingsRow::SettingsRow(PanelModel* model, QWidget* parent)
    : QWidget(parent),
      model_(model),
      narrow_(KVViewController::initWithNibName()),
      wide_(KVResizeViewController::initWithNibName()) {
  makeDelegate();
  auto* const rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, 0, 0, 0);
  for (const KVViewControllerRef& row : {narrow_, wide_}) {
    if (!row || !row->view()) continue;
    row->setDelegate(delegate_);
    rows->addWidget(row->view());
  }
  // The wide layout must not keep the window from becoming narrow.
  wide_->view()->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

void SettingsRow::makeDelegate() {
  delegate_ = std::make_shared<KVViewControllerDelegate>();
  delegate_->controllerDidToggleIncludeInArtboards = [this](auto&, const QVariant& state) {
    // Clicking a mixed check box includes all.
    model_->setIncluded(state.toInt() != 0);
    updateFromModel();
  };
  delegate_->controllerDidPressRefreshLayer = [this](auto&) {
    if (onRefresh) onRefresh();
  };
  delegate_->controllerDidPressFlipLayer = [this](auto&) { model_->flip(); };
  delegate_->controllerDidPressRotateLayer = [this](auto&) { model_->rotate(); };
  delegate_->controllerDidSelectImageQuality = [this](auto&, const QVariant& index) {
    model_->setQuality(index.toInt());
    updateFromModel();
  };
}

KVViewController& SettingsRow::current() const {
  return availableWidth_ < wide_->view()->minimumSizeHint().width() ? *narrow_ : *wide_;
}

void SettingsRow::setAvailableWidth(int width) {
  availableWidth_ = width;
  updateFromModel();
}

void SettingsRow::setPreview(const ImageRef& preview) {
  preview_ = preview;
  updateFromModel();
}

void SettingsRow::updateFromModel() {
  for (const KVViewControllerRef& row : {narrow_, wide_}) {
    if (!row) continue;
    row->setImageQuality(model_->quality());
    row->setIncludeInArtboards(model_->included());
    row->setPreviewImage(preview_);
    row->reloadData();
    row->view()->setVisible(row.get() == &current());
    if (isBusy_) row->disableLayerButton();
  }
}

void SettingsRow::setBusy(bool isBusy) {
  isBusy_ = isBusy;
  if (isBusy) {
    rememberFocus();
    current().disableLayerButton();
    return;
  }
  updateFromModel();
  // Controls are disabled asynchronously: enable them after that.
  MainQueue::async([row = QPointer<SettingsRow>(this)] {
    if (row && !row->isBusy_) row->enableControls();
  });
}

void SettingsRow::enableControls() {
  for (const KVViewControllerRef& row : {narrow_, wide_}) row->enableLayerButton();
  // A control that is disabled loses the focus, and keyboard users need it back.
  if (focusBefore_ && focusBefore_->isVisible()) focusBefore_->setFocus();
  focusBefore_ = nullptr;
}

void SettingsRow::rememberFocus() {
  QWidget* const focus = window()->focusWidget();
  if (!focusBefore_ && focus && isAncestorOf(focus)) focusBefore_ = focus;
}

}  // namespace kelvar::cli
