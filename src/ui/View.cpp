#include "ui/View.h"

#include <QHash>

#include "runtime/ClassInfo.h"
#include "ui/KVButton.h"
#include "ui/KVView.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&View::theClass);

QHash<const QWidget*, std::weak_ptr<View>>& views() {
  static QHash<const QWidget*, std::weak_ptr<View>> kViews;
  return kViews;
}

const ClassInfo& infoOf(const QWidget* widget) {
  if (qobject_cast<const KVView*>(widget)) return KVView::theClass();
  return qobject_cast<const KVButton*>(widget) ? KVButton::theClass() : View::theClass();
}

}  // namespace

const ClassInfo& View::theClass() {
  static const ClassInfo kClass =
      Description<View>("NSView").property("hidden", &View::isHidden, &View::setHidden);
  return kClass;
}

const ClassInfo& View::classInfo() const { return info_; }

ViewRef View::of(QWidget* widget) {
  if (!widget) return nullptr;
  std::weak_ptr<View>& known = views()[widget];
  // What is known may be of a widget that is gone and lay at the same address.
  if (ViewRef view = known.lock(); view && view->widget() == widget) return view;
  auto view = std::make_shared<View>(widget, infoOf(widget));
  known = view;
  return view;
}

ViewRef View::adopt(QWidget* widget) {
  ViewRef view = of(widget);
  if (view) view->adopted_ = true;
  return view;
}

View::View(QWidget* widget, const ClassInfo& info) : widget_(widget), key_(widget), info_(info) {}

View::~View() {
  const auto known = views().constFind(key_);
  if (known != views().cend() && known->expired()) views().erase(known);
  // Later, since the widget may be in the middle of calling whoever has let go of it.
  if (widget_ && adopted_ && !widget_->parentWidget()) widget_->deleteLater();
}

void View::setHidden(bool hidden) {
  if (widget_) widget_->setHidden(hidden);
}

}  // namespace kelvar
