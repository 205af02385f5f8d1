#pragma once

#include <cstdint>

/// What the library and kelvar-svg say to each other, in whole packets over one socket. The program
/// says Size, is told the pixels wanted, and says Drawn; or it says Failed at any time.
namespace kelvar::svg {

/// The program's files: the socket, the picture's pixels and the design, both shared memory.
constexpr int kSocket = 0, kPixels = 1, kDesign = 3;

struct Report {
  enum Kind : int32_t { Failed, Size, Drawn } kind = Failed;
  double width = 0, height = 0;  ///< Size: the natural one.
  char sentence[240] = "";       ///< Failed: why, in UTF-8.
};

/// For an image of four bytes a pixel without gaps, all zero, that kPixels holds.
struct Wanted {
  int32_t width = 0, height = 0;
};

}  // namespace kelvar::svg
