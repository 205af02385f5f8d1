#include "panel/PanelWindow.h"

#include <QCloseEvent>
#include <QFileInfo>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>

#include "panel/ArtboardSelector.h"
#include "panel/CanvasView.h"
#include "panel/ErrorBar.h"
#include "panel/FileDialogs.h"
#include "panel/InspectorPanel.h"
#include "panel/PanelActions.h"
#include "panel/Prompts.h"
#include "panel/StatusBar.h"
#include "platform/QtError.h"

namespace kelvar::cli {
namespace {

/// Points: images in menus and choosers, and of the selected shapes.
constexpr int kThumbnailSide = 128;
constexpr QSize kPreviewSize(480, 320);
constexpr double kZoomStep = 1.25;

/// An image whose pixels are those of a screen with that many per point.
ImageRef inPoints(const QImage& image, double pixelsPerPoint) {
  if (image.isNull()) return nullptr;
  return std::make_shared<Image>(image, QSizeF(image.size()) / pixelsPerPoint);
}

QRect selectionBounds(const PanelModel& model) {
  QPolygonF corners;
  for (const QString& id : model.selection()) {
    for (const QPointF& corner : model.arrangement().shape(id)->corners) corners.append(corner);
  }
  return corners.boundingRect().toAlignedRect();
}

}  // namespace

PanelWindow::PanelWindow() {
  setWindowTitle(QStringLiteral("Kelvar"));
  setAcceptDrops(false);
  artboards_ = new ArtboardSelector(this);
  makeViews();
  makeActions();
  resize(1240, 820);
  connectSession();
  updateViews();
}

PanelWindow::~PanelWindow() { session_.onChanged = nullptr; }

void PanelWindow::makeViews() {
  auto* const splitter = new QSplitter(Qt::Horizontal, this);
  splitter->setChildrenCollapsible(false);
  splitter->setHandleWidth(1);
  inspector_ = new InspectorPanel(&session_.model(), splitter);
  splitter->addWidget(makeLeft());
  splitter->addWidget(inspector_);
  splitter->setStretchFactor(0, 1);
  splitter->setSizes({900, 340});
  setCentralWidget(splitter);
  inspector_->onRefresh = [this] { session_.refreshSelected(); };
  inspector_->onFilesDropped = [this](const QStringList& files, const QString& shape) {
    session_.addDesigns(files, shape);
  };
}

QWidget* PanelWindow::makeLeft() {
  auto* const left = new QWidget;
  auto* const stack = new QVBoxLayout(left);
  stack->setContentsMargins(0, 0, 0, 0);
  stack->setSpacing(0);
  canvas_ = new CanvasView(&session_.model());
  canvas_->onStateChanged = [this] {
    if (actions_) updateActions();
  };
  canvas_->onFilesDropped = [this](const QStringList& files, const QString& shape) {
    dropFiles(files, shape);
  };
  emptyState_ = makeEmptyState();
  errorBar_ = new ErrorBar;
  statusBar_ = new StatusBar;
  statusBar_->onZoomIn = [this] { canvas_->zoomBy(kZoomStep); };
  statusBar_->onZoomOut = [this] { canvas_->zoomBy(1 / kZoomStep); };
  statusBar_->onFit = [this] { canvas_->fit(); };
  stack->addWidget(errorBar_);
  stack->addWidget(canvas_, 1);
  stack->addWidget(statusBar_);
  return left;
}

QWidget* PanelWindow::makeEmptyState() {
  auto* const emptyState = new QWidget(canvas_);
  auto* const open = new QPushButton(QStringLiteral("Open a Photo or a Document…"));
  open->setObjectName(QStringLiteral("openButton"));
  connect(open, &QPushButton::clicked, this, [this] { chooseFileToOpen(); });
  auto* const hint = new QLabel(QStringLiteral("or drop one here, or a saved arrangement"));
  hint->setAlignment(Qt::AlignCenter);
  hint->setWordWrap(true);
  hint->setForegroundRole(QPalette::PlaceholderText);
  auto* const stack = new QVBoxLayout(emptyState);
  stack->setSpacing(10);
  stack->addWidget(open, 0, Qt::AlignCenter);
  stack->addWidget(hint);
  auto* const center = new QVBoxLayout(canvas_);
  center->addWidget(emptyState, 0, Qt::AlignCenter);
  return emptyState;
}

void PanelWindow::makeActions() {
  artboards_->onChosen = [this](const QString& artboard) {
    session_.model().showArtboard(artboard);
  };
  actions_ = std::make_unique<PanelActions>(this, &session_, canvas_, artboards_);
  actions_->make({.open = [this] { chooseFileToOpen(); },
                  .addDesigns = [this] { addChosenDesigns(); },
                  .save = [this] { save(); },
                  .saveAs = [this] { saveAs(); },
                  .exportImage = [this] { exportToChosen(); }});
}

void PanelWindow::connectSession() {
  session_.setThumbnailSide(int(kThumbnailSide * devicePixelRatioF()));
  session_.onFailed = [this](const QString& message) { showError(message); };
  session_.onStatus = [this](const QString& message) { statusBar_->setStatus(message); };
  session_.onOpened = [this](const MockupSession::Frame& frame) { showOpened(frame); };
  session_.onChanged = [this] { updateViews(); };
  session_.onDrawingRequested = [this] { showDrawingRequested(); };
  session_.onDrawn = [this](const MockupSession::Frame& frame) { showFrame(frame); };
  session_.onThumbnail = [this](const QString& design, const QImage& thumbnail) {
    showThumbnail(design, thumbnail);
  };
  session_.onDiskConflict = [this] { showDiskConflict(); };
  session_.onWritten = [this](bool succeeded) { didWrite(succeeded); };
}

void PanelWindow::showOpened(const MockupSession::Frame& frame) {
  errorBar_->hide();
  emptyState_->hide();
  thumbnails_.clear();
  inspector_->setThumbnails(thumbnails_);
  artboards_->setArtboards(session_.artboards());
  canvas_->setCanChangeShapes(session_.canChangeShapes());
  inspector_->setCanMakeShapes(session_.canChangeShapes());
  updateViews();
  showFrame(frame);
  canvas_->fit();
  canvas_->setDrawing(frame.arrangement.shapes.isEmpty());
  canvas_->setFocus();
  if (onOpened) onOpened();
}

void PanelWindow::showFrame(const MockupSession::Frame& frame) {
  if (!frame.image) showError(messageOf(frame.image.error()));
  showImage(frame);
  canvas_->setProblems(frame.shapeProblems);
  inspector_->setProblems(frame.shapeProblems);
  if (!session_.isBusy()) inspector_->setBusy(false);
  showPreview();
}

void PanelWindow::showImage(const MockupSession::Frame& frame) {
  const bool isShown = frame.arrangement.artboard == session_.model().arrangement().artboard;
  if (!frame.image || !isShown) return;
  const bool isFirst = canvas_->image().isNull();
  canvas_->setImage(*frame.image, frame.background);
  shownArtboard_ = frame.arrangement.artboard;
  if (isFirst) canvas_->fit();
}

void PanelWindow::showDrawingRequested() {
  inspector_->setBusy(true);
  const QString artboard = session_.model().arrangement().artboard;
  if (shownArtboard_ == artboard) return;
  // Shapes must not appear on the image of another artboard.
  canvas_->setImage({}, {});
  shownArtboard_ = artboard;
}

void PanelWindow::showPreview() {
  const double ratio = devicePixelRatioF();
  const QRect bounds = selectionBounds(session_.model());
  const QImage part =
      bounds.isEmpty() ? QImage() : canvas_->image().part(bounds, kPreviewSize * ratio);
  inspector_->setPreview(inPoints(part, ratio));
}

void PanelWindow::showThumbnail(const QString& design, const QImage& thumbnail) {
  const ImageRef image = inPoints(thumbnail, devicePixelRatioF());
  if (!image) return;
  thumbnails_.insert(design, image);
  inspector_->setThumbnails(thumbnails_);
}

void PanelWindow::showError(const QString& message) {
  statusBar_->setStatus({});
  errorBar_->showError(message);
  if (onFailed) onFailed(message);
}

void PanelWindow::showDiskConflict() {
  if (diskConflict_) return;
  diskConflict_ = promptDiskConflict(
      this, session_.file(), [this] { session_.reload(); }, [this] { session_.keepChanges(); });
}

void PanelWindow::updateViews() {
  canvas_->updateFromModel();
  inspector_->updateFromModel();
  artboards_->setShown(session_.model().arrangement().artboard);
  showPreview();
  updateActions();
}

void PanelWindow::updateActions() {
  actions_->update();
  statusBar_->setZoom(canvas_->viewport().zoom() * devicePixelRatioF());
  const QString name = QFileInfo(session_.shownFile()).fileName();
  setWindowTitle(session_.hasMockup() ? name + QStringLiteral("[*] – Kelvar")
                                      : QStringLiteral("Kelvar"));
  setWindowModified(session_.isModified());
}

void PanelWindow::chooseFileToOpen() {
  confirmUnsavedThen([this] {
    cli::chooseFileToOpen(this, [this](const QString& file) { session_.open(file); });
  });
}

void PanelWindow::addChosenDesigns() {
  chooseDesigns(this, [this](const QStringList& files) {
    const QStringList selection = session_.model().selection();
    const bool isForShape = selection.size() == 1 && files.size() == 1;
    session_.addDesigns(files, isForShape ? selection.first() : QString());
  });
}

void PanelWindow::exportToChosen() {
  chooseFileToExport(this, session_, [this](const QString& file) {
    confirmReplace(this, file, session_.model().arrangement(),
                   [this, file] { session_.exportTo(file); });
  });
}

void PanelWindow::save(const std::function<void()>& then) {
  if (session_.file().isEmpty()) return saveAs(then);
  session_.save(session_.file(), then);
}

void PanelWindow::saveAs(const std::function<void()>& then) {
  chooseFileToSave(this, session_,
                   [this, then](const QString& file) { session_.save(file, then); });
}

void PanelWindow::confirmUnsavedThen(const std::function<void()>& then) {
  if (!session_.isModified()) return then();
  promptUnsaved(
      this, session_.isDocument(), [this, then] { save(then); }, then);
}

void PanelWindow::dropFiles(const QStringList& files, const QString& shape) {
  if (session_.hasMockup() && !MockupSession::isMockupFile(files.first())) {
    return session_.addDesigns(files, shape);
  }
  confirmUnsavedThen([this, files] { session_.open(files.first()); });
}

void PanelWindow::didWrite(bool succeeded) {
  if (succeeded) {
    errorBar_->hide();
  } else {
    closesWhenWritten_ = false;
  }
  if (session_.isWriting() || !std::exchange(closesWhenWritten_, false)) return;
  QMetaObject::invokeMethod(this, &QWidget::close, Qt::QueuedConnection);
}

void PanelWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (session_.isModified()) {
    return confirmUnsavedThen([this] {
      session_.discardChanges();
      close();
    });
  }
  if (!session_.isWriting() || closesWhenWritten_) return event->accept();
  closesWhenWritten_ = true;
  statusBar_->setStatus(
      QStringLiteral("Closing when the file is written; close again to cancel writing"));
}

}  // namespace kelvar::cli
