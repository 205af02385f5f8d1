#include "app/panel/PanelWindow.h"

#include <QClipboard>
#include <QCloseEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QSplitter>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <cmath>

#include "host/PhotoMockup.h"
#include "platform/Bundle.h"
#include "platform/FileName.h"
#include "platform/ImageFile.h"
#include "ui/ElidedLabel.h"
#include "ui/WrappingLabel.h"

namespace kelvar::app {
namespace {

/// Points: pictures in menus and choosers, and of the selected shapes.
constexpr int kThumbnailSide = 128;
constexpr QSize kPreviewSize(480, 320);
constexpr double kZoomStep = 1.25;

const char* const kPictures = "*.png *.jpg *.jpeg *.webp *.svg";

bool isArrangementFile(const QString& file) {
  return file.endsWith(QStringLiteral(".json"), Qt::CaseInsensitive);
}

QString nameOf(const QString& file) { return QFileInfo(file).fileName(); }

bool isSameFile(const QString& a, const QString& b) {
  const QString file = QFileInfo(a).canonicalFilePath();
  return !file.isEmpty() && file == QFileInfo(b).canonicalFilePath();
}

/// `picture` within `side` points on a screen of that resolution.
ImageRef inPoints(const QImage& picture, double ratio) {
  if (picture.isNull()) return nullptr;
  return std::make_shared<Image>(picture, QSizeF(picture.size()) / ratio);
}

QRect boundsOf(const PanelModel& model) {
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
  artboards_ = new ArtboardChooser(this);
  makeViews();
  makeFileActions();
  makeEditActions();
  makeViewActions();
  makeToolBar();
  resize(1240, 820);
  model_.didChange = [this] { modelDidChange(); };
  drawing_.didDraw = [this](const BackgroundDrawing::Result& r) { drawingDidFinish(r); };
  watch_.didChange = [this](const QStringList& files) { filesDidChange(files); };
  modelDidChange();
}

PanelWindow::~PanelWindow() { model_.didChange = nullptr; }

bool PanelWindow::stop(int milliseconds) {
  thumbnailing_.request_stop();
  return drawing_.stop(milliseconds);
}

void PanelWindow::makeViews() {
  splitter_ = new QSplitter(Qt::Horizontal, this);
  splitter_->setChildrenCollapsible(false);
  splitter_->setHandleWidth(1);
  column_ = new PanelColumn(&model_, splitter_);
  splitter_->addWidget(makeLeft());
  splitter_->addWidget(column_);
  splitter_->setStretchFactor(0, 1);
  splitter_->setSizes({900, 340});
  setCentralWidget(splitter_);
  column_->didPressRefresh = [this] { refreshSelected(); };
  column_->didDropFiles = [this](const QStringList& files, const QString& shape) {
    addDesigns(files, shape);
  };
}

QWidget* PanelWindow::makeLeft() {
  auto* const left = new QWidget;
  auto* const stack = new QVBoxLayout(left);
  stack->setContentsMargins(0, 0, 0, 0);
  stack->setSpacing(0);
  photoView_ = new PhotoView(&model_);
  photoView_->stateDidChange = [this] { updateActions(); };
  photoView_->didDropFiles = [this](const QStringList& files, const QString& shape) {
    dropFiles(files, shape);
  };
  welcome_ = makeWelcome();
  stack->addWidget(makeErrorBar());
  stack->addWidget(photoView_, 1);
  stack->addWidget(makeZoomBar());
  return left;
}

/// What stands in the place of a photo until there is one.
QWidget* PanelWindow::makeWelcome() {
  auto* const welcome = new QWidget(photoView_);
  auto* const open = new QPushButton(QStringLiteral("Open a Photo or a Document…"));
  open->setObjectName(QStringLiteral("openButton"));
  connect(open, &QPushButton::clicked, this, [this] { chooseFileToOpen(); });
  auto* const hint = new QLabel(QStringLiteral("or drop one here, or a saved arrangement"));
  hint->setAlignment(Qt::AlignCenter);
  hint->setWordWrap(true);
  hint->setForegroundRole(QPalette::PlaceholderText);
  auto* const stack = new QVBoxLayout(welcome);
  stack->setSpacing(10);
  stack->addWidget(open, 0, Qt::AlignCenter);
  stack->addWidget(hint);
  auto* const middle = new QVBoxLayout(photoView_);
  middle->addWidget(welcome, 0, Qt::AlignCenter);
  return welcome;
}

QWidget* PanelWindow::makeErrorBar() {
  errorBar_ = new QFrame;
  errorBar_->setObjectName(QStringLiteral("errorBar"));
  errorBar_->setStyleSheet(
      QStringLiteral("#errorBar { background: #b3261e; } #errorBar QLabel, #errorBar QToolButton "
                     "{ color: white; } #errorBar QToolButton:focus { border: 1px solid white; }"));
  // Of any length, and without words to break at where it names a path.
  errorLabel_ = new WrappingLabel;
  errorLabel_->setObjectName(QStringLiteral("errorLabel"));
  errorLabel_->setContextMenuPolicy(Qt::ActionsContextMenu);
  auto* const copy = new QAction(QStringLiteral("Copy"), errorLabel_);
  connect(copy, &QAction::triggered, this,
          [this] { QGuiApplication::clipboard()->setText(errorLabel_->text()); });
  errorLabel_->addAction(copy);
  auto* const close = new QToolButton;
  close->setText(QStringLiteral("✕"));
  close->setAutoRaise(true);
  close->setAccessibleName(QStringLiteral("Dismiss"));
  close->setFocusPolicy(Qt::TabFocus);
  connect(close, &QToolButton::clicked, errorBar_, &QWidget::hide);
  auto* const line = new QHBoxLayout(errorBar_);
  line->setContentsMargins(16, 8, 8, 8);
  line->addWidget(errorLabel_, 1);
  line->addWidget(close);
  errorBar_->hide();
  return errorBar_;
}

QWidget* PanelWindow::makeZoomBar() {
  auto* const bar = new QWidget;
  auto* const line = new QHBoxLayout(bar);
  line->setContentsMargins(12, 4, 8, 4);
  line->setSpacing(2);
  status_ = new ElidedLabel;
  status_->setObjectName(QStringLiteral("status"));
  status_->setForegroundRole(QPalette::PlaceholderText);
  line->addWidget(status_, 1);
  const auto add = [&](const QString& text, const QString& name, auto run) {
    auto* const button = new QToolButton;
    button->setText(text);
    button->setAutoRaise(true);
    button->setAccessibleName(name);
    button->setToolTip(name);
    button->setFocusPolicy(Qt::TabFocus);
    connect(button, &QToolButton::clicked, this, run);
    line->addWidget(button);
    return button;
  };
  add(QStringLiteral("−"), QStringLiteral("Zoom out"),
      [this] { photoView_->zoomBy(1 / kZoomStep); });
  zoomButton_ =
      add(QStringLiteral("100%"), QStringLiteral("Fit the picture"), [this] { photoView_->fit(); });
  zoomButton_->setMinimumWidth(56);
  add(QStringLiteral("+"), QStringLiteral("Zoom in"), [this] { photoView_->zoomBy(kZoomStep); });
  return bar;
}

QAction* PanelWindow::addAction(const QString& menu, const QString& text, const QKeySequence& key,
                                std::function<void()> run) {
  QMenu* found = menuBar()->findChild<QMenu*>(menu);
  if (!found) {
    found = menuBar()->addMenu(u'&' + menu);
    found->setObjectName(menu);
  }
  QAction* const action = found->addAction(text);
  action->setShortcut(key);
  connect(action, &QAction::triggered, this, [run = std::move(run)] { run(); });
  const QString name = QString(text).remove(u'&').remove(QStringLiteral("…"));
  action->setObjectName(name);
  actions_.insert(name, action);
  return action;
}

void PanelWindow::makeFileActions() {
  const QString file = QStringLiteral("File");
  addAction(file, QStringLiteral("&Open…"), QKeySequence::Open, [this] { chooseFileToOpen(); });
  addAction(file, QStringLiteral("Add &Designs…"), QKeySequence(QStringLiteral("Ctrl+D")),
            [this] { chooseDesigns(); });
  addAction(file, QStringLiteral("&Save"), QKeySequence::Save, [this] { save(); });
  addAction(file, QStringLiteral("Save &As…"), QKeySequence(QStringLiteral("Ctrl+Shift+S")),
            [this] { chooseFileToSave(); });
  addAction(file, QStringLiteral("&Export…"), QKeySequence(QStringLiteral("Ctrl+E")),
            [this] { chooseFileToExport(); });
  addAction(file, QStringLiteral("&Quit"), QKeySequence::Quit, [this] { close(); });
}

void PanelWindow::makeEditActions() {
  const QString edit = QStringLiteral("Edit");
  addAction(edit, QStringLiteral("&Undo"), QKeySequence::Undo, [this] { model_.undo(); });
  addAction(edit, QStringLiteral("&Redo"), QKeySequence(QStringLiteral("Ctrl+Shift+Z")),
            [this] { model_.redo(); });
  addAction(edit, QStringLiteral("&New Shape"), QKeySequence(Qt::Key_N), [this] {
    photoView_->setDrawing(!photoView_->isDrawing());
  })->setCheckable(true);
  addAction(edit, QStringLiteral("&Delete Shape"), QKeySequence::Delete,
            [this] { model_.removeSelected(); });
  addAction(edit, QStringLiteral("Select &All"), QKeySequence::SelectAll, [this] {
    QStringList all;
    for (const Arrangement::Shape& shape : model_.arrangement().shapesInSight()) {
      all.append(shape.id);
    }
    model_.select(all);
  });
}

void PanelWindow::makeViewActions() {
  const QString view = QStringLiteral("View");
  QAction* const zoomIn =
      addAction(view, QStringLiteral("Zoom &In"), {}, [this] { photoView_->zoomBy(kZoomStep); });
  zoomIn->setShortcuts(
      {QKeySequence(QStringLiteral("Ctrl++")), QKeySequence(QStringLiteral("Ctrl+="))});
  addAction(view, QStringLiteral("Zoom &Out"), QKeySequence(QStringLiteral("Ctrl+-")),
            [this] { photoView_->zoomBy(1 / kZoomStep); });
  addAction(view, QStringLiteral("&Actual Pixels"), QKeySequence(QStringLiteral("Ctrl+1")),
            [this] { photoView_->zoomTo(1 / devicePixelRatioF()); });
  addAction(view, QStringLiteral("&Fit"), QKeySequence(QStringLiteral("Ctrl+0")),
            [this] { photoView_->fit(); });
  addAction(view, QStringLiteral("&Next Artboard"), QKeySequence(QStringLiteral("Ctrl+PgDown")),
            [this] { artboards_->step(1); });
  addAction(view, QStringLiteral("&Previous Artboard"), QKeySequence(QStringLiteral("Ctrl+PgUp")),
            [this] { artboards_->step(-1); });
}

void PanelWindow::makeToolBar() {
  auto* const bar = addToolBar(QStringLiteral("Tools"));
  bar->setObjectName(QStringLiteral("toolBar"));
  bar->setMovable(false);
  bar->setContextMenuPolicy(Qt::PreventContextMenu);
  const auto add = [&](const char* name) {
    QAction* const action = actions_.value(QLatin1String(name));
    bar->addAction(action);
    bar->widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
  };
  for (const char* name : {"Open", "Add Designs"}) add(name);
  bar->addSeparator();
  for (const char* name : {"New Shape", "Undo", "Redo"}) add(name);
  artboards_->didChoose = [this](const QString& artboard) { model_.showArtboard(artboard); };
  artboardsAction_ = bar->addWidget(artboards_);
  auto* const space = new QWidget;
  space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  bar->addWidget(space);
  for (const char* name : {"Save", "Export"}) add(name);
}

void PanelWindow::open(const QString& file, const DocumentMockup::Choice& choice) {
  say(QStringLiteral("Opening %1…").arg(nameOf(file)));
  selectionBefore_.clear();
  reloading_.reset();
  if (SketchDocument::hasKnownEnding(file)) return openDocument(file, choice);
  Arrangement arrangement;
  arrangement.photo = absoluteFileName(file);
  if (isArrangementFile(file)) {
    QString error;
    const auto read = Arrangement::read(file, &error);
    if (!read) return fail(error);
    arrangement = *read;
  }
  startOpening(std::make_shared<PhotoMockup>(arrangement), file);
}

void PanelWindow::openDocument(const QString& file, const DocumentMockup::Choice& choice) {
  reading_ = file;
  thumbnailing_.request_stop();
  struct Answer {
    std::shared_ptr<DocumentMockup> document;
    QString error;
  };
  const auto read = [file, choice] {
    Answer answer;
    answer.document = DocumentMockup::open(file, choice, &answer.error);
    return answer;
  };
  drawing_.run(read, [this, file](const Answer& answer) {
    if (reading_ != file) return;
    if (answer.document) return startOpening(answer.document, file);
    fail(answer.error);
    loadThumbnails();
  });
}

void PanelWindow::startOpening(const std::shared_ptr<Mockup>& mockup, const QString& file) {
  reading_.clear();
  thumbnailing_.request_stop();
  opening_ = mockup;
  openingFile_ = file;
  drawing_.draw(mockup, mockup->arrangement());
}

void PanelWindow::drawingDidFinish(const BackgroundDrawing::Result& result) {
  if (result.mockup == opening_) {
    opening_ = nullptr;
    opened(result);
  } else if (result.mockup == mockup_) {
    showDrawing(result);
  }
}

void PanelWindow::opened(const BackgroundDrawing::Result& result) {
  say({});
  if (result.picture.isNull()) {
    fail(result.problem);
    if (!mockup_) return;
    // What is open may have been changed meanwhile, and was no longer drawn.
    drawing_.draw(mockup_, requested_);
    return loadThumbnails();
  }
  const auto before = std::exchange(reloading_, std::nullopt);
  if (before && before->shapes != model_.arrangement().shapes) {
    drawing_.draw(mockup_, requested_);
    loadThumbnails();
    return askWhichToKeep();
  }
  errorBar_->hide();
  welcome_->hide();
  mockup_ = result.mockup;
  document_ = std::dynamic_pointer_cast<DocumentMockup>(mockup_);
  hasRemapped_ = false;
  Bundle::setHostInformation(document_ ? document_->hostInformation() : QVariantMap());
  file_ = document_ || isArrangementFile(openingFile_) ? openingFile_ : QString();
  requested_ = result.arrangement;
  thumbnails_.clear();
  artboards_->setArtboards(mockup_->artboards());
  photoView_->setCanChangeShapes(mockup_->canChangeShapes());
  column_->setCanMakeShapes(mockup_->canChangeShapes());
  model_.open(result.arrangement);
  showDrawing(result);
  if (document_) model_.select(document_->chosenShapes() + std::exchange(selectionBefore_, {}));
  photoView_->fit();
  photoView_->setDrawing(result.arrangement.shapes.isEmpty());
  photoView_->setFocus();
  loadThumbnails();
  readDesigns(std::exchange(waitingDesigns_, {}),
              [this](const QString& file) { return model_.addOpenedDesign(file); });
  if (didOpen) didOpen();
}

void PanelWindow::showDrawing(const BackgroundDrawing::Result& result) {
  if (!result.problem.isEmpty()) fail(result.problem);
  showPicture(result);
  photoView_->setProblems(result.shapeProblems);
  column_->setProblems(result.shapeProblems);
  if (!isBusy()) column_->setBusy(false);
  showPreview();
}

void PanelWindow::showPicture(const BackgroundDrawing::Result& result) {
  const bool isInSight = result.arrangement.artboard == model_.arrangement().artboard;
  if (result.picture.isNull() || !isInSight) return;
  const bool isFirst = photoView_->picture().isNull();
  photoView_->setPicture(result.picture, result.ground);
  if (isFirst) photoView_->fit();
}

void PanelWindow::showPreview() {
  const double ratio = devicePixelRatioF();
  const QRect bounds = boundsOf(model_);
  const QImage part =
      bounds.isEmpty() ? QImage() : photoView_->picture().part(bounds, kPreviewSize * ratio);
  column_->setPreview(inPoints(part, ratio));
}

void PanelWindow::modelDidChange() {
  photoView_->modelDidChange();
  column_->modelDidChange();
  artboards_->setShown(model_.arrangement().artboard);
  artboardsAction_->setVisible(artboards_->count() > 0);
  requestDrawing();
  showPreview();
  updateActions();
  watchFiles();
}

void PanelWindow::watchFiles() {
  QStringList files{document_ ? file_ : model_.arrangement().photo};
  for (const Arrangement::Design& design : model_.arrangement().designs) files.append(design.file);
  files.removeAll(QString());
  files.sort();
  files.removeDuplicates();
  watch_.setFiles(files);
}

void PanelWindow::requestDrawing() {
  if (!mockup_ || requested_ == model_.arrangement()) return;
  // Shapes are not to be seen on the picture of another artboard.
  if (requested_.artboard != model_.arrangement().artboard) photoView_->setPicture({}, {});
  requested_ = model_.arrangement();
  drawRequested();
}

/// What is being opened is drawn first: then it is known what is to be drawn.
void PanelWindow::drawRequested() {
  if (!opening_) drawing_.draw(mockup_, requested_);
  column_->setBusy(true);
}

void PanelWindow::updateActions() {
  const bool hasMockup = mockup_ != nullptr;
  const auto enable = [&](const char* name, bool enabled) {
    if (QAction* const action = actions_.value(QLatin1String(name))) action->setEnabled(enabled);
  };
  for (const char* name : {"Add Designs", "Save", "Save As", "Export", "Select All", "Zoom In",
                           "Zoom Out", "Actual Pixels", "Fit"}) {
    enable(name, hasMockup);
  }
  enable("Undo", model_.canUndo());
  enable("Redo", model_.canRedo());
  enable("Next Artboard", artboards_->hasNext(1));
  enable("Previous Artboard", artboards_->hasNext(-1));
  const bool canChangeShapes = hasMockup && mockup_->canChangeShapes();
  enable("New Shape", canChangeShapes);
  enable("Delete Shape", canChangeShapes && !model_.selection().isEmpty());
  if (QAction* const shape = actions_.value(QStringLiteral("New Shape"))) {
    shape->setChecked(photoView_->isDrawing());
  }
  zoomButton_->setText(QStringLiteral("%1%").arg(
      std::round(photoView_->viewport().zoom() * devicePixelRatioF() * 100)));
  const QString file = file_.isEmpty() ? model_.arrangement().photo : file_;
  setWindowTitle(hasMockup ? nameOf(file) + QStringLiteral("[*] – Kelvar")
                           : QStringLiteral("Kelvar"));
  setWindowModified(hasMockup && isModified());
}

void PanelWindow::addDesigns(const QStringList& files, const QString& shape) {
  if (!mockup_) {
    waitingDesigns_ += files;
    return;
  }
  readDesigns(files, [this, shape](const QString& file) {
    model_.beginStep();
    const QString design = model_.addDesign(file);
    if (!shape.isEmpty()) model_.setDesign(shape, design);
    model_.endStep();
    return design;
  });
}

void PanelWindow::readDesigns(const QStringList& files,
                              const std::function<QString(const QString& file)>& add) {
  for (const QString& file : files) {
    struct Answer {
      QImage picture;
      QString error;
    };
    const int side = int(kThumbnailSide * devicePixelRatioF());
    const auto read = [mockup = mockup_, file, side] {
      Answer answer;
      const QString path = absoluteFileName(file);
      const ImageRef picture = mockup->designPicture({{}, {}, path}, side, &answer.error);
      if (picture) answer.picture = PicturePyramid::within(picture->pixels(), side);
      return answer;
    };
    drawing_.run(read, [this, mockup = mockup_, file, add](const Answer& answer) {
      if (mockup != mockup_) return;
      if (answer.picture.isNull()) return fail(answer.error);
      showThumbnail(add(file), answer.picture);
    });
  }
}

void PanelWindow::showThumbnail(const QString& design, const QImage& picture) {
  const ImageRef image = inPoints(picture, devicePixelRatioF());
  if (!image) return;
  thumbnails_.insert(design, image);
  column_->setThumbnails(thumbnails_);
}

void PanelWindow::loadThumbnails() {
  if (!mockup_) return;
  thumbnailing_.request_stop();
  thumbnailing_ = std::stop_source();
  const int side = int(kThumbnailSide * devicePixelRatioF());
  for (const Arrangement::Design& design : model_.arrangement().designs) {
    const auto read = [mockup = mockup_, design, side, stop = thumbnailing_.get_token()] {
      if (stop.stop_requested()) return QImage();
      QString error;
      const ImageRef picture = mockup->designPicture(design, side, &error, stop);
      return picture ? PicturePyramid::within(picture->pixels(), side) : QImage();
    };
    drawing_.run(read, [this, mockup = mockup_, id = design.id](const QImage& picture) {
      if (mockup == mockup_) showThumbnail(id, picture);
    });
  }
}

void PanelWindow::refreshSelected() {
  QList<Arrangement::Design> designs;
  for (const QString& id : model_.selection()) {
    const QString design = model_.arrangement().shape(id)->design;
    if (const auto* found = model_.arrangement().design(design)) designs.append(*found);
  }
  if (!mockup_ || designs.isEmpty()) return;
  const auto refresh = [mockup = mockup_, designs] {
    for (const Arrangement::Design& design : designs) mockup->refresh(design);
    return 0;
  };
  drawing_.run(refresh, [](int) {});
  drawAnew();
}

void PanelWindow::filesDidChange(const QStringList& files) {
  if (!mockup_) return;
  const bool isDocument = document_ && files.contains(file_);
  if (isDocument) documentDidChangeOnDisk();
  if (files.size() > (isDocument ? 1 : 0)) drawAnew();
}

/// The same arrangement, of designs that are no longer the same.
void PanelWindow::drawAnew() {
  hasRemapped_ = document_ != nullptr;
  drawRequested();
  loadThumbnails();
  updateActions();
}

void PanelWindow::documentDidChangeOnDisk() {
  if (!fileExists(file_)) {
    return say(QStringLiteral("%1 is gone; Save writes it again").arg(nameOf(file_)));
  }
  // In its turn: it may be our own change, that is being written.
  const auto compare = [document = document_, file = file_] {
    return document->hasChangedOnDisk(file);
  };
  drawing_.run(compare, [this, document = document_](bool hasChanged) {
    if (!hasChanged || document != document_) return;
    isModified() ? askWhichToKeep() : reload();
  });
}

void PanelWindow::reload() {
  const Arrangement before = model_.arrangement();
  open(file_, {.artboardBefore = before.artboard});
  selectionBefore_ = model_.selection();
  reloading_ = before;
}

void PanelWindow::askWhichToKeep() {
  if (diskQuestion_) return;
  diskQuestion_ = new QMessageBox(
      QMessageBox::Warning, QStringLiteral("Kelvar"),
      QStringLiteral("%1 has changed on disk, and you have changed it here.").arg(nameOf(file_)),
      QMessageBox::NoButton, this);
  diskQuestion_->setInformativeText(
      QStringLiteral("Reload it, and your changes here are gone. Keep yours, and the next Save "
                     "replaces what is on disk."));
  diskQuestion_->setAttribute(Qt::WA_DeleteOnClose);
  const auto* const reloads =
      diskQuestion_->addButton(QStringLiteral("Reload"), QMessageBox::DestructiveRole);
  QPushButton* const keeps =
      diskQuestion_->addButton(QStringLiteral("Keep Mine"), QMessageBox::AcceptRole);
  // Closing the question decides nothing: it comes again with the next Save.
  diskQuestion_->setEscapeButton(
      diskQuestion_->addButton(QStringLiteral("Decide Later"), QMessageBox::RejectRole));
  diskQuestion_->setDefaultButton(keeps);
  connect(diskQuestion_, &QMessageBox::buttonClicked, this, [=, this](const QAbstractButton* b) {
    if (b == reloads) reload();
    if (b != keeps) return;
    const auto disregard = [document = document_] {
      document->disregardDisk();
      return 0;
    };
    drawing_.run(disregard, [](int) {});
  });
  diskQuestion_->open();
}

void PanelWindow::fail(const QString& sentence) {
  say({});
  errorLabel_->setText(sentence);
  errorBar_->show();
  if (didFail) didFail(sentence);
}

void PanelWindow::say(const QString& sentence) { status_->setText(sentence); }

void PanelWindow::dropFiles(const QStringList& files, const QString& shape) {
  const bool opens =
      !mockup_ || isArrangementFile(files.first()) || SketchDocument::hasKnownEnding(files.first());
  if (!opens) return addDesigns(files, shape);
  whenUnsavedAreSettled([this, files] { open(files.first()); });
}

void PanelWindow::chooseFileToOpen() {
  whenUnsavedAreSettled([this] {
    auto* const dialog =
        new QFileDialog(this, QStringLiteral("Open a Photo or a Document"), {},
                        QStringLiteral("Photos, documents and arrangements (%1 *.sketch *.json);;"
                                       "All files (*)")
                            .arg(QLatin1String(kPictures)));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFile);
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& f) { open(f); });
    dialog->open();
  });
}

void PanelWindow::chooseDesigns() {
  auto* const dialog =
      new QFileDialog(this, QStringLiteral("Add Designs"), {},
                      QStringLiteral("Pictures (%1);;All files (*)").arg(QLatin1String(kPictures)));
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setFileMode(QFileDialog::ExistingFiles);
  connect(dialog, &QFileDialog::filesSelected, this, [this](const QStringList& files) {
    const QStringList selection = model_.selection();
    addDesigns(files, selection.size() == 1 && files.size() == 1 ? selection.first() : QString());
  });
  dialog->open();
}

void PanelWindow::save() {
  if (file_.isEmpty()) return chooseFileToSave();
  saveAs(file_);
}

void PanelWindow::saveAs(const QString& file) {
  const bool hasItsEnding =
      document_ ? SketchDocument::hasKnownEnding(file) : isArrangementFile(file);
  if (!hasItsEnding) {
    afterSaving_ = nullptr;
    // It would not be known again when it is opened, and may be the photo itself.
    return fail(QStringLiteral("cannot save %1: the name has to end in %2")
                    .arg(file, QLatin1String(document_ ? ".sketch" : ".json")));
  }
  const Arrangement arrangement = model_.arrangement();
  struct Answer {
    bool hasChangedOnDisk = false;
    QString error;
  };
  const auto write = [mockup = mockup_, document = document_, arrangement, file] {
    Answer answer;
    answer.hasChangedOnDisk = document && document->hasChangedOnDisk(file);
    if (!answer.hasChangedOnDisk) mockup->save(arrangement, file, &answer.error);
    return answer;
  };
  ++writing_;
  drawing_.run(write, [this, mockup = mockup_, arrangement, file](const Answer& answer) {
    const std::function<void()> then = std::exchange(afterSaving_, nullptr);
    didWrite(answer.error.isEmpty() && !answer.hasChangedOnDisk);
    if (!answer.error.isEmpty()) return fail(answer.error);
    if (mockup != mockup_) return;
    if (answer.hasChangedOnDisk) return askWhichToKeep();
    file_ = file;
    hasRemapped_ = false;
    errorBar_->hide();
    model_.markSaved(arrangement);
    say(QStringLiteral("Saved %1").arg(nameOf(file)));
    if (then) then();
  });
}

void PanelWindow::exportTo(const QString& file) {
  const Arrangement arrangement = model_.arrangement();
  const auto write = [mockup = mockup_, arrangement, file, stop = drawing_.stopToken()] {
    QString error;
    const ImageRef picture = mockup->exportPicture(arrangement, &error, stop);
    return picture && ImageFile::write(*picture, file, &error) ? QString() : error;
  };
  say(QStringLiteral("Exporting…"));
  ++writing_;
  drawing_.run(write, [this, file](const QString& error) {
    didWrite(error.isEmpty());
    if (!error.isEmpty()) return fail(error);
    errorBar_->hide();
    say(QStringLiteral("Exported %1").arg(nameOf(file)));
  });
}

void PanelWindow::didWrite(bool isDone) {
  --writing_;
  if (!isDone) closesWhenWritten_ = false;
  if (writing_ > 0 || !std::exchange(closesWhenWritten_, false)) return;
  // Later: what was saved is yet to be noted.
  QMetaObject::invokeMethod(this, &QWidget::close, Qt::QueuedConnection);
}

void PanelWindow::chooseFileToSave() {
  auto* const dialog = document_ ? new QFileDialog(this, QStringLiteral("Save the Document"), {},
                                                   QStringLiteral("Sketch documents (*.sketch)"))
                                 : new QFileDialog(this, QStringLiteral("Save the Arrangement"), {},
                                                   QStringLiteral("Arrangements (*.json)"));
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  const QString suffix = document_ ? QStringLiteral("sketch") : QStringLiteral("json");
  dialog->setDefaultSuffix(suffix);
  const QFileInfo from(document_ ? file_ : model_.arrangement().photo);
  dialog->setDirectory(from.absolutePath());
  dialog->selectFile(from.completeBaseName() + u'.' + suffix);
  connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& f) { saveAs(f); });
  connect(dialog, &QFileDialog::rejected, this, [this] { afterSaving_ = nullptr; });
  dialog->open();
}

void PanelWindow::chooseFileToExport() {
  auto* const dialog =
      new QFileDialog(this, QStringLiteral("Export"), {},
                      QStringLiteral("PNG (*.png);;JPEG (*.jpg *.jpeg);;WebP (*.webp)"));
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  dialog->setOption(QFileDialog::DontConfirmOverwrite);
  const auto takeEnding = [dialog](const QString& filter) {
    dialog->setDefaultSuffix(filter.section(u'.', 1).section(u' ', 0, 0).remove(u')'));
  };
  takeEnding(dialog->selectedNameFilter());
  connect(dialog, &QFileDialog::filterSelected, dialog, takeEnding);
  const QFileInfo from(file_.isEmpty() ? model_.arrangement().photo : file_);
  dialog->setDirectory(from.absolutePath());
  dialog->selectFile(from.completeBaseName() + QStringLiteral("-mockup.png"));
  connect(dialog, &QFileDialog::fileSelected, this,
          [this](const QString& f) { whenMayBeReplaced(f, [this, f] { exportTo(f); }); });
  dialog->open();
}

void PanelWindow::whenMayBeReplaced(const QString& file, const std::function<void()>& then) {
  if (!QFileInfo::exists(file)) return then();
  const Arrangement& arrangement = model_.arrangement();
  const bool isPhoto = isSameFile(file, arrangement.photo);
  const bool isDesign =
      std::any_of(arrangement.designs.begin(), arrangement.designs.end(),
                  [&](const Arrangement::Design& design) { return isSameFile(file, design.file); });
  QString fact = QStringLiteral("%1 already exists.");
  QString loss = QStringLiteral("Its contents are lost.");
  if (isPhoto) {
    fact = QStringLiteral("%1 is the photo of this mockup.");
    loss = QStringLiteral("The photo without designs is lost, also to this mockup.");
  } else if (isDesign) {
    fact = QStringLiteral("%1 is a design of this mockup.");
    loss = QStringLiteral("The design is lost, also to this mockup.");
  }
  auto* const box = new QMessageBox(
      QMessageBox::Warning, QStringLiteral("Kelvar"),
      fact.arg(nameOf(file)) + QStringLiteral(" Replace it with the exported picture?"),
      QMessageBox::Cancel, this);
  box->setInformativeText(loss);
  box->setAttribute(Qt::WA_DeleteOnClose);
  const auto* const replaces =
      box->addButton(QStringLiteral("Replace"), QMessageBox::DestructiveRole);
  box->setDefaultButton(QMessageBox::Cancel);
  connect(box, &QMessageBox::buttonClicked, this, [=](const QAbstractButton* button) {
    if (button == replaces) then();
  });
  box->open();
}

void PanelWindow::whenUnsavedAreSettled(const std::function<void()>& then) {
  if (!mockup_ || !isModified()) return then();
  auto* const box = new QMessageBox(
      QMessageBox::Question, QStringLiteral("Kelvar"),
      QStringLiteral("Save the changes to this %1?")
          .arg(document_ ? QStringLiteral("document") : QStringLiteral("arrangement")),
      QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, this);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setDefaultButton(QMessageBox::Save);
  connect(box, &QMessageBox::finished, this, [this, then](int button) {
    if (button == QMessageBox::Discard) then();
    if (button != QMessageBox::Save) return;
    afterSaving_ = then;
    save();
  });
  box->open();
}

void PanelWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (!mockup_ || !isModified()) {
    if (writing_ == 0 || closesWhenWritten_) return event->accept();
    closesWhenWritten_ = true;
    return say(QStringLiteral("Closes when the file is written; close again to give it up"));
  }
  whenUnsavedAreSettled([this] {
    hasRemapped_ = false;
    model_.markSaved(model_.arrangement());
    close();
  });
}

}  // namespace kelvar::app
