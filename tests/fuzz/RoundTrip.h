#pragma once

#include "fuzz/Fuzz.h"
#include "platform/Values.h"
#include "platform/plist/PropertyList.h"

namespace kelvar {

/// A few bytes can describe a long list, which would slow down all other inputs.
constexpr qsizetype kMaxBinarySize = 1 << 16;

/// Checks that a value that was read survives being written and read again.
inline void checkRoundTrip(const QVariant& value) {
  using Format = PropertyList::Format;
  check(PropertyList::isPropertyList(value), "a value that was read is a property list");
  const QByteArray binary = PropertyList::write(value, Format::Binary).value();
  if (binary.size() > kMaxBinarySize) return;
  check(identical(PropertyList::read(binary).value(), value), "binary preserves the value");
  const Result<QByteArray> xml = PropertyList::write(value, Format::Xml);
  if (!xml) return;  // XML cannot hold every value.
  const Result<QVariant> again = PropertyList::read(*xml);
  check(again.has_value(), "XML that was written can be read");
  check(PropertyList::write(*again, Format::Xml).value() == *xml, "XML is stable");
}

}  // namespace kelvar
