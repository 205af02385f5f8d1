#pragma once

#include <isa-l/igzip_lib.h>

#include <cstdint>
#include <memory>
#include <span>

#include "pixels/Result.h"

namespace kelvar::png {

/// Walks through the chunks of a file, from the first to IEND. The functions refer to the current
/// chunk.
class Chunks {
 public:
  explicit Chunks(std::span<const uint8_t> file) : file_(file) {}

  /// Checks that the file is complete and that the checksums of all chunks that the pixels depend
  /// on are correct. Moves to IEND. The functions below require a file that passed this check.
  Result<void> validate();

  bool is(const char* type) const;
  uint32_t size() const;
  const uint8_t* data() const;
  void next();

 private:
  /// Whether the chunk ends within the file.
  bool isWhole() const;

  std::span<const uint8_t> file_;
  size_t at_ = 8;  ///< After the signature.
};

/// The inflated bytes of all IDAT chunks of a validated file, one after the other.
class PixelStream {
 public:
  explicit PixelStream(std::span<const uint8_t> file);

  /// Reads exactly `size` bytes, or returns false.
  bool fill(uint8_t* out, size_t size);

  /// Verifies the stream's own checksum once all rows are read. Returns false if it is wrong; more
  /// data than the image needs is accepted.
  bool finish();

 private:
  bool inflate();
  bool isFinished() const;
  bool openChunk();

  Chunks chunks_;
  std::unique_ptr<inflate_state> state_ = std::make_unique<inflate_state>();
};

}  // namespace kelvar::png
