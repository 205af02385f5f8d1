#include "ui/ViewAnchor.h"

#include <QEvent>
#include <QWidget>
#include <utility>

#include "ui/View.h"

namespace kelvar {

ViewAnchor* ViewAnchor::find(const QWidget* widget) {
  for (QObject* const child : widget->children()) {
    if (auto* const anchor = dynamic_cast<ViewAnchor*>(child)) return anchor;
  }
  return nullptr;
}

ViewAnchor& ViewAnchor::of(View& view) {
  ViewAnchor* const known = find(view.widget());
  // A view that was not kept may have been replaced by another one of the same widget.
  if (known && known->view().get() == &view) return *known;
  delete known;
  return *new ViewAnchor(view.widget(), std::static_pointer_cast<View>(view.shared_from_this()));
}

ViewAnchor::ViewAnchor(QWidget* widget, std::weak_ptr<View> view)
    : QObject(widget), view_(std::move(view)) {
  widget->installEventFilter(this);
}

void ViewAnchor::keep(std::shared_ptr<View> view, ObjectRef controller) {
  kept_ = std::move(view);
  controller_ = std::move(controller);
}

void ViewAnchor::release() {
  // Later, so that nothing ends within the call that releases it.
  const auto later = [view = std::exchange(kept_, nullptr),
                      controller = std::exchange(controller_, nullptr)] {};
  QMetaObject::invokeMethod(this, later, Qt::QueuedConnection);
}

bool ViewAnchor::eventFilter(QObject* watched, QEvent* event) {
  if (watched == parent() && event->type() == QEvent::Resize) {
    if (const ViewRef view = view_.lock()) view->resizeSubviews();
  }
  return false;
}

}  // namespace kelvar
