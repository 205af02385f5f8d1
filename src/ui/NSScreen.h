#pragma once

#include <QPointer>
#include <QRectF>
#include <QScreen>

#include "platform/Export.h"
#include "runtime/ClassInfo.h"

namespace kelvar {

/// A screen of the desktop; without a desktop, the one on which windows would be.
class KELVAR_EXPORT NSScreen : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  explicit NSScreen(QScreen* screen) : screen_(screen) {}

  /// From the bottom left of the main screen. Empty once the screen is gone.
  QRectF frame() const;
  /// Without the bars of the desktop.
  QRectF visibleFrame() const;
  /// Pixels per point.
  double backingScaleFactor() const { return screen_ ? screen_->devicePixelRatio() : 1; }

 private:
  QPointer<QScreen> screen_;
};

}  // namespace kelvar
