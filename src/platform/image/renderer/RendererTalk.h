#pragma once

#include <cstdint>

/// The protocol between the library and its renderers, kelvar-svg and kelvar-pdf, in packets over
/// one socket. The program sends Opened, receives what is wanted, and sends Done, any number of
/// times. At any time, it may send Failed or OutOfMemory instead.
namespace kelvar::renderer {

/// The program's file descriptors: the socket, and its output and the design, both in shared
/// memory.
constexpr int kSocket = 0, kOutput = 1, kDesign = 3;

struct Report {
  enum Kind : int32_t { Failed, OutOfMemory, Opened, Done } kind = Failed;
  int32_t pages = 0;             ///< When opened.
  double width = 0, height = 0;  ///< When opened: the natural size of the first page.
  int64_t bytes = 0;             ///< Of data in kOutput, when done.
  char message[240] = "";        ///< When failed: the error message, in UTF-8.
};

struct Wanted {
  /// The pixels of the first page: four bytes each, no gaps between rows, initially zero. Or the
  /// outlines or the text of a page, which only kelvar-pdf has, as data.
  enum What : int32_t { Pixels, Outlines, Text } what = Pixels;
  int32_t width = 0, height = 0;  ///< Of the image.
  int32_t page = 0;
};

}  // namespace kelvar::renderer
