#include "runtime/Implementation.h"

namespace kelvar {

Implementation::~Implementation() = default;
Implemented::~Implemented() = default;

}  // namespace kelvar
