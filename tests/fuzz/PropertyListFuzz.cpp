#include "fuzz/ReadAgain.h"

/// The three forms of a property list, told apart by how they begin.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  QString error;
  const QVariant value = kelvar::PropertyList::read(kelvar::bytesOf(data, size), nullptr, &error);
  kelvar::check(value.isValid() == error.isEmpty(), "there is a value or a sentence");
  if (value.isValid()) kelvar::readAgain(value);
  return 0;
}
