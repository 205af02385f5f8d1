#include "runtime/NamedException.h"

namespace kelvar {

NamedException::~NamedException() = default;

}  // namespace kelvar
