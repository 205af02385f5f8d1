#include "platform/files/ZipArchive.h"

#include <gtest/gtest.h>

namespace kelvar {
namespace {

/// Made by another program: one file, "a", that is not compressed.
constexpr const char* kStored =
    "UEsDBBQAAAAAAAAAIQAlZMmxHAAAABwAAAABAAAAYXN0b3JlZCBzdG9yZWQgc3RvcmVkIHN0b3JlZCBQSwECFAMUAAAAAA"
    "AAACEAJWTJsRwAAAAcAAAAAQAAAAAAAAAAAAAAgAEAAAAAYVBLBQYAAAAAAQABAC8AAAA7AAAAAAA=";

TEST(ZipArchiveTest, KeepsStoredFilesStored) {
  const auto archive = ZipArchive::read(QByteArray::fromBase64(kStored));
  ASSERT_TRUE(archive) << archive.error().message;
  const QByteArray text = QByteArray("stored ").repeated(4);
  const auto bytes = (*archive)->written({{QStringLiteral("b"), text}}, {});
  ASSERT_TRUE(bytes) << bytes.error().message;
  EXPECT_EQ(bytes->count(text), 1) << "new files are compressed, others stay as they are";
  const auto replaced = (*archive)->written({{QStringLiteral("a"), text + text}}, {});
  ASSERT_TRUE(replaced) << replaced.error().message;
  EXPECT_EQ(replaced->count(text + text), 1) << "also with other contents";
  const auto again = ZipArchive::read(*bytes);
  ASSERT_TRUE(again) << again.error().message;
  EXPECT_EQ((*again)->file(QStringLiteral("a")), text);
  EXPECT_EQ((*again)->file(QStringLiteral("b")), text);
}

}  // namespace
}  // namespace kelvar
