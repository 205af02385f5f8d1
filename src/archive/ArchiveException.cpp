#include "archive/ArchiveException.h"

const char HRCoderException[] = "HRCoderException";

namespace kelvar {

ArchiveException::~ArchiveException() = default;

}  // namespace kelvar
