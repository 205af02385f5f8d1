#include "scene/validateQuad.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace kelvar {
namespace {

TEST(ValidateQuadTest, ExplainsWhatIsWrong) {
  const struct {
    warp::Quad corners;
    const char* message;  // The beginning; empty for a valid quad.
  } cases[] = {
      {{{{0, 0}, {9, 0}, {9, 9}, {0, 9}}}, ""},
      {{{{0, 0}, {0, 9}, {9, 9}, {9, 0}}}, ""},
      {{{{5, 5}, {9, 0}, {5, 5}, {0, 9}}}, "two of the corners are the same point"},
      {{{{0, 0}, {5, 0}, {9, 0}, {0, 9}}}, "three of the corners lie on one line"},
      {{{{0, 0}, {9, 9}, {9, 0}, {0, 9}}}, "the sides of the shape cross"},
      {{{{0, 0}, {9, 0}, {2, 2}, {0, 9}}}, "the shape is concave"},
      {{{{0, 0}, {1e308, 0}, {1e308, 1e308}, {0, 1e308}}}, "the corners are too far apart"},
      {{{{0, 0}, {9, std::nan("")}, {9, 9}, {0, 9}}}, "the corners are too far apart"},
  };
  for (const auto& [corners, message] : cases) {
    const Result<void> valid = validateQuad(corners);
    EXPECT_EQ(valid.has_value(), *message == 0) << message;
    const std::string text = valid ? "" : valid.error().message;
    EXPECT_EQ(text.find(message), 0u) << text;
  }
}

TEST(ValidateQuadTest, AcceptsExactlyWhatHasAMap) {
  std::mt19937 random(1);
  std::uniform_int_distribution<int> coordinate(-3, 3), exponent(-320, 308);
  for (int i = 0; i < 20000; ++i) {
    const double unit = std::pow(10.0, exponent(random));
    warp::Quad quad;
    for (warp::Point& corner : quad) {
      corner = {coordinate(random) * unit, coordinate(random) * unit};
    }
    EXPECT_EQ(validateQuad(quad).has_value(),
              warp::Homography::fromRectangle(1, 1, quad).has_value())
        << i;
  }
}

}  // namespace
}  // namespace kelvar
