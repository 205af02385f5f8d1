#include "util/MD5String.h"

#include <gtest/gtest.h>

namespace kelvar {
namespace {

TEST(MD5StringTest, DigestsUtf8UpToFirstNul) {
  const std::pair<QString, const char*> cases[] = {
      {QString(), "D41D8CD98F00B204E9800998ECF8427E"},
      {QStringLiteral(""), "D41D8CD98F00B204E9800998ECF8427E"},
      {QStringLiteral("message digest"), "F96B697D7CB7938D525A2F31AAF161D0"},
      {QStringLiteral("message digest") + QChar(0) + QStringLiteral("more"),
       "F96B697D7CB7938D525A2F31AAF161D0"},
      {QStringLiteral("ü"), "C03410A5204B21CD8229FF754688D743"}};
  for (const auto& [string, digest] : cases) {
    EXPECT_EQ(MD5String(string), QLatin1String(digest)) << string.toStdString();
  }
}

}  // namespace
}  // namespace kelvar
