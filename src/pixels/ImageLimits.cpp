#include "pixels/ImageLimits.h"

namespace kelvar {

Result<void> validateImageSize(int64_t width, int64_t height) {
  if (fitsImageLimits(double(width), double(height))) return {};
  const std::string size = std::to_string(width) + " x " + std::to_string(height) + " pixels";
  if (width < 1 || height < 1) {
    return failure(Error::Kind::Damaged, "it declares an image of " + size);
  }
  return failure(Error::Kind::TooLarge, "it declares " + size + ", and the limit is " +
                                            std::to_string(kMaxImageSide) +
                                            " per side and 1 GiB in all");
}

}  // namespace kelvar
