#pragma once

#include <QColor>
#include <QPointer>
#include <QWidget>

#include "runtime/Object.h"

namespace kelvar {

class View;
using ViewRef = std::shared_ptr<View>;

/// A widget as scripts and outlets hold it.
///
/// There is one for each widget as long as anybody holds it. A widget that was adopted belongs to
/// its parent widget once it has one; without a parent it lives as long as its view is held. Main
/// thread only.
class KELVAR_EXPORT View : public Object {
 public:
  static const ClassInfo& theClass();
  /// The description of the widget's own class, where it has one.
  const ClassInfo& classInfo() const override;

  /// Null for null.
  static ViewRef of(QWidget* widget);
  static ViewRef adopt(QWidget* widget);

  View(QWidget* widget, const ClassInfo& info);
  ~View() override;

  /// Null once the widget is gone.
  QWidget* widget() const { return widget_; }

  bool isHidden() const { return !widget_ || widget_->isHidden(); }
  void setHidden(bool hidden);

 private:
  QPointer<QWidget> widget_;
  const ClassInfo& info_;
  bool adopted_ = false;
};

/// The widget of a view that may be null, as `T`; null when it is none.
template <class T>
T* widgetOf(const ViewRef& view) {
  return view ? dynamic_cast<T*>(view->widget()) : nullptr;
}

/// Describes a member of a widget's class as an operation on its view. Once the widget is gone
/// nothing happens. A colour that is none becomes none.
template <class W, class R, class... A>
auto onWidget(R (W::*member)(A...)) {
  return [member](View& view, std::decay_t<A>... arguments) {
    auto* const widget = dynamic_cast<W*>(view.widget());
    if constexpr (std::is_void_v<R>) {
      if (widget) (widget->*member)(arguments...);
    } else {
      return widget ? (widget->*member)(arguments...) : R();
    }
  };
}
template <class W, class R>
auto onWidget(R (W::*member)() const) {
  return [member](const View& view) {
    const auto* const widget = dynamic_cast<const W*>(view.widget());
    if constexpr (std::is_same_v<R, QColor>) {
      const QColor color = widget ? (widget->*member)() : QColor();
      return color.isValid() ? QVariant(color) : QVariant();
    } else {
      return widget ? (widget->*member)() : R();
    }
  };
}

}  // namespace kelvar
