#include "pixels/codec/PngDeflate.h"

#include <algorithm>

namespace kelvar::png {
namespace {

constexpr int kLevel = 1;
constexpr uint16_t kRunsOnly = 1;
/// Flushed before the rest. At least the four bytes that ISA-L hashes at once.
constexpr size_t kFirstBytes = 8;

}  // namespace

void Deflate::append(const std::vector<uint8_t>& band, bool runsOnly, bool last,
                     std::vector<uint8_t>* out) {
  isal_deflate_init(&stream_);
  stream_.level = kLevel;
  stream_.level_buf = tables_.data();
  stream_.level_buf_size = static_cast<uint32_t>(tables_.size());
  stream_.hist_bits = runsOnly ? kRunsOnly : 0;
  stream_.next_in = const_cast<uint8_t*>(band.data());
  const uint8_t* const end = band.data() + band.size();
  if (band.size() > kFirstBytes) feed(band.data() + kFirstBytes, SYNC_FLUSH, out);
  stream_.end_of_stream = last;
  feed(end, FULL_FLUSH, out);
}

void Deflate::feed(const uint8_t* end, uint16_t flush, std::vector<uint8_t>* out) {
  stream_.avail_in = static_cast<uint32_t>(end - stream_.next_in);
  stream_.flush = flush;
  const size_t room = stream_.avail_in / 2 + 4096;
  do {
    const size_t used = out->size();
    out->resize(used + room);
    stream_.next_out = out->data() + used;
    stream_.avail_out = static_cast<uint32_t>(room);
    isal_deflate(&stream_);
    out->resize(used + room - stream_.avail_out);
  } while (stream_.avail_out == 0);
}

}  // namespace kelvar::png
