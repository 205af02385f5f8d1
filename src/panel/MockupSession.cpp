#include "panel/MockupSession.h"

#include <QFileInfo>
#include <utility>

#include "mockup/PhotoMockup.h"
#include "platform/Bundle.h"
#include "platform/QtError.h"
#include "platform/files/FileName.h"
#include "platform/image/ImageFile.h"

namespace kelvar::cli {
namespace {

bool isArrangementFile(const QString& file) {
  return file.endsWith(QStringLiteral(".json"), Qt::CaseInsensitive);
}

QString nameOf(const QString& file) { return QFileInfo(file).fileName(); }

template <class Callback, class... Arguments>
void notify(const Callback& callback, const Arguments&... arguments) {
  if (callback) callback(arguments...);
}

Result<void> writeExport(Mockup& mockup, const Arrangement& arrangement, const QString& file,
                         const std::stop_token& stop) {
  return mockup.exportImage(arrangement, stop).and_then([&](const ImageRef& image) {
    return ImageFile::write(*image, file);
  });
}

}  // namespace

MockupSession::MockupSession() {
  model_.onChanged = [this] { modelDidChange(); };
  watcher_.onChanged = [this](const QStringList& files) { filesDidChange(files); };
  worker_.onDrawn = [this](const Frame& frame) { drawingDidFinish(frame); };
}

bool MockupSession::stop(int milliseconds) {
  thumbnails_.cancel();
  return worker_.stop(milliseconds);
}

QList<Mockup::Artboard> MockupSession::artboards() const {
  return mockup_ ? mockup_->artboards() : QList<Mockup::Artboard>();
}

bool MockupSession::isMockupFile(const QString& file) {
  return isArrangementFile(file) || SketchDocument::hasSupportedExtension(file);
}

void MockupSession::open(const QString& file, const DocumentChoice& choice) {
  notify(onStatus, QStringLiteral("Opening %1…").arg(nameOf(file)));
  selectionBefore_.clear();
  reloading_.reset();
  if (SketchDocument::hasSupportedExtension(file)) return openDocument(file, choice);
  Arrangement arrangement;
  arrangement.photo = absoluteFileName(file);
  if (isArrangementFile(file)) {
    const Result<Arrangement> read = Arrangement::read(file);
    if (!read) return notify(onFailed, messageOf(read.error()));
    arrangement = *read;
  }
  startOpening(std::make_shared<PhotoMockup>(arrangement), file);
}

void MockupSession::openDocument(const QString& file, const DocumentChoice& choice) {
  reading_ = file;
  thumbnails_.cancel();
  const auto read = [file, choice] { return DocumentMockup::open(file, choice); };
  worker_.run(read, [this, file](const Result<std::shared_ptr<DocumentMockup>>& document) {
    if (reading_ != file) return;
    if (document) return startOpening(*document, file);
    notify(onFailed, messageOf(document.error()));
    loadThumbnails();
  });
}

void MockupSession::startOpening(const std::shared_ptr<Mockup>& mockup, const QString& file) {
  reading_.clear();
  thumbnails_.cancel();
  opening_ = mockup;
  openingFile_ = file;
  worker_.draw(mockup, mockup->arrangement());
}

void MockupSession::drawingDidFinish(const Frame& frame) {
  if (frame.mockup == opening_) {
    opening_ = nullptr;
    finishOpening(frame);
  } else if (frame.mockup == mockup_) {
    notify(onDrawn, frame);
  }
}

void MockupSession::finishOpening(const Frame& frame) {
  notify(onStatus, QString());
  if (!frame.image) {
    notify(onFailed, messageOf(frame.image.error()));
    return cancelOpening();
  }
  const auto before = std::exchange(reloading_, std::nullopt);
  if (before && before->shapes != model_.arrangement().shapes) {
    cancelOpening();
    return notify(onDiskConflict);
  }
  mockup_ = frame.mockup;
  document_ = std::dynamic_pointer_cast<DocumentMockup>(mockup_);
  file_ = document_ || isArrangementFile(openingFile_) ? openingFile_ : QString();
  hasRemapped_ = false;
  requested_ = frame.arrangement;
  Bundle::setHostInformation(document_ ? document_->hostInformation() : QVariantMap());
  model_.open(frame.arrangement);
  notify(onOpened, frame);
  if (document_) model_.select(document_->chosenShapes() + std::exchange(selectionBefore_, {}));
  loadThumbnails();
  readDesigns(std::exchange(waitingDesigns_, {}),
              [this](const QString& file) { return model_.addOpenedDesign(file); });
}

/// Goes on with what is open: it may have been changed meanwhile, and was not drawn.
void MockupSession::cancelOpening() {
  if (!mockup_) return;
  worker_.draw(mockup_, requested_);
  loadThumbnails();
}

void MockupSession::modelDidChange() {
  notify(onChanged);
  if (mockup_ && requested_ != model_.arrangement()) {
    requested_ = model_.arrangement();
    draw();
  }
  watchFiles();
}

/// A mockup that is being opened is drawn first: it may replace this one.
void MockupSession::draw() {
  if (!opening_) worker_.draw(mockup_, requested_);
  notify(onDrawingRequested);
}

void MockupSession::watchFiles() {
  QStringList files{document_ ? file_ : model_.arrangement().photo};
  for (const Arrangement::Design& design : model_.arrangement().designs) files.append(design.file);
  files.removeAll(QString());
  files.sort();
  files.removeDuplicates();
  watcher_.setFiles(files);
}

void MockupSession::filesDidChange(const QStringList& files) {
  if (!mockup_) return;
  const bool isDocumentFile = document_ && files.contains(file_);
  if (isDocumentFile) documentDidChangeOnDisk();
  if (files.size() > (isDocumentFile ? 1 : 0)) redraw();
}

/// The same arrangement, with designs that have changed.
void MockupSession::redraw() {
  hasRemapped_ = document_ != nullptr;
  draw();
  loadThumbnails();
  notify(onChanged);
}

void MockupSession::documentDidChangeOnDisk() {
  if (!fileExists(file_)) {
    return notify(onStatus,
                  QStringLiteral("%1 was deleted; Save writes it again").arg(nameOf(file_)));
  }
  // After what is being written: the change may be our own.
  const auto compare = [document = document_, file = file_] {
    return document->hasChangedOnDisk(file);
  };
  worker_.run(compare, [this, document = document_](bool hasChanged) {
    if (!hasChanged || document != document_) return;
    isModified() ? notify(onDiskConflict) : reload();
  });
}

void MockupSession::reload() {
  const Arrangement before = model_.arrangement();
  open(file_, {.artboardBefore = before.artboard});
  selectionBefore_ = model_.selection();
  reloading_ = before;
}

void MockupSession::keepChanges() {
  const auto accept = [document = document_] {
    if (document) document->acceptDiskVersion();
    return 0;
  };
  worker_.run(accept, [](int) {});
}

void MockupSession::discardChanges() {
  hasRemapped_ = false;
  model_.markSaved(model_.arrangement());
}

void MockupSession::addDesigns(const QStringList& files, const QString& shape) {
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

void MockupSession::readDesigns(const QStringList& files,
                                const std::function<QString(const QString& file)>& add) {
  for (const QString& file : files) {
    const auto done = [this, mockup = mockup_, file, add](const Result<QImage>& thumbnail) {
      if (mockup != mockup_) return;
      if (!thumbnail) return notify(onFailed, messageOf(thumbnail.error()));
      notify(onThumbnail, add(file), *thumbnail);
    };
    thumbnails_.load(mockup_, file, done);
  }
}

void MockupSession::loadThumbnails() {
  if (!mockup_) return;
  const auto done = [this, mockup = mockup_](const QString& design, const QImage& thumbnail) {
    if (mockup == mockup_) notify(onThumbnail, design, thumbnail);
  };
  thumbnails_.loadAll(mockup_, model_.arrangement().designs, done);
}

void MockupSession::refreshSelected() {
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
  worker_.run(refresh, [](int) {});
  redraw();
}

void MockupSession::save(const QString& file, const std::function<void()>& then) {
  const bool hasExtension =
      document_ ? SketchDocument::hasSupportedExtension(file) : isArrangementFile(file);
  if (!hasExtension) {
    // Under another name it could not be opened again, and might replace the photo.
    return notify(onFailed, QStringLiteral("cannot save %1: its name must end in %2")
                                .arg(file, QLatin1String(document_ ? ".sketch" : ".json")));
  }
  struct Answer {
    bool isConflict = false;
    Result<void> saved;
  };
  const Arrangement arrangement = model_.arrangement();
  const auto write = [mockup = mockup_, document = document_, arrangement, file] {
    if (document && document->hasChangedOnDisk(file)) return Answer{true, {}};
    return Answer{false, mockup->save(arrangement, file)};
  };
  ++pendingWrites_;
  worker_.run(write, [this, mockup = mockup_, arrangement, file, then](const Answer& answer) {
    --pendingWrites_;
    const bool isSaved = answer.saved && !answer.isConflict;
    if (isSaved && mockup == mockup_) {
      file_ = file;
      hasRemapped_ = false;
      model_.markSaved(arrangement);
      notify(onStatus, QStringLiteral("Saved %1").arg(nameOf(file)));
    }
    notify(onWritten, isSaved);
    if (!answer.saved) return notify(onFailed, messageOf(answer.saved.error()));
    if (mockup != mockup_) return;
    if (answer.isConflict) return notify(onDiskConflict);
    if (then) then();
  });
}

void MockupSession::exportTo(const QString& file) {
  const auto write = [mockup = mockup_, arrangement = model_.arrangement(), file,
                      stop = worker_.stopToken()] {
    return writeExport(*mockup, arrangement, file, stop);
  };
  notify(onStatus, QStringLiteral("Exporting…"));
  ++pendingWrites_;
  worker_.run(write, [this, file](const Result<void>& written) {
    --pendingWrites_;
    notify(onWritten, written.has_value());
    if (!written) return notify(onFailed, messageOf(written.error()));
    notify(onStatus, QStringLiteral("Exported %1").arg(nameOf(file)));
  });
}

}  // namespace kelvar::cli
