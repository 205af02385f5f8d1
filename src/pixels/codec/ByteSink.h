#pragma once

#include <cstdint>
#include <functional>
#include <span>

#include "pixels/Result.h"

namespace kelvar {

/// Where an encoder writes: called with each piece of the file, in order, one at a time, though not
/// always on the same thread. A failure ends the encoding, and the encoder returns it.
using ByteSink = std::function<Result<void>(std::span<const uint8_t> bytes)>;

}  // namespace kelvar
