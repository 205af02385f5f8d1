#pragma once

#include <QMainWindow>
#include <QPointer>
#include <functional>
#include <optional>
#include <stop_token>

#include "app/panel/ArtboardChooser.h"
#include "app/panel/BackgroundDrawing.h"
#include "app/panel/FileWatch.h"
#include "app/panel/PanelColumn.h"
#include "app/panel/PhotoView.h"
#include "host/DocumentMockup.h"
#include "host/PanelModel.h"

class QFrame;
class QLabel;
class QMessageBox;
class QSplitter;
class QToolButton;

namespace kelvar::app {

/// The window of `kelvar panel`: a mockup on the left, its panel on the right, and what is done
/// with files. Reading, drawing and writing happen off the main thread.
class PanelWindow : public QMainWindow {
 public:
  PanelWindow();
  ~PanelWindow() override;

  /// Called with the sentence when something cannot be opened, drawn, saved or exported. The window
  /// shows it too.
  std::function<void(const QString& sentence)> didFail;

  /// Called when something has been opened.
  std::function<void()> didOpen;

  /// Opens a photo, an arrangement file or a Sketch document, of which `choice` says what is shown
  /// and selected, in place of what is open if that succeeds.
  void open(const QString& file, const DocumentMockup::Choice& choice = {});
  /// For the menu of designs; chosen for `shape` where one is named. While nothing is open they
  /// wait, and then belong to what is opened: that is no change, and nothing to undo.
  void addDesigns(const QStringList& files, const QString& shape = {});
  void saveAs(const QString& file);
  void exportTo(const QString& file);

  const PanelModel& model() const { return model_; }
  bool hasMockup() const { return mockup_ != nullptr; }
  /// Whether a drawing is under way or waiting.
  bool isBusy() const { return drawing_.isBusy(); }
  PanelColumn& column() { return *column_; }
  /// Gives up what is under way, at the end of the program. False where that takes longer.
  bool stop(int milliseconds);

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void makeViews();
  QWidget* makeLeft();
  QWidget* makeWelcome();
  QWidget* makeErrorBar();
  QWidget* makeZoomBar();
  void makeFileActions();
  void makeEditActions();
  void makeViewActions();
  void makeToolBar();
  QAction* addAction(const QString& menu, const QString& text, const QKeySequence& key,
                     std::function<void()> run);

  void modelDidChange();
  void requestDrawing();
  void drawRequested();
  void drawingDidFinish(const BackgroundDrawing::Result& result);
  void openDocument(const QString& file, const DocumentMockup::Choice& choice);
  void startOpening(const std::shared_ptr<Mockup>& mockup, const QString& file);
  void opened(const BackgroundDrawing::Result& result);
  void showDrawing(const BackgroundDrawing::Result& result);
  void showPicture(const BackgroundDrawing::Result& result);
  void showPreview();
  /// `add` says under which id a design that could be read is from now on.
  void readDesigns(const QStringList& files,
                   const std::function<QString(const QString& file)>& add);
  void showThumbnail(const QString& design, const QImage& picture);
  void loadThumbnails();
  void refreshSelected();
  void filesDidChange(const QStringList& files);
  void watchFiles();
  void drawAnew();
  void documentDidChangeOnDisk();
  void reload();
  void askWhichToKeep();
  bool isModified() const { return model_.isModified() || hasRemapped_; }
  void updateActions();
  void fail(const QString& sentence);
  void say(const QString& sentence);

  /// To be called when a file that `writing_` counts is there, or when it cannot be.
  void didWrite(bool isDone);

  void chooseFileToOpen();
  void chooseDesigns();
  void save();
  void chooseFileToSave();
  void chooseFileToExport();
  /// Runs `then` at once or, where that would replace a file, when the user wants it replaced.
  void whenMayBeReplaced(const QString& file, const std::function<void()>& then);
  /// Runs `then` at once or, where there are changes, when the user has saved or let them go.
  void whenUnsavedAreSettled(const std::function<void()>& then);
  void dropFiles(const QStringList& files, const QString& shape);

  PanelModel model_;
  std::shared_ptr<Mockup> mockup_;
  /// The mockup, where it is a document.
  std::shared_ptr<DocumentMockup> document_;
  /// Whether designs were mapped anew onto the document without a change of the model.
  bool hasRemapped_ = false;
  /// The document that is being read.
  QString reading_;
  /// What is being opened, and from which file.
  std::shared_ptr<Mockup> opening_;
  QString openingFile_;
  /// The arrangement file or the document; empty before the first save.
  QString file_;
  /// What was last asked to be drawn.
  Arrangement requested_;
  QStringList waitingDesigns_;
  /// Selected again after a reload.
  QStringList selectionBefore_;
  /// What was there when the document began to be read again; a change since then is asked about.
  std::optional<Arrangement> reloading_;
  QMap<QString, ImageRef> thumbnails_;
  FileWatch watch_;
  QPointer<QMessageBox> diskQuestion_;
  /// Files that are being written, and whether the window closes with the last of them.
  int writing_ = 0;
  bool closesWhenWritten_ = false;
  /// Stops the thumbnails that are being made.
  std::stop_source thumbnailing_;
  /// Runs once when what is being saved is saved.
  std::function<void()> afterSaving_;

  PhotoView* photoView_ = nullptr;
  PanelColumn* column_ = nullptr;
  ArtboardChooser* artboards_ = nullptr;
  /// Where it stands in the tool bar, and stays away for a photo.
  QAction* artboardsAction_ = nullptr;
  QSplitter* splitter_ = nullptr;
  QWidget* welcome_ = nullptr;
  QFrame* errorBar_ = nullptr;
  QLabel* errorLabel_ = nullptr;
  QLabel* status_ = nullptr;
  QToolButton* zoomButton_ = nullptr;
  QMap<QString, QAction*> actions_;
  /// Last, so that nothing arrives while the rest is going.
  BackgroundDrawing drawing_;
};

}  // namespace kelvar::app
