#include "ui/NSScrollView.h"

#include <QStyle>

#include "runtime/ClassInfo.h"
#include "ui/NSWindow.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&NSScrollView::staticClassInfo);

Qt::ScrollBarPolicy policy(bool has) {
  return has ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff;
}

}  // namespace

const ClassInfo& NSScrollView::staticClassInfo() {
  using V = NSScrollView;
  static const ClassInfo kClass =
      ClassInfoBuilder<V, View>("NSScrollView")
          .initializer(
              "init", [] { return V::initWithFrame({}); }, "Creates a scroll view of size zero.")
          .initializer("initWithFrame:", &V::initWithFrame, "Creates an empty scroll view.")
          .property("documentView", &V::documentView, &V::setDocumentView,
                    "The view that is scrolled, or nil; its top left is shown at first.")
          .property("hasVerticalScroller", &V::hasVerticalScroller, &V::setHasVerticalScroller,
                    "Whether a vertical scroll bar appears where it is needed; false at first.")
          .property("hasHorizontalScroller", &V::hasHorizontalScroller,
                    &V::setHasHorizontalScroller,
                    "Whether a horizontal scroll bar appears where it is needed; false at first.")
          .operation("contentSize", &V::contentSize,
                     "Returns the size in points that the scroll bars leave for the document view.")
          .operation("scrollRectToVisible:", &V::scrollRectToVisible,
                     "Scrolls as little as shows the rectangle of the document view.");
  return kClass;
}

std::shared_ptr<NSScrollView> NSScrollView::initWithFrame(const QRectF& frame) {
  return std::static_pointer_cast<NSScrollView>(View::adopt(new ScrollArea, frame));
}

QScrollArea* NSScrollView::area() const { return qobject_cast<QScrollArea*>(widget()); }

QList<ViewRef> NSScrollView::subviews() const {
  const ViewRef document = documentView();
  return document ? QList<ViewRef>{document} : QList<ViewRef>();
}

ViewRef NSScrollView::documentView() const { return area() ? View::of(area()->widget()) : nullptr; }

void NSScrollView::setDocumentView(const ViewRef& view) {
  if (!area() || view == documentView()) return;
  // Not deleted: a script may still hold it.
  if (QWidget* const before = area()->takeWidget()) View::adopt(before)->removeFromSuperview();
  if (!view) return;
  view->putInto(*this, [this](QWidget* widget) { area()->setWidget(widget); });
}

bool NSScrollView::hasVerticalScroller() const {
  return area() && area()->verticalScrollBarPolicy() != Qt::ScrollBarAlwaysOff;
}

void NSScrollView::setHasVerticalScroller(bool has) {
  if (area()) area()->setVerticalScrollBarPolicy(policy(has));
}

bool NSScrollView::hasHorizontalScroller() const {
  return area() && area()->horizontalScrollBarPolicy() != Qt::ScrollBarAlwaysOff;
}

void NSScrollView::setHasHorizontalScroller(bool has) {
  if (area()) area()->setHorizontalScrollBarPolicy(policy(has));
}

QSizeF NSScrollView::contentSize() const {
  if (!area()) return {};
  const int bar = area()->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  const QSize bars(hasVerticalScroller() ? bar : 0, hasHorizontalScroller() ? bar : 0);
  return QSizeF(area()->size() - bars).expandedTo({0, 0});
}

void NSScrollView::scrollRectToVisible(const QRectF& rect) {
  const QWidget* const document = area() ? area()->widget() : nullptr;
  if (!document) return;
  const QRect whole(int(rect.x()), int(document->height() - rect.y() - rect.height()),
                    int(rect.width()), int(rect.height()));
  // Last the top left, which is shown if not all of it fits.
  area()->ensureVisible(whole.x() + whole.width(), whole.y() + whole.height(), 0, 0);
  area()->ensureVisible(whole.x(), whole.y(), 0, 0);
}

}  // namespace kelvar
