#pragma once

#include <QObject>
#include <memory>

#include "runtime/Object.h"

class QWidget;

namespace kelvar {

class View;

/// Belongs to a widget that is in a tree of views: keeps the view of a subview alive, and tells the
/// view when the widget is resized. Main thread only.
class ViewAnchor : public QObject {
 public:
  /// The widget's anchor, which is created on first use. `view` is the widget's view.
  static ViewAnchor& of(View& view);
  /// Null if the widget has none.
  static ViewAnchor* find(const QWidget* widget);

  /// Keeps the view, and its controller if there is one, until `release` or the widget's end.
  void keep(std::shared_ptr<View> view, ObjectRef controller);
  void release();

  std::shared_ptr<View> view() const { return view_.lock(); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  ViewAnchor(QWidget* widget, std::weak_ptr<View> view);

  const std::weak_ptr<View> view_;
  std::shared_ptr<View> kept_;
  ObjectRef controller_;
};

}  // namespace kelvar
