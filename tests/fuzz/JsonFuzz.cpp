#include "platform/Json.h"

#include "fuzz/Fuzz.h"
#include "platform/Values.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using kelvar::Json;
  QString error;
  const QVariant value = Json::read(kelvar::bytesOf(data, size), &error);
  kelvar::check(value.isValid() == error.isEmpty(), "there is a value or a sentence");
  if (!value.isValid()) return 0;
  for (const auto layout : {Json::Layout::Compact, Json::Layout::Indented}) {
    const QByteArray written = Json::write(value, layout, &error);
    kelvar::check(kelvar::identical(Json::read(written, &error), value), "everything is kept");
  }
  return 0;
}
