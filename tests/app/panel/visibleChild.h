#pragma once

#include <QLatin1String>
#include <QList>
#include <QWidget>

namespace kelvar::app {

/// Milliseconds after which what is waited for does not come any more.
constexpr int kLongest = 60000;

/// The one of that name that is in sight, or null: the row has two layouts, and there is a chooser
/// a shape.
template <class T>
T* visibleChild(const QWidget& parent, const char* name) {
  for (T* found : parent.findChildren<T*>(QLatin1String(name))) {
    if (found->isVisible()) return found;
  }
  return nullptr;
}

}  // namespace kelvar::app
