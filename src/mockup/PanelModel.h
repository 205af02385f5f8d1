#pragma once

#include <QStringList>
#include <functional>

#include "mockup/Arrangement.h"
#include "platform/Export.h"

namespace kelvar {

/// The arrangement that the panel shows and changes, its selection, and undo. Independent of
/// widgets and files.
///
/// Operations on settings apply to the selected shapes. An operation that changes nothing adds no
/// undo step. Showing another artboard is not a change; undo and redo show the artboard on which
/// the change was made. Only shapes on the shown artboard can be selected. Main thread only.
class KELVAR_EXPORT PanelModel {
 public:
  static constexpr int kMixed = -1;

  PanelModel() = default;
  PanelModel(const PanelModel&) = delete;
  PanelModel& operator=(const PanelModel&) = delete;

  /// Called after each change of the arrangement or of the selection.
  std::function<void()> onChanged;

  const Arrangement& arrangement() const { return arrangement_; }
  /// Replaces the arrangement; selects nothing and clears undo.
  void open(const Arrangement& arrangement);

  /// Whether the arrangement differs from the one that was opened or marked as saved.
  bool isModified() const;
  void markSaved(const Arrangement& saved);

  bool canUndo() const { return !undo_.isEmpty(); }
  bool canRedo() const { return !redo_.isEmpty(); }
  void undo();
  void redo();

  void showArtboard(const QString& artboard);

  /// All changes until endStep() form one undo step.
  void beginStep() { isOneStep_ = true; }
  void endStep();

  /// The ids of the selected shapes, in the order of the shapes.
  QStringList selection() const { return selection_; }
  bool isSelected(const QString& shape) const { return selection_.contains(shape); }
  /// Ignores unknown ids and those of shapes on other artboards.
  void select(const QStringList& shapes);
  void selectAll();
  void toggleSelected(const QString& shape);
  /// Selects the shape after the last selected one or, if `direction` is negative, before the
  /// first; wraps around.
  void selectNext(int direction);

  /// Selects the new shape. Returns its id.
  QString addShape(const std::array<QPointF, 4>& corners);
  void removeSelected();
  void setCorner(const QString& shape, int corner, const QPointF& point);
  void moveSelected(const QPointF& by);

  /// Returns the id of the design in `file`, which is added if it is new.
  QString addDesign(const QString& file);
  /// The same for a design that belongs to the opened photo or document: adding it is not a change,
  /// and undo does not remove it.
  QString addOpenedDesign(const QString& file);
  /// An empty `design` means none.
  void setDesign(const QString& shape, const QString& design);

  /// The image quality of the selected shapes as an index; kMixed if they differ, 0 if there are
  /// none.
  int quality() const;
  void setQuality(int quality);
  /// 1 if all selected shapes are included, 0 if none is, else kMixed.
  int included() const;
  void setIncluded(bool included);
  /// Rotates the selected shapes' designs by a quarter turn counterclockwise.
  void rotate();
  void flip();

 private:
  void change(const Arrangement& next);
  void changeSelected(const std::function<void(Arrangement::Shape&)>& change);
  void step(QList<Arrangement>* from, QList<Arrangement>* to);
  void setSelection(const QStringList& selection);
  void notify() const;

  Arrangement arrangement_;
  Arrangement saved_;
  QStringList selection_;
  QList<Arrangement> undo_;
  QList<Arrangement> redo_;
  bool isOneStep_ = false;
  bool hasStep_ = false;
};

}  // namespace kelvar
