#pragma once

#include <QStringList>
#include <functional>

#include "host/Arrangement.h"
#include "platform/Export.h"

namespace kelvar {

/// What the panel's window shows and changes: an arrangement, which of its shapes are selected, and
/// the way back. It knows no widget and no file.
///
/// Operations on settings concern the selected shapes. One that changes nothing leaves no step
/// behind. Which artboard is shown is no change: going back shows the one where the change was.
/// Only shapes in sight can be selected. Main thread.
class KELVAR_EXPORT PanelModel {
 public:
  static constexpr int kMixed = -1;

  PanelModel() = default;
  PanelModel(const PanelModel&) = delete;
  PanelModel& operator=(const PanelModel&) = delete;

  /// Called after each change of the arrangement or of the selection.
  std::function<void()> didChange;

  const Arrangement& arrangement() const { return arrangement_; }
  /// Another arrangement, with nothing selected and no way back.
  void open(const Arrangement& arrangement);

  bool isModified() const;
  void markSaved(const Arrangement& saved);

  bool canUndo() const { return !undo_.isEmpty(); }
  bool canRedo() const { return !redo_.isEmpty(); }
  void undo();
  void redo();

  void showArtboard(const QString& artboard);

  /// Until endStep(), all changes are one step.
  void beginStep() { isOneStep_ = true; }
  void endStep();

  /// Ids of the selected shapes, in the order of the shapes.
  QStringList selection() const { return selection_; }
  bool isSelected(const QString& shape) const { return selection_.contains(shape); }
  /// Ids of no shape are left out.
  void select(const QStringList& shapes);
  void toggleSelected(const QString& shape);
  /// The shape after the last selected one, or before the first, round about.
  void selectNext(int direction);

  /// The new shape is selected. Its id.
  QString addShape(const std::array<QPointF, 4>& corners);
  void removeSelected();
  void setCorner(const QString& shape, int corner, const QPointF& point);
  void moveSelected(const QPointF& by);

  /// The id of the design in `file`, added where it is new.
  QString addDesign(const QString& file);
  /// The same for a design that belongs to what was opened: no change, and no step takes it away.
  QString addOpenedDesign(const QString& file);
  /// `design` empty: none.
  void setDesign(const QString& shape, const QString& design);

  /// Position of the selected shapes' image quality; kMixed when they differ, 0 when there are
  /// none.
  int quality() const;
  void setQuality(int quality);
  /// 1 when all selected shapes are included, 0 when none is, else kMixed.
  int included() const;
  void setIncluded(bool included);
  /// A quarter turn counter-clockwise.
  void rotate();
  void flip();

 private:
  void change(const Arrangement& next);
  void changeSelected(const std::function<void(Arrangement::Shape&)>& change);
  void step(QList<Arrangement>* from, QList<Arrangement>* to);
  void keepInOrder(const QStringList& selection);
  void tell() const;

  Arrangement arrangement_;
  Arrangement saved_;
  QStringList selection_;
  QList<Arrangement> undo_;
  QList<Arrangement> redo_;
  bool isOneStep_ = false;
  bool hasStep_ = false;
};

}  // namespace kelvar
