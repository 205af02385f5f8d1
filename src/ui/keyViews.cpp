#include "ui/keyViews.h"

#include <QPointer>
#include <QVariant>

namespace kelvar {
namespace {

constexpr const char* kNext = "nextKeyWidget";

/// Qt puts only widgets that take the focus themselves in order.
QWidget* focusTarget(QWidget* widget) {
  return widget->focusProxy() ? widget->focusProxy() : widget;
}

}  // namespace

void setNextKeyWidget(QWidget* widget, QWidget* next) {
  widget->setProperty(kNext, QVariant::fromValue(QPointer<QObject>(next)));
}

void chainKeyWidgets(QWidget* window) {
  for (QWidget* const widget : window->findChildren<QWidget*>()) {
    auto* const next =
        qobject_cast<QWidget*>(widget->property(kNext).value<QPointer<QObject>>().data());
    if (next && next->window() == window) {
      QWidget::setTabOrder(focusTarget(widget), focusTarget(next));
    }
  }
}

}  // namespace kelvar
