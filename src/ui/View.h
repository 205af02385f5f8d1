#pragma once

#include <QColor>
#include <QPointer>
#include <QRectF>
#include <QWidget>
#include <functional>

#include "platform/Log.h"
#include "runtime/ClassInfo.h"

namespace kelvar {

class NSWindow;
class View;
using ViewRef = std::shared_ptr<View>;

/// The handle by which scripts and outlets hold a widget.
///
/// All references to a widget share one view. An adopted widget belongs to its parent widget if it
/// has one; otherwise it is deleted with its view. A view that was added to another one is kept by
/// it, together with its controller, until it is removed.
///
/// Lengths are points. A frame is in the coordinates of the superview, whose origin is at its
/// bottom left with y growing upward, as in the host application; a view's own coordinates are
/// never flipped. Without a superview, a frame's origin only waits for one. Operations do nothing
/// once the widget was deleted. Main thread only.
class KELVAR_EXPORT View : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  /// Null for null. A view of the class that goes with the widget's.
  static ViewRef of(QWidget* widget);
  static ViewRef adopt(QWidget* widget);
  /// Adopts the widget, with that frame. Throws what `setFrame` throws.
  static ViewRef adopt(QWidget* widget, const QRectF& frame);

  explicit View(QWidget* widget);
  ~View() override;

  /// Null once the widget was deleted.
  QWidget* widget() const { return widget_; }

  /// Whether the view itself was hidden, no matter whether its superview is.
  bool isHidden() const;
  /// A view without a superview appears as a window of its own.
  void setHidden(bool hidden);

  QRectF frame() const;
  /// Throws `std::invalid_argument` for coordinates that are not finite. Keeps fractions, but the
  /// edges are at whole points on screen; negative lengths are 0.
  void setFrame(const QRectF& frame);
  void setFrameOrigin(const QPointF& origin) { setFrame({origin, frame().size()}); }
  void setFrameSize(const QSizeF& size) { setFrame({frame().topLeft(), size}); }
  QRectF bounds() const { return {{0, 0}, frame().size()}; }
  /// The size that the contents need, at the current width if their height depends on it; that of
  /// the frame if there are none.
  QSizeF fittingSize() const;

  /// How the frame follows when the superview is resized.
  enum Autoresizing {
    kMinXMargin = 1,
    kWidth = 2,
    kMaxXMargin = 4,
    kMinYMargin = 8,
    kHeight = 16,
    kMaxYMargin = 32
  };
  int autoresizingMask() const { return autoresizingMask_; }
  void setAutoresizingMask(int mask) { autoresizingMask_ = mask; }
  /// Moves and stretches the subviews if the widget was resized since the last call.
  void resizeSubviews();

  /// Null for a view without one.
  ViewRef superview() const;
  /// From back to front.
  virtual QList<ViewRef> subviews() const;
  /// In front of the others; removed from its superview before. Throws `std::invalid_argument` for
  /// null, for an ancestor and for the view itself.
  void addSubview(const ViewRef& view);
  void removeFromSuperview();
  bool isDescendantOf(const ViewRef& view) const;
  /// The first of the view and its descendants with that tag; null if there is none.
  ViewRef viewWithTag(int tag);
  /// The window that the view is in; null if it is in none.
  std::shared_ptr<NSWindow> window() const;

  int tag() const { return tag_; }
  void setTag(int tag) { tag_ = tag; }
  /// In a form, the name that the form gives it.
  QString identifier() const { return widget_ ? widget_->objectName() : QString(); }
  void setIdentifier(const QString& identifier);
  QString toolTip() const { return widget_ ? widget_->toolTip() : QString(); }
  void setToolTip(const QString& text);

  /// Takes the view out of where it was, and has `place` give its widget to the other view's.
  /// Throws like `addSubview`.
  void putInto(View& superview, const std::function<void(QWidget* widget)>& place);

  /// The controller whose form the view shows.
  void setController(std::weak_ptr<Object> controller) { controller_ = std::move(controller); }

 protected:
  /// Keeps the view for as long as its widget is in another one.
  void keepWithWidget();

 private:
  void superviewDidResize(const QSizeF& change);
  /// The widget that the frame's coordinates are of. A scroll view moves its document itself.
  QWidget* superwidget() const;

  QPointer<QWidget> widget_;
  /// Identifies the widget after it was deleted.
  const QWidget* const key_;
  bool adopted_ = false;
  /// As it was set last; see `frame`.
  QRectF frame_;
  int autoresizingMask_ = 0;
  /// The size that the subviews' frames are for.
  QSize arrangedSize_;
  int tag_ = 0;
  std::weak_ptr<Object> controller_;
};

/// The widget of a view as `T`; null if the view is null or its widget is not a `T`.
template <class T>
T* widgetOf(const ViewRef& view) {
  return view ? dynamic_cast<T*>(view->widget()) : nullptr;
}

/// Wraps a member function of a widget's class as an operation on its view, which does nothing once
/// the widget was deleted. An invalid color becomes none.
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

/// Wraps an outlet, which is set and read as a view. A widget of another class is rejected with a
/// log line.
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
