#pragma once

#include <QMainWindow>
#include <QMap>
#include <functional>

class QAction;

namespace kelvar::cli {

class ArtboardSelector;
class CanvasView;
class MockupSession;

/// The window's menus and tool bar. Each action's object name is its text.
class PanelActions {
 public:
  /// What the window does for the File menu.
  struct FileCommands {
    std::function<void()> open;
    std::function<void()> addDesigns;
    std::function<void()> save;
    std::function<void()> saveAs;
    std::function<void()> exportImage;
  };

  /// All arguments outlive this object.
  PanelActions(QMainWindow* window, MockupSession* session, CanvasView* canvas,
               ArtboardSelector* artboards);

  /// Fills the menus and the tool bar.
  void make(const FileCommands& file);
  /// Enables the actions that are possible now.
  void update();

 private:
  QAction* add(const QString& menu, const QString& text, const QKeySequence& key,
               std::function<void()> run);
  void makeFileActions(const FileCommands& file);
  void makeEditActions();
  void makeViewActions();
  void makeToolBar();

  QMainWindow* window_;
  MockupSession* session_;
  CanvasView* canvas_;
  ArtboardSelector* artboards_;
  /// The selector's place in the tool bar; hidden for a photo.
  QAction* artboardsAction_ = nullptr;
  QMap<QString, QAction*> actions_;
};

}  // namespace kelvar::cli
