#pragma once

#include <QImage>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>

#include "mockup/DocumentMockup.h"
#include "mockup/PanelModel.h"
#include "panel/FileWatcher.h"
#include "panel/RenderWorker.h"
#include "panel/ThumbnailLoader.h"

namespace kelvar::cli {

/// The open mockup: its arrangement with selection and undo, the file that it is saved to, and the
/// files on disk that it depends on. Independent of widgets.
///
/// Files are read, drawn and written on a worker thread, one after another. Main thread only;
/// callbacks are called there too, and each may be empty.
class MockupSession {
 public:
  using Frame = RenderWorker::Frame;

  MockupSession();
  MockupSession(const MockupSession&) = delete;
  MockupSession& operator=(const MockupSession&) = delete;

  /// Called when something could not be opened, drawn, saved or exported. The open mockup stays as
  /// it is.
  std::function<void(const QString& message)> onFailed;
  /// What the session is doing, or has just done, for a status line; empty if nothing.
  std::function<void(const QString& message)> onStatus;
  /// A mockup was opened, replacing the previous one. `frame` is its first drawing.
  std::function<void(const Frame& frame)> onOpened;
  /// The arrangement, the selection, or whether there is something to save has changed.
  std::function<void()> onChanged;
  /// The arrangement will be drawn; onDrawn() follows, unless something else is opened first.
  std::function<void()> onDrawingRequested;
  /// A drawing is ready. It is the last one if isBusy() is false.
  std::function<void(const Frame& frame)> onDrawn;
  /// A design's thumbnail was made, or made again because its file changed.
  std::function<void(const QString& design, const QImage& thumbnail)> onThumbnail;
  /// The document has changed both here and on disk. Answer with reload() or keepChanges(); without
  /// an answer, the next save() asks again.
  std::function<void()> onDiskConflict;
  /// A save or an export has ended.
  std::function<void(bool succeeded)> onWritten;

  PanelModel& model() { return model_; }
  const PanelModel& model() const { return model_; }
  bool hasMockup() const { return mockup_ != nullptr; }
  bool isDocument() const { return document_ != nullptr; }
  bool canChangeShapes() const { return mockup_ && mockup_->canChangeShapes(); }
  QList<Mockup::Artboard> artboards() const;
  /// The arrangement file or the document; empty before an arrangement is first saved.
  const QString& file() const { return file_; }
  /// file(), or the photo if that is empty.
  QString shownFile() const { return file_.isEmpty() ? model_.arrangement().photo : file_; }
  bool isModified() const { return mockup_ && (model_.isModified() || hasRemapped_); }
  /// Whether a drawing is in progress or waiting.
  bool isBusy() const { return worker_.isBusy(); }
  /// Whether a save or an export is in progress or waiting.
  bool isWriting() const { return pendingWrites_ > 0; }

  /// The longer side of thumbnails, in pixels. They are made when designs are read.
  void setThumbnailSide(int pixels) { thumbnails_.setSide(pixels); }

  /// Whether the name is that of an arrangement file or a document.
  static bool isMockupFile(const QString& file);
  /// Opens a photo, an arrangement file, or a Sketch document, for which `choice` says what to show
  /// and select. On success, this replaces the open mockup without asking.
  void open(const QString& file, const DocumentChoice& choice = {});
  /// Adds designs from image files, and chooses each for `shape` unless that is empty. While
  /// nothing is open, they wait and are added to the next mockup that is opened: this does not
  /// count as a change and cannot be undone.
  void addDesigns(const QStringList& files, const QString& shape = {});
  /// Reads the designs of the selected shapes again.
  void refreshSelected();

  /// Saves to `file`, which is file() from then on; then calls `then`, unless the save fails. The
  /// name must have the extension of an arrangement or a document, whichever is open.
  void save(const QString& file, const std::function<void()>& then = {});
  /// Writes the image at full resolution.
  void exportTo(const QString& file);

  /// Opens the document again, without the changes made here.
  void reload();
  /// The next save() replaces the document on disk.
  void keepChanges();
  /// From now on, there is nothing to save.
  void discardChanges();

  /// Cancels all work permanently. Returns false if it has not ended within `milliseconds`.
  bool stop(int milliseconds);

 private:
  void openDocument(const QString& file, const DocumentChoice& choice);
  void startOpening(const std::shared_ptr<Mockup>& mockup, const QString& file);
  void finishOpening(const Frame& frame);
  void cancelOpening();
  void drawingDidFinish(const Frame& frame);

  void modelDidChange();
  void draw();
  void filesDidChange(const QStringList& files);
  void documentDidChangeOnDisk();
  void redraw();
  void watchFiles();

  /// `add` returns the id of a design whose file could be read.
  void readDesigns(const QStringList& files,
                   const std::function<QString(const QString& file)>& add);
  void loadThumbnails();

  PanelModel model_;
  std::shared_ptr<Mockup> mockup_;
  /// The mockup, if it is a document.
  std::shared_ptr<DocumentMockup> document_;
  QString file_;
  /// Whether designs were mapped again onto the document without a change of the model.
  bool hasRemapped_ = false;
  /// The arrangement that was last requested to be drawn.
  Arrangement requested_;

  /// The document being read.
  QString reading_;
  /// The mockup being opened, and its file.
  std::shared_ptr<Mockup> opening_;
  QString openingFile_;
  QStringList waitingDesigns_;
  /// Selected again after a reload.
  QStringList selectionBefore_;
  /// The arrangement when a reload began; if it has changed since, that is a conflict.
  std::optional<Arrangement> reloading_;

  int pendingWrites_ = 0;
  FileWatcher watcher_;
  ThumbnailLoader thumbnails_{&worker_};
  /// Declared last: destroyed first, so no result arrives during destruction.
  RenderWorker worker_;
};

}  // namespace kelvar::cli
