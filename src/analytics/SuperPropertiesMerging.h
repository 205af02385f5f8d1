#pragma once

#include "analytics/Properties.h"
#include "platform/Export.h"

namespace kelvar {

/// A tracker whose super properties can be added to. Apart from `Tracker`, since most trackers
/// cannot: a broadcast skips them.
class KELVAR_EXPORT SuperPropertiesMerging {
 public:
  virtual ~SuperPropertiesMerging();

  /// New values win.
  virtual void addSuperProperties(const QVariantMap& properties) = 0;
};

}  // namespace kelvar
