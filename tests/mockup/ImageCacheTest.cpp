#include "mockup/ImageCache.h"

#include <gtest/gtest.h>

namespace kelvar {
namespace {

/// 400 bytes.
ImageRef image() {
  return std::make_shared<Image>(QImage(10, 10, QImage::Format_RGB32), QSizeF(10, 10));
}

QString file(char name) { return QString(QLatin1Char(name)); }

ImageCache::Entry entry(char name, qint64 seconds = 1, std::optional<QSizeF> size = {}) {
  return {file(name), {.seconds = seconds, .bytes = 7}, size, image()};
}

ImageRef lookup(ImageCache& cache, const ImageCache::Entry& entry) {
  return cache.lookup(entry.file, entry.state, entry.rasterizationSize.value_or(QSizeF()));
}

TEST(ImageCacheTest, FindsImageOnlyInItsState) {
  ImageCache cache;
  const ImageCache::Entry before = entry('a', 1), after = entry('a', 2);
  EXPECT_EQ(lookup(cache, before), nullptr);
  cache.insert(before);
  EXPECT_EQ(lookup(cache, before), before.image);
  EXPECT_EQ(lookup(cache, after), nullptr) << "the file has changed";
  EXPECT_EQ(cache.lookup(file('b'), before.state, {}), nullptr);
  cache.insert(after);
  EXPECT_EQ(lookup(cache, after), after.image);
  EXPECT_EQ(lookup(cache, before), nullptr) << "dropped with its state";
}

TEST(ImageCacheTest, FindsVectorsOnlyAtTheirSize) {
  ImageCache cache;
  const ImageCache::Entry small = entry('a', 1, QSizeF(5, 5)), large = entry('a', 1, QSizeF(9, 9));
  cache.insert(small);
  EXPECT_EQ(lookup(cache, large), nullptr);
  cache.insert(large);
  EXPECT_EQ(lookup(cache, small), small.image) << "both sizes are kept";
  EXPECT_EQ(lookup(cache, large), large.image);
  const ImageCache::Entry bitmap = entry('b');
  cache.insert(bitmap);
  EXPECT_EQ(cache.lookup(file('b'), bitmap.state, {9, 9}), bitmap.image);
}

TEST(ImageCacheTest, EvictsLeastRecentlyUsed) {
  ImageCache cache(3 * 400);
  const ImageCache::Entry a = entry('a'), b = entry('b'), c = entry('c'), d = entry('d');
  for (const auto& each : {a, b, c}) cache.insert(each);
  EXPECT_TRUE(lookup(cache, a));
  cache.insert(d);
  EXPECT_FALSE(lookup(cache, b)) << "unused for longest";
  for (const auto& each : {a, c, d}) EXPECT_TRUE(lookup(cache, each)) << qPrintable(each.file);

  ImageCache tiny(1);
  tiny.insert(a);
  EXPECT_TRUE(lookup(tiny, a)) << "the last one stays";
  tiny.insert(b);
  EXPECT_FALSE(lookup(tiny, a));
}

TEST(ImageCacheTest, KeepsErasedImagesAsStale) {
  ImageCache cache;
  EXPECT_EQ(cache.stale(file('a')), nullptr);
  const ImageCache::Entry before = entry('a'), after = entry('a');
  cache.insert(before);
  cache.erase(file('a'));
  EXPECT_EQ(lookup(cache, before), nullptr);
  EXPECT_EQ(cache.stale(file('a')), before.image);
  cache.insert(after);
  EXPECT_EQ(lookup(cache, after), after.image);
  EXPECT_EQ(cache.stale(file('a')), after.image);
}

}  // namespace
}  // namespace kelvar
