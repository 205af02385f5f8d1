#pragma once

#include <isa-l/igzip_lib.h>

#include <cstdint>
#include <vector>

namespace kelvar::png {

/// Deflates bands of filtered rows, one after the other, into blocks that end on a byte boundary
/// and refer to nothing before the band.
///
/// The output depends on the band alone, not on the bands before it, the thread, or the address of
/// this object. ISA-L itself does not guarantee that: at its faster levels, the loop that starts
/// without history reads an entry of the match table through a register that still holds the
/// address of the stream, so one file in thirty differs. To prevent this, a few bytes are flushed
/// first: they take a different loop and give the faulty one a history to start from.
class Deflate {
 public:
  Deflate() : tables_(ISAL_DEF_LVL1_DEFAULT) {}

  /// Appends the compressed `band` to `*out`; the last one ends the stream. With `runsOnly`, only
  /// the two preceding bytes are searched for matches.
  void append(const std::vector<uint8_t>& band, bool runsOnly, bool last,
              std::vector<uint8_t>* out);

 private:
  /// Compresses the input up to `end` and appends the result.
  void feed(const uint8_t* end, uint16_t flush, std::vector<uint8_t>* out);

  isal_zstream stream_;
  std::vector<uint8_t> tables_;
};

}  // namespace kelvar::png
