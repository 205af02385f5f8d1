#include "fuzz/ReadAgain.h"

/// The old text form of a property list.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using kelvar::PropertyList;
  QString error;
  auto found = PropertyList::Format::Binary;
  // Nothing that begins with a comment is taken for another form.
  const QVariant value = PropertyList::read("/**/" + kelvar::bytesOf(data, size), &found, &error);
  kelvar::check(value.isValid() == error.isEmpty(), "there is a value or a sentence");
  if (!value.isValid()) return 0;
  kelvar::check(found == PropertyList::Format::OpenStep, "it is the old text form");
  kelvar::readAgain(value);
  return 0;
}
