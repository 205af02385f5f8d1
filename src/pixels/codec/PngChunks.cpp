#include "pixels/codec/PngChunks.h"

#include <isa-l/crc.h>

#include <algorithm>
#include <cstring>

#include "pixels/codec/BigEndian.h"

namespace kelvar::png {
namespace {

/// Bytes of a chunk besides its data: length, type and checksum.
constexpr size_t kFrame = 12;

}  // namespace

Result<void> Chunks::validate() {
  for (; isWhole(); next()) {
    const bool isNeeded = (file_[at_ + 4] & 0x20) == 0 || is("tRNS");
    if (isNeeded &&
        crc32_gzip_refl(0, &file_[at_ + 4], size() + 4) != readBigEndian(data() + size())) {
      return failure(Error::Kind::Damaged, "the PNG is damaged");
    }
    if (is("IEND")) return {};
  }
  return failure(Error::Kind::Damaged, "the PNG is cut short");
}

bool Chunks::isWhole() const {
  const size_t rest = file_.size() - std::min(at_, file_.size());
  return rest >= kFrame && rest - kFrame >= size();
}

bool Chunks::is(const char* type) const { return std::memcmp(&file_[at_ + 4], type, 4) == 0; }

uint32_t Chunks::size() const { return readBigEndian(&file_[at_]); }

const uint8_t* Chunks::data() const { return &file_[at_] + 8; }

void Chunks::next() { at_ += kFrame + size(); }

PixelStream::PixelStream(std::span<const uint8_t> file) : chunks_(file) {
  isal_inflate_init(state_.get());
  state_->crc_flag = ISAL_ZLIB;
  while (!chunks_.is("IDAT") && !chunks_.is("IEND")) chunks_.next();
}

bool PixelStream::fill(uint8_t* out, size_t size) {
  state_->next_out = out;
  state_->avail_out = static_cast<uint32_t>(size);
  while (inflate()) {
    if (state_->avail_out == 0) return true;
    if (isFinished() || (state_->avail_in == 0 && !openChunk())) return false;
  }
  return false;
}

bool PixelStream::finish() {
  uint8_t surplus[16];
  while (!isFinished()) {
    state_->next_out = surplus;
    state_->avail_out = sizeof surplus;
    if (!inflate()) return false;
    if (state_->avail_out < sizeof surplus) return true;
    if (!isFinished() && state_->avail_in == 0 && !openChunk()) return false;
  }
  return true;
}

bool PixelStream::inflate() {
  const int result = isal_inflate(state_.get());
  return result >= 0 && result != ISAL_NEED_DICT;
}

bool PixelStream::isFinished() const { return state_->block_state == ISAL_BLOCK_FINISH; }

bool PixelStream::openChunk() {
  if (!chunks_.is("IDAT")) return false;
  state_->next_in = const_cast<uint8_t*>(chunks_.data());
  state_->avail_in = chunks_.size();
  chunks_.next();
  return true;
}

}  // namespace kelvar::png
