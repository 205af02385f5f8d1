#pragma once

namespace kelvar {

class ClassInfo;

/// `MF_Base64Codec` as scripts see it.
const ClassInfo& base64CodecClass();

}  // namespace kelvar
