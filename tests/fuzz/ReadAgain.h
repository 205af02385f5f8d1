#pragma once

#include "fuzz/Fuzz.h"
#include "platform/PropertyList.h"
#include "platform/Values.h"

namespace kelvar {

/// Few bytes can stand for a long list, which would take all the time that others need.
constexpr qsizetype kLargest = 1 << 16;

/// Checks that a property list that was read can be written and read again.
inline void readAgain(const QVariant& value) {
  using Format = PropertyList::Format;
  check(PropertyList::isPropertyList(value), "what is read is a property list");
  QString error;
  const QByteArray binary = PropertyList::write(value, Format::Binary, &error);
  if (binary.size() > kLargest) return;
  check(identical(PropertyList::read(binary, nullptr, &error), value), "binary keeps everything");
  const QByteArray xml = PropertyList::write(value, Format::Xml, &error);
  if (xml.isEmpty()) return;  // It cannot hold everything, and then says so.
  const QVariant again = PropertyList::read(xml, nullptr, &error);
  check(again.isValid(), "what is written as XML can be read");
  check(PropertyList::write(again, Format::Xml, &error) == xml, "XML stays the same");
}

}  // namespace kelvar
