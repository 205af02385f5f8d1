#include "fuzz/RoundTrip.h"

/// A property list in OpenStep format.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using kelvar::PropertyList;
  auto found = PropertyList::Format::Binary;
  // Nothing that begins with a comment is mistaken for another format.
  const auto value = PropertyList::read("/**/" + kelvar::bytesOf(data, size), &found);
  if (!value) return 0;
  kelvar::check(found == PropertyList::Format::OpenStep, "the format is OpenStep");
  kelvar::checkRoundTrip(*value);
  return 0;
}
