#include "fuzz/RoundTrip.h"

/// A property list in any of its three formats, which are told apart by their first bytes.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const auto value = kelvar::PropertyList::read(kelvar::bytesOf(data, size));
  if (value) kelvar::checkRoundTrip(*value);
  return 0;
}
