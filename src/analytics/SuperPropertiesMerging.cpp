#include "analytics/SuperPropertiesMerging.h"

namespace kelvar {

SuperPropertiesMerging::~SuperPropertiesMerging() = default;

}  // namespace kelvar
