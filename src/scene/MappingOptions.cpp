#include "scene/MappingOptions.h"

#include <charconv>
#include <string>

namespace kelvar {
namespace {

std::string text(double number) {
  char digits[32];
  return {digits, std::to_chars(std::begin(digits), std::end(digits), number).ptr};
}

}  // namespace

Result<void> validateQuality(double quality, std::string_view name) {
  constexpr double kMin = MappingOptions::kMinQuality, kMax = MappingOptions::kMaxQuality;
  if (quality == 0 || (quality >= kMin && quality <= kMax)) return {};
  return failure(Error::Kind::InvalidArgument, std::string(name) + " takes a number from " +
                                                   text(kMin) + " to " + text(kMax) +
                                                   ", or 0 for 1");
}

Result<void> validateRotation(int64_t rotation, std::string_view name) {
  if (rotation >= 0 && rotation <= 3) return {};
  std::string message = std::string(name) + " takes a number of quarter turns from 0 to 3, not " +
                        std::to_string(rotation);
  if (rotation > 0 && rotation % 90 == 0) {
    message +=
        "; for " + std::to_string(rotation) + " degrees, use " + std::to_string(rotation / 90 % 4);
  } else if (rotation > 0) {
    message +=
        "; for " + std::to_string(rotation) + " quarter turns, use " + std::to_string(rotation % 4);
  }
  return failure(Error::Kind::InvalidArgument, std::move(message));
}

}  // namespace kelvar
