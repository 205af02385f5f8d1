#pragma once

#include <cstddef>
#include <cstdint>

namespace kelvar {

/// How one component of a pixel is stored, in the byte order of the machine.
enum class ComponentType : uint8_t {
  UInt8,    ///< 0 to 255 represent 0 to 1.
  UInt16,   ///< 0 to 65535 represent 0 to 1.
  Float32,  ///< Any finite number; alpha is 0 to 1.
};

/// What the last of four channels means.
enum class AlphaKind : uint8_t {
  None,           ///< There is no alpha: every channel is a color, or a mask.
  Straight,       ///< The other channels are independent of alpha.
  Premultiplied,  ///< The other channels have been multiplied by alpha.
};

/// The layout of a pixel: interleaved channels of one type. The order of the color channels is up
/// to the owner; alpha, if there is any, comes last. The default is the format that Kelvar itself
/// uses.
struct PixelFormat {
  /// 1, 3 or 4.
  int channels = 4;
  ComponentType component = ComponentType::UInt8;
  /// `None` unless there are four channels.
  AlphaKind alpha = AlphaKind::Premultiplied;

  constexpr bool isValid() const {
    return channels == 4 || ((channels == 1 || channels == 3) && alpha == AlphaKind::None);
  }

  constexpr size_t bytesPerComponent() const {
    switch (component) {
      case ComponentType::UInt8:
        return 1;
      case ComponentType::UInt16:
        return 2;
      case ComponentType::Float32:
        return 4;
    }
    return 0;
  }

  constexpr size_t bytesPerPixel() const { return size_t(channels) * bytesPerComponent(); }

  friend constexpr bool operator==(const PixelFormat&, const PixelFormat&) = default;
};

}  // namespace kelvar
