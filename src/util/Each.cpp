#include "util/Each.h"

namespace kelvar {

UnrecognizedOperation::UnrecognizedOperation()
    : std::logic_error("no element of the list understands the operation") {}

UnrecognizedOperation::~UnrecognizedOperation() = default;

}  // namespace kelvar
