#include "pixels/codec/AlphaPremultiply.h"

#include <algorithm>

namespace kelvar {

namespace {

/// round(c * a / 255) for bytes, exactly.
inline uint32_t scaled(uint32_t c, uint32_t a) {
  const uint32_t t = c * a + 128;
  return (t + (t >> 8)) >> 8;
}

/// round(c * 255 / a), at most 255. Exact although in floats: all numbers are below 2^17, and a
/// quotient that is no whole number lies further from the next one than a float's rounding.
inline uint32_t unscaled(uint32_t c, uint32_t a) {
  const auto n = static_cast<float>(static_cast<int32_t>(c * 255 + a / 2));
  const auto q =
      static_cast<int32_t>(n / static_cast<float>(static_cast<int32_t>(std::max(a, 1u))));
  return static_cast<uint32_t>(std::min(q, 255));
}

}  // namespace

uint32_t premultiplied(uint32_t argb) {
  const uint32_t a = argb >> 24;
  return a << 24 | scaled(argb >> 16 & 255, a) << 16 | scaled(argb >> 8 & 255, a) << 8 |
         scaled(argb & 255, a);
}

uint32_t unpremultiplied(uint32_t argb) {
  const uint32_t a = argb >> 24;
  return a << 24 | unscaled(argb >> 16 & 255, a) << 16 | unscaled(argb >> 8 & 255, a) << 8 |
         unscaled(argb & 255, a);
}

void premultiplyRow(const uint8_t* rgba, uint32_t* pixels, int width) {
  for (int x = 0; x < width; ++x) {
    const uint8_t* p = rgba + 4 * x;
    const uint32_t a = p[3];
    pixels[x] = a << 24 | scaled(p[0], a) << 16 | scaled(p[1], a) << 8 | scaled(p[2], a);
  }
}

void unpremultiplyRow(const uint32_t* pixels, uint8_t* rgba, int width) {
  constexpr int kRun = 16;
  for (int x = 0; x < width; x += kRun) {
    const int count = std::min(kRun, width - x);
    const uint32_t* in = pixels + x;
    uint8_t* out = rgba + 4 * x;
    // Nearly every run is wholly opaque or wholly empty, and needs no division.
    uint32_t all = ~0u, any = 0;
    for (int i = 0; i < count; ++i) {
      all &= in[i];
      any |= in[i];
    }
    const bool plain = all >> 24 == 255 || any == 0;
    for (int i = 0; i < count; ++i) {
      const uint32_t pixel = plain ? in[i] : unpremultiplied(in[i]);
      out[4 * i] = static_cast<uint8_t>(pixel >> 16);
      out[4 * i + 1] = static_cast<uint8_t>(pixel >> 8);
      out[4 * i + 2] = static_cast<uint8_t>(pixel);
      out[4 * i + 3] = static_cast<uint8_t>(pixel >> 24);
    }
  }
}

}  // namespace kelvar
