#pragma once

#include <cstddef>
#include <cstdint>

namespace kelvar::png {

/// The five ways in which PNG predicts a byte: as 0, or from its neighbors (left, above, both).
enum class Filter : uint8_t { None, Sub, Up, Average, Paeth };
constexpr int kFilters = 5;

/// Bytes that must be readable after a row given to unfilter(): pixels of three bytes are read as
/// four.
constexpr size_t kRowPadding = 1;

/// Undoes the filter in place. `above` is the finished row above, zeros for the first; `row` may
/// follow it directly. `bytes` is a multiple of `pixelBytes`, which is 1 to 4.
void unfilter(Filter filter, uint8_t* row, const uint8_t* above, size_t bytes, int pixelBytes);

/// Writes the row's differences from its prediction to `out`. `row` and `above` have `pixelBytes`
/// readable zeros in front of them, which represent the pixel to the left of the first.
void filter(Filter filter, const uint8_t* row, const uint8_t* above, uint8_t* out, size_t bytes,
            int pixelBytes);

}  // namespace kelvar::png
