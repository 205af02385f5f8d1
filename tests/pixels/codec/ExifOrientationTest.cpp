#include "pixels/codec/ExifOrientation.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kelvar {
namespace {

using Data = std::vector<uint8_t>;

/// A TIFF header and directories with one entry each, in either byte order.
Data exif(bool isBigEndian, const std::vector<std::vector<uint16_t>>& entries) {
  Data data = isBigEndian ? Data{'M', 'M'} : Data{'I', 'I'};
  const auto append = [&](uint32_t value, int size) {
    for (int i = 0; i < size; ++i) {
      data.push_back(uint8_t(value >> 8 * (isBigEndian ? size - 1 - i : i)));
    }
  };
  append(42, 2);
  append(8, 4);
  for (size_t i = 0; i < entries.size(); ++i) {
    append(1, 2);
    append(entries[i][0], 2);  // Tag.
    append(entries[i][1], 2);  // Type.
    append(entries[i][2], 4);  // Count.
    append(entries[i][3], 2);  // Value.
    append(0, 2);
    append(i + 1 < entries.size() ? uint32_t(data.size() + 4) : 0, 4);
  }
  return data;
}

TEST(ExifOrientationTest, ReadsOnlyValidEntries) {
  const struct {
    const char* what;
    std::vector<std::vector<uint16_t>> entries;
    int expected;
  } kTable[] = {{"none", {{0x010f, 3, 1, 6}}, 1},
                {"orientation", {{0x0112, 3, 1, 6}}, 6},
                {"in the second directory", {{0x010f, 3, 1, 2}, {0x0112, 3, 1, 8}}, 8},
                {"wrong type", {{0x0112, 4, 1, 6}}, 1},
                {"two values", {{0x0112, 3, 2, 6}}, 1},
                {"0", {{0x0112, 3, 1, 0}}, 1},
                {"9", {{0x0112, 3, 1, 9}}, 1}};
  for (const auto& [what, entries, expected] : kTable) {
    for (const bool isBigEndian : {false, true}) {
      const Data whole = exif(isBigEndian, entries);
      EXPECT_EQ(exifOrientation(whole), expected) << what;
      for (size_t size = 0; size < whole.size(); ++size) {
        const Data cut(whole.begin(), whole.begin() + ptrdiff_t(size));
        const int orientation = exifOrientation(cut);
        EXPECT_TRUE(orientation == 1 || orientation == expected) << what << " cut to " << size;
      }
    }
  }
}

TEST(ExifOrientationTest, DirectoriesThatPointBackEnd) {
  Data data = exif(true, {{0x010f, 3, 1, 1}});
  data[data.size() - 1] = 8;
  EXPECT_EQ(exifOrientation(data), 1);
}

}  // namespace
}  // namespace kelvar
