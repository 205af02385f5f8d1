#include "mockup/ImageCache.h"

#include <algorithm>
#include <cassert>

namespace kelvar {
namespace {

qsizetype bytesOf(const ImageRef& image) { return image->pixels().sizeInBytes(); }

}  // namespace

ImageRef ImageCache::lookup(const QString& file, const FileState& state,
                            const QSizeF& rasterizationSize) {
  const auto found = std::find_if(slots_.begin(), slots_.end(), [&](const Slot& slot) {
    const Entry& entry = slot.entry;
    return !slot.isErased && entry.file == file && entry.state == state &&
           entry.rasterizationSize.value_or(rasterizationSize) == rasterizationSize;
  });
  if (found == slots_.end()) return nullptr;
  std::rotate(found, found + 1, slots_.end());
  return slots_.back().entry.image;
}

ImageRef ImageCache::stale(const QString& file) const {
  const auto last = std::find_if(slots_.rbegin(), slots_.rend(),
                                 [&](const Slot& slot) { return slot.entry.file == file; });
  return last == slots_.rend() ? nullptr : last->entry.image;
}

void ImageCache::insert(const Entry& entry) {
  assert(entry.image);
  slots_.removeIf([&](const Slot& slot) {
    return slot.entry.file == entry.file && (slot.isErased || slot.entry.state != entry.state);
  });
  slots_.append({entry});
  qsizetype bytes = 0;
  for (const Slot& slot : slots_) bytes += bytesOf(slot.entry.image);
  while (bytes > capacity_ && slots_.size() > 1) {
    bytes -= bytesOf(slots_.takeFirst().entry.image);
  }
}

void ImageCache::erase(const QString& file) {
  for (Slot& slot : slots_) {
    if (slot.entry.file == file) slot.isErased = true;
  }
}

}  // namespace kelvar
