#include "panel/PanelActions.h"

#include <QAction>
#include <QMenuBar>
#include <QToolBar>

#include "panel/ArtboardSelector.h"
#include "panel/CanvasView.h"
#include "panel/MockupSession.h"

namespace kelvar::cli {
namespace {

constexpr double kZoomStep = 1.25;

}  // namespace

PanelActions::PanelActions(QMainWindow* window, MockupSession* session, CanvasView* canvas,
                           ArtboardSelector* artboards)
    : window_(window), session_(session), canvas_(canvas), artboards_(artboards) {}

void PanelActions::make(const FileCommands& file) {
  makeFileActions(file);
  makeEditActions();
  makeViewActions();
  makeToolBar();
}

QAction* PanelActions::add(const QString& menu, const QString& text, const QKeySequence& key,
                           std::function<void()> run) {
  QMenuBar* const bar = window_->menuBar();
  QMenu* found = bar->findChild<QMenu*>(menu);
  if (!found) {
    found = bar->addMenu(u'&' + menu);
    found->setObjectName(menu);
  }
  QAction* const action = found->addAction(text);
  action->setShortcut(key);
  QObject::connect(action, &QAction::triggered, window_, [run = std::move(run)] { run(); });
  const QString name = QString(text).remove(u'&').remove(QStringLiteral("…"));
  action->setObjectName(name);
  actions_.insert(name, action);
  return action;
}

void PanelActions::makeFileActions(const FileCommands& file) {
  const QString menu = QStringLiteral("File");
  add(menu, QStringLiteral("&Open…"), QKeySequence::Open, file.open);
  add(menu, QStringLiteral("Add &Designs…"), QKeySequence(QStringLiteral("Ctrl+D")),
      file.addDesigns);
  add(menu, QStringLiteral("&Save"), QKeySequence::Save, file.save);
  add(menu, QStringLiteral("Save &As…"), QKeySequence(QStringLiteral("Ctrl+Shift+S")), file.saveAs);
  add(menu, QStringLiteral("&Export…"), QKeySequence(QStringLiteral("Ctrl+E")), file.exportImage);
  add(menu, QStringLiteral("&Quit"), QKeySequence::Quit, [this] { window_->close(); });
}

void PanelActions::makeEditActions() {
  const QString menu = QStringLiteral("Edit");
  PanelModel& model = session_->model();
  add(menu, QStringLiteral("&Undo"), QKeySequence::Undo, [&model] { model.undo(); });
  add(menu, QStringLiteral("&Redo"), QKeySequence(QStringLiteral("Ctrl+Shift+Z")),
      [&model] { model.redo(); });
  QAction* const draw = add(menu, QStringLiteral("&New Shape"), QKeySequence(Qt::Key_N),
                            [this] { canvas_->setDrawing(!canvas_->isDrawing()); });
  draw->setCheckable(true);
  add(menu, QStringLiteral("&Delete Shape"), QKeySequence::Delete,
      [&model] { model.removeSelected(); });
  add(menu, QStringLiteral("Select &All"), QKeySequence::SelectAll,
      [&model] { model.selectAll(); });
}

void PanelActions::makeViewActions() {
  const QString menu = QStringLiteral("View");
  QAction* const zoomIn =
      add(menu, QStringLiteral("Zoom &In"), {}, [this] { canvas_->zoomBy(kZoomStep); });
  zoomIn->setShortcuts(
      {QKeySequence(QStringLiteral("Ctrl++")), QKeySequence(QStringLiteral("Ctrl+="))});
  add(menu, QStringLiteral("Zoom &Out"), QKeySequence(QStringLiteral("Ctrl+-")),
      [this] { canvas_->zoomBy(1 / kZoomStep); });
  add(menu, QStringLiteral("&Actual Pixels"), QKeySequence(QStringLiteral("Ctrl+1")),
      [this] { canvas_->zoomTo(1 / canvas_->devicePixelRatioF()); });
  add(menu, QStringLiteral("&Fit"), QKeySequence(QStringLiteral("Ctrl+0")),
      [this] { canvas_->fit(); });
  add(menu, QStringLiteral("&Next Artboard"), QKeySequence(QStringLiteral("Ctrl+PgDown")),
      [this] { artboards_->step(1); });
  add(menu, QStringLiteral("&Previous Artboard"), QKeySequence(QStringLiteral("Ctrl+PgUp")),
      [this] { artboards_->step(-1); });
}

void PanelActions::makeToolBar() {
  auto* const bar = window_->addToolBar(QStringLiteral("Tools"));
  bar->setObjectName(QStringLiteral("toolBar"));
  bar->setMovable(false);
  bar->setContextMenuPolicy(Qt::PreventContextMenu);
  const auto show = [&](const char* name) {
    QAction* const action = actions_.value(QLatin1String(name));
    bar->addAction(action);
    bar->widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
  };
  for (const char* name : {"Open", "Add Designs"}) show(name);
  bar->addSeparator();
  for (const char* name : {"New Shape", "Undo", "Redo"}) show(name);
  artboardsAction_ = bar->addWidget(artboards_);
  auto* const space = new QWidget;
  space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  bar->addWidget(space);
  for (const char* name : {"Save", "Export"}) show(name);
}

void PanelActions::update() {
  const auto enable = [&](const char* name, bool enabled) {
    actions_.value(QLatin1String(name))->setEnabled(enabled);
  };
  for (const char* name : {"Add Designs", "Save", "Save As", "Export", "Select All", "Zoom In",
                           "Zoom Out", "Actual Pixels", "Fit"}) {
    enable(name, session_->hasMockup());
  }
  const PanelModel& model = session_->model();
  enable("Undo", model.canUndo());
  enable("Redo", model.canRedo());
  enable("Next Artboard", artboards_->hasNext(1));
  enable("Previous Artboard", artboards_->hasNext(-1));
  enable("New Shape", session_->canChangeShapes());
  enable("Delete Shape", session_->canChangeShapes() && !model.selection().isEmpty());
  actions_.value(QStringLiteral("New Shape"))->setChecked(canvas_->isDrawing());
  artboardsAction_->setVisible(artboards_->count() > 0);
}

}  // namespace kelvar::cli
