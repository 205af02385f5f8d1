#include "scene/MappingOptions.h"

#include <gtest/gtest.h>

#include <cmath>

namespace kelvar {
namespace {

std::string messageIn(const Result<void>& result) {
  return result ? std::string() : result.error().message;
}

TEST(MappingOptionsTest, ChecksQualities) {
  for (const double quality : {0.0, 0.001, 1.0, 1000.0}) EXPECT_TRUE(validateQuality(quality, "q"));
  for (const double quality : {-1.0, 0.0009, 1000.1, double(INFINITY), std::nan("")}) {
    EXPECT_EQ(messageIn(validateQuality(quality, "--scale")),
              "--scale takes a number from 0.001 to 1000, or 0 for 1");
  }
}

TEST(MappingOptionsTest, ChecksRotationsAndSaysWhichIsMeant) {
  const struct {
    int64_t rotation;
    const char* message;
  } cases[] = {
      {0, ""},
      {3, ""},
      {-1, "r takes a number of quarter turns from 0 to 3, not -1"},
      {7, "r takes a number of quarter turns from 0 to 3, not 7; for 7 quarter turns, use 3"},
      {450, "r takes a number of quarter turns from 0 to 3, not 450; for 450 degrees, use 1"},
  };
  for (const auto& [rotation, message] : cases) {
    EXPECT_EQ(messageIn(validateRotation(rotation, "r")), message);
  }
}

}  // namespace
}  // namespace kelvar
