#pragma once

#include <QMainWindow>
#include <QMap>
#include <QPointer>
#include <functional>
#include <memory>

#include "panel/MockupSession.h"

class QMessageBox;

namespace kelvar::cli {

class ArtboardSelector;
class CanvasView;
class ErrorBar;
class InspectorPanel;
class PanelActions;
class StatusBar;

/// The window of `kelvar panel`: the canvas on the left, the inspector on the right, and the menus.
/// Its `MockupSession` has the open mockup.
class PanelWindow : public QMainWindow {
 public:
  PanelWindow();
  ~PanelWindow() override;

  /// Called with each error message; the window shows it too.
  std::function<void(const QString& message)> onFailed;
  /// Called when something has been opened.
  std::function<void()> onOpened;

  MockupSession& session() { return session_; }
  const MockupSession& session() const { return session_; }
  InspectorPanel& inspector() { return *inspector_; }

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void makeViews();
  QWidget* makeLeft();
  /// The view shown in place of the canvas's contents while nothing is open.
  QWidget* makeEmptyState();
  void makeActions();
  void connectSession();

  void showOpened(const MockupSession::Frame& frame);
  void showFrame(const MockupSession::Frame& frame);
  void showImage(const MockupSession::Frame& frame);
  void showPreview();
  void showThumbnail(const QString& design, const QImage& thumbnail);
  void showDrawingRequested();
  void showError(const QString& message);
  void showDiskConflict();
  void updateViews();
  void updateActions();

  void chooseFileToOpen();
  void addChosenDesigns();
  void exportToChosen();
  /// Saves, asking for a name first if there is none; then calls `then`.
  void save(const std::function<void()>& then = {});
  void saveAs(const std::function<void()>& then = {});
  /// Calls `then` at once or, if there are changes, when the user has saved or discarded them.
  void confirmUnsavedThen(const std::function<void()>& then);
  void dropFiles(const QStringList& files, const QString& shape);
  /// Closes the window if that was waiting for writes to finish, and none is left.
  void didWrite(bool succeeded);

  MockupSession session_;
  QMap<QString, ImageRef> thumbnails_;
  /// The artboard that the canvas shows.
  QString shownArtboard_;
  bool closesWhenWritten_ = false;
  QPointer<QMessageBox> diskConflict_;

  CanvasView* canvas_ = nullptr;
  InspectorPanel* inspector_ = nullptr;
  ArtboardSelector* artboards_ = nullptr;
  QWidget* emptyState_ = nullptr;
  ErrorBar* errorBar_ = nullptr;
  StatusBar* statusBar_ = nullptr;
  std::unique_ptr<PanelActions> actions_;
};

}  // namespace kelvar::cli
