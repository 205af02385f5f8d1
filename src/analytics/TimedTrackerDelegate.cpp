#include "analytics/TimedTrackerDelegate.h"

namespace kelvar {

TimedTrackerDelegate::~TimedTrackerDelegate() = default;

}  // namespace kelvar
