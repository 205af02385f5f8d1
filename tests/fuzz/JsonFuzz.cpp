#include "platform/plist/Json.h"

#include "fuzz/Fuzz.h"
#include "platform/Values.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using kelvar::Json;
  const auto value = Json::read(kelvar::bytesOf(data, size));
  if (!value) return 0;
  for (const auto layout : {Json::Layout::Compact, Json::Layout::Indented}) {
    const QByteArray written = Json::write(*value, layout).value();
    kelvar::check(kelvar::identical(Json::read(written).value(), *value), "the value is preserved");
  }
  return 0;
}
