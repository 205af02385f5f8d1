#pragma once

#include <cstdint>

namespace kelvar {

/// Rows between the byte orders of files and the pixels of Image (premultiplied BGRA, one 32-bit
/// word each). Both directions round to nearest, leave opaque pixels as they are and make a fully
/// transparent pixel 0.

/// `width` pixels of R, G, B, A, not premultiplied, to premultiplied words.
void premultiplyRow(const uint8_t* rgba, uint32_t* pixels, int width);

/// The way back: `rgba` receives four bytes a pixel. A colour greater than its alpha, which no
/// premultiplied pixel has, becomes 255.
void unpremultiplyRow(const uint32_t* pixels, uint8_t* rgba, int width);

/// 0xAARRGGBB, not premultiplied, to premultiplied.
uint32_t premultiplied(uint32_t argb);

/// 0xAARRGGBB, premultiplied, to not premultiplied.
uint32_t unpremultiplied(uint32_t argb);

}  // namespace kelvar
