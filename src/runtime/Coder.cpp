#include "runtime/Coder.h"

namespace kelvar {

Coder::~Coder() = default;

}  // namespace kelvar
