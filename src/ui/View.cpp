#include "ui/View.h"

#include <QHash>
#include <QLayout>
#include <QScrollArea>
#include <cmath>
#include <stdexcept>

#include "ui/NSWindow.h"
#include "ui/ViewAnchor.h"
#include "ui/makeView.h"

namespace kelvar {
namespace {

/// More than any screen has, and within what a widget may have.
constexpr double kMaxLength = 1 << 20;

QHash<const QWidget*, std::weak_ptr<View>>& views() {
  static QHash<const QWidget*, std::weak_ptr<View>> kViews;
  return kViews;
}

double checked(double length) {
  if (!std::isfinite(length)) throw std::invalid_argument("a frame needs finite numbers");
  return std::clamp(length, -kMaxLength, kMaxLength);
}

QRectF checked(const QRectF& frame) {
  return {checked(frame.x()), checked(frame.y()), std::max(checked(frame.width()), 0.0),
          std::max(checked(frame.height()), 0.0)};
}

/// The frame with its edges at whole points.
QRect wholePoints(const QRectF& frame) {
  const QPoint origin(int(std::round(frame.left())), int(std::round(frame.top())));
  const QPoint end(int(std::round(frame.right())), int(std::round(frame.bottom())));
  return {origin, QSize(end.x() - origin.x(), end.y() - origin.y())};
}

/// The scroll area that the widget is the contents of; or null.
QWidget* scrollAreaOf(const QWidget& widget) {
  const QWidget* const viewport = widget.parentWidget();
  auto* const area = viewport ? qobject_cast<QScrollArea*>(viewport->parentWidget()) : nullptr;
  return area && area->widget() == &widget ? area : nullptr;
}

/// One axis of a frame whose superview has grown by `change`.
struct Span {
  double origin, length;

  Span stretched(double change, bool min, bool size, bool max) const {
    const int parts = int(min) + int(size) + int(max);
    if (parts == 0) return *this;
    const double share = change / parts;
    return {origin + (min ? share : 0), length + (size ? share : 0)};
  }
};

}  // namespace

ViewRef View::of(QWidget* widget) {
  if (!widget) return nullptr;
  std::weak_ptr<View>& known = views()[widget];
  // The known view may be of a deleted widget that had the same address.
  if (ViewRef view = known.lock(); view && view->widget() == widget) return view;
  ViewRef view = makeView(widget);
  views()[widget] = view;
  return view;
}

ViewRef View::adopt(QWidget* widget) {
  ViewRef view = of(widget);
  if (view) view->adopted_ = true;
  return view;
}

ViewRef View::adopt(QWidget* widget, const QRectF& frame) {
  ViewRef view = adopt(widget);
  view->setFrame(frame);
  return view;
}

View::View(QWidget* widget)
    : widget_(widget), key_(widget), frame_({0, 0}, QSizeF(widget->size())) {}

View::~View() {
  const auto known = views().constFind(key_);
  if (known != views().cend() && known->expired()) views().erase(known);
  // Later: the widget may be executing the call that released the view.
  if (widget_ && adopted_ && !widget_->parentWidget()) widget_->deleteLater();
}

bool View::isHidden() const {
  return !widget_ ||
         (widget_->isHidden() && widget_->testAttribute(Qt::WA_WState_ExplicitShowHide));
}

void View::setHidden(bool hidden) {
  if (!widget_) return;
  // The view of a controller closes with that instead.
  const bool isWindow = !widget_->parentWidget() && controller_.expired();
  if (hidden || !isWindow) return widget_->setHidden(hidden);
  NSWindow::forContent(std::static_pointer_cast<View>(shared_from_this()))->show();
}

QWidget* View::superwidget() const {
  if (!widget_ || widget_->isWindow()) return nullptr;
  return scrollAreaOf(*widget_) ? nullptr : widget_->parentWidget();
}

QRectF View::frame() const {
  if (!widget_) return {};
  const QRect whole = wholePoints(frame_);
  const QWidget* const parent = superwidget();
  const QPoint origin =
      parent ? QPoint(widget_->x(), parent->height() - widget_->y() - widget_->height())
             : whole.topLeft();
  const QRect now(origin, widget_->size());
  return now == whole ? frame_ : QRectF(now);
}

void View::setFrame(const QRectF& frame) {
  frame_ = checked(frame);
  if (!widget_) return;
  const QRect whole = wholePoints(frame_);
  if (const QWidget* const parent = superwidget()) {
    const int top = parent->height() - whole.y() - whole.height();
    widget_->setGeometry(QRect({whole.x(), top}, whole.size()));
  } else {
    widget_->resize(whole.size());
  }
  // A hidden widget learns its size only when it is shown.
  resizeSubviews();
}

QSizeF View::fittingSize() const {
  if (!widget_) return {};
  const QLayout* const layout = widget_->layout();
  if (layout && layout->hasHeightForWidth()) {
    return QSizeF(widget_->width(), layout->totalHeightForWidth(widget_->width()));
  }
  const QSize needed = widget_->sizeHint();
  return needed.isValid() ? QSizeF(needed) : frame().size();
}

void View::resizeSubviews() {
  if (!widget_ || widget_->size() == arrangedSize_) return;
  const QSize before = std::exchange(arrangedSize_, widget_->size());
  const QObjectList children = widget_->children();
  for (QObject* const child : children) {
    const auto* const widget = qobject_cast<QWidget*>(child);
    const ViewAnchor* const anchor = widget ? ViewAnchor::find(widget) : nullptr;
    const ViewRef view = anchor ? anchor->view() : nullptr;
    if (view) view->superviewDidResize(QSizeF(arrangedSize_ - before));
  }
}

/// Also without a mask the frame is set again, as the widget's position is from the top.
void View::superviewDidResize(const QSizeF& change) {
  const auto has = [this](Autoresizing part) { return (autoresizingMask_ & part) != 0; };
  const Span x = Span{frame_.x(), frame_.width()}.stretched(change.width(), has(kMinXMargin),
                                                            has(kWidth), has(kMaxXMargin));
  const Span y = Span{frame_.y(), frame_.height()}.stretched(change.height(), has(kMinYMargin),
                                                             has(kHeight), has(kMaxYMargin));
  setFrame({x.origin, y.origin, x.length, y.length});
}

ViewRef View::superview() const {
  if (!widget_ || widget_->isWindow()) return nullptr;
  QWidget* const area = scrollAreaOf(*widget_);
  return View::of(area ? area : widget_->parentWidget());
}

QList<ViewRef> View::subviews() const {
  QList<ViewRef> found;
  if (!widget_) return found;
  for (QObject* const child : widget_->children()) {
    auto* const widget = qobject_cast<QWidget*>(child);
    if (widget && !widget->isWindow()) found.append(View::of(widget));
  }
  return found;
}

void View::addSubview(const ViewRef& view) {
  if (!view) throw std::invalid_argument("addSubview: takes a view, not nil");
  view->putInto(*this, [this](QWidget* widget) {
    widget->setParent(widget_);
    widget->raise();
  });
}

void View::putInto(View& superview, const std::function<void(QWidget* widget)>& place) {
  const auto self = std::static_pointer_cast<View>(shared_from_this());
  if (!widget_ || !superview.widget_) throw std::invalid_argument("the view no longer exists");
  if (superview.isDescendantOf(self)) {
    throw std::invalid_argument("a view cannot be inside itself");
  }
  const bool isHidden = this->isHidden();
  const QRectF frame = this->frame();
  removeFromSuperview();
  if (const auto window = NSWindow::withContent(*this)) window->setContentView(nullptr);
  ViewAnchor::of(superview);
  superview.resizeSubviews();
  place(widget_);
  keepWithWidget();
  setFrame(frame);
  if (!isHidden) widget_->show();
}

void View::keepWithWidget() {
  const auto self = std::static_pointer_cast<View>(shared_from_this());
  ViewAnchor& anchor = ViewAnchor::of(*this);
  if (widget_->parentWidget()) anchor.keep(self, controller_.lock());
}

void View::removeFromSuperview() {
  if (!widget_ || widget_->isWindow()) return;
  const bool isHidden = this->isHidden();
  frame_ = frame();
  if (QLayout* const layout = widget_->parentWidget()->layout()) layout->removeWidget(widget_);
  ViewAnchor* const anchor = ViewAnchor::find(widget_);
  adopted_ = true;
  widget_->setParent(nullptr);
  widget_->setAttribute(Qt::WA_WState_ExplicitShowHide, isHidden);
  if (anchor) anchor->release();
}

bool View::isDescendantOf(const ViewRef& view) const {
  if (!view || !widget_ || !view->widget_) return false;
  return view->widget_ == widget_ || view->widget_->isAncestorOf(widget_);
}

ViewRef View::viewWithTag(int tag) {
  if (tag_ == tag) return std::static_pointer_cast<View>(shared_from_this());
  for (const ViewRef& each : subviews()) {
    if (ViewRef found = each->viewWithTag(tag)) return found;
  }
  return nullptr;
}

std::shared_ptr<NSWindow> View::window() const {
  return widget_ ? NSWindow::of(widget_->window()) : nullptr;
}

void View::setIdentifier(const QString& identifier) {
  if (widget_) widget_->setObjectName(identifier);
}

void View::setToolTip(const QString& text) {
  if (widget_) widget_->setToolTip(text);
}

}  // namespace kelvar
