#include "platform/network/Gunzip.h"

#include <zlib.h>

namespace kelvar {

QByteArray gunzipped(const QByteArray& packed, qsizetype maxBytes) {
  constexpr int kGzip = 16;
  z_stream stream{};
  if (inflateInit2(&stream, kGzip + MAX_WBITS) != Z_OK) return {};
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
  stream.avail_in = uInt(packed.size());
  QByteArray whole("");
  int state = Z_OK;
  while (state == Z_OK && whole.size() <= maxBytes) {
    char part[1 << 14];
    stream.next_out = reinterpret_cast<Bytef*>(part);
    stream.avail_out = sizeof part;
    state = inflate(&stream, Z_NO_FLUSH);
    whole.append(part, qsizetype(sizeof part - stream.avail_out));
  }
  inflateEnd(&stream);
  return state == Z_STREAM_END && whole.size() <= maxBytes ? whole : QByteArray();
}

}  // namespace kelvar
