#pragma once

#include <QLatin1String>
#include <QList>
#include <QWidget>

namespace kelvar::cli {

/// Milliseconds to wait for something before it counts as failed.
constexpr int kMaxWait = 60000;

/// The visible widget with that name, or null. The row has two layouts, and each shape has a
/// chooser, so several widgets can have it.
template <class T>
T* visibleChild(const QWidget& parent, const char* name) {
  for (T* found : parent.findChildren<T*>(QLatin1String(name))) {
    if (found->isVisible()) return found;
  }
  return nullptr;
}

}  // namespace kelvar::cli
