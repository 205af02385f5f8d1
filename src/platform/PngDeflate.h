#pragma once

#include <isa-l/igzip_lib.h>

#include <cstdint>
#include <vector>

namespace kelvar::png {

/// Deflates bands of filtered rows, one after the other: blocks that end on a whole byte and refer
/// to nothing before the band.
///
/// The bytes follow from the band alone: not from the bands before it, the thread, or where this
/// object lies. ISA-L by itself does not promise that: on its faster levels the first loop over
/// unread history takes a bit of the match table from a register that still holds the address of
/// the stream, so that one file in thirty comes out another way. A few bytes that are flushed
/// beforehand are read by another loop, and leave that one a history to start from.
class Deflate {
 public:
  Deflate() : tables_(ISAL_DEF_LVL1_DEFAULT) {}

  /// Appends the packed `band` to `*out`; the last one of a stream ends it. With `runsOnly`,
  /// matches are looked for in the two bytes before alone.
  void append(const std::vector<uint8_t>& band, bool runsOnly, bool last,
              std::vector<uint8_t>* out);

 private:
  /// Appends what the stream makes of its input up to `end`.
  void feed(const uint8_t* end, uint16_t flush, std::vector<uint8_t>* out);

  isal_zstream stream_;
  std::vector<uint8_t> tables_;
};

}  // namespace kelvar::png
