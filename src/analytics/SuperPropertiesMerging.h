#pragma once

#include "analytics/Properties.h"
#include "platform/Export.h"

namespace kelvar {

/// A tracker to whose super properties others can be added. Separate from `Tracker` because most
/// trackers do not support it: broadcasts skip those.
class KELVAR_EXPORT SuperPropertiesMerging {
 public:
  virtual ~SuperPropertiesMerging();

  /// New values replace existing ones.
  virtual void addSuperProperties(const QVariantMap& properties) = 0;
};

}  // namespace kelvar
