#include "scripting/Base64CodecClass.h"

#include "runtime/ClassInfo.h"
#include "util/MF_Base64Codec.h"

namespace kelvar {

const ClassInfo& base64CodecClass() {
  using Codec = MF_Base64Codec;
  static const ClassInfo kClass =
      ClassInfoBuilder<Codec>("MF_Base64Codec")
          .classOperation("base64StringFromData:", &Codec::base64StringFromData,
                          "Returns the bytes in standard Base64, padded.")
          .classOperation("dataFromBase64String:", &Codec::dataFromBase64String,
                          "Returns the bytes of standard Base64; other characters are skipped.")
          .classOperation("base64UrlEncodedStringFromBase64String:",
                          &Codec::base64UrlEncodedStringFromBase64String,
                          "Returns standard Base64 in the form for URLs, without padding.")
          .classOperation("base64StringFromBase64UrlEncodedString:",
                          &Codec::base64StringFromBase64UrlEncodedString,
                          "Returns Base64 from a URL in the standard form, padded.");
  return kClass;
}

}  // namespace kelvar
