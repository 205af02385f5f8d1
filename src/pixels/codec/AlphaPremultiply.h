#pragma once

#include <cstdint>

namespace kelvar {

/// Conversion of rows between files (RGBA bytes) and our images (premultiplied BGRA, a 32-bit word
/// per pixel). Both directions round to nearest, keep opaque pixels as they are and set fully
/// transparent pixels to 0.

/// `width` pixels of straight RGBA to premultiplied words.
void premultiplyRow(const uint8_t* rgba, uint32_t* pixels, int width);

/// The reverse: `rgba` receives four bytes per pixel. A color greater than its alpha, which is
/// invalid in a premultiplied pixel, becomes 255.
void unpremultiplyRow(const uint32_t* pixels, uint8_t* rgba, int width);

/// Straight 0xAARRGGBB to premultiplied.
uint32_t premultiplied(uint32_t argb);

/// Premultiplied 0xAARRGGBB to straight.
uint32_t unpremultiplied(uint32_t argb);

}  // namespace kelvar
