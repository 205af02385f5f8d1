#pragma once

#include <QColor>
#include <QPointer>
#include <QWidget>

#include "platform/Log.h"
#include "runtime/ClassInfo.h"

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
  /// What the widget is known by once it is gone.
  const QWidget* const key_;
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

/// Describes an outlet, which is set and read as a view. One of another class is refused.
template <class C, class W>
auto outletGetter(W* (C::*get)() const) {
  return [get](const C& owner) { return View::of((owner.*get)()); };
}
template <class C, class W>
auto outletSetter(void (C::*set)(W*)) {
  return [set](C& owner, const ViewRef& view) {
    W* const widget = widgetOf<W>(view);
    if (view && view->widget() && !widget) {
      const QMetaObject& actual = *view->widget()->metaObject();
      logLine(u"%@: the outlet %@ is a %@", {owner.classInfo().name(), view->widget()->objectName(),
                                             QLatin1String(actual.className())});
      return;
    }
    (owner.*set)(widget);
  };
}

}  // namespace kelvar
