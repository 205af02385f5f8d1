#include "geometry/KVRect.h"

#include <gtest/gtest.h>

#include "geometry/CGRectAspectFittingSize.h"

namespace kelvar {
namespace {

TEST(KVRectTest, PrintsAndConverts) {
  EXPECT_EQ(KVRect().description(), QStringLiteral("{0, 0, 0, 0}"));
  EXPECT_EQ(KVRectMake(0, 0, 100, 50)->description(), QStringLiteral("{0, 0, 100, 50}"));
  const KVRectRef rect = KVRectMake(1.5, 2, 3, 4);
  EXPECT_EQ(rect->description(), QStringLiteral("{1.5, 2, 3, 4}"));
  EXPECT_EQ(rect->CGRect(), QRectF(1.5, 2, 3, 4));
  EXPECT_EQ(KVRectFromCGRect({1.5, 2, 3, 4})->description(), rect->description());
  EXPECT_EQ(rectOrZero(nullptr), QRectF(0, 0, 0, 0));
}

TEST(CGRectAspectFittingSizeTest, IgnoresOrigin) {
  EXPECT_EQ(CGRectAspectFittingSize({200, 100}, {50, 50, 100, 100}), QRectF(0, 25, 100, 50));
  EXPECT_EQ(CGRectAspectFittingSize({100, 200}, {0, 0, 300, 300}), QRectF(75, 0, 150, 300));
  EXPECT_TRUE(std::isnan(CGRectAspectFittingSize({0, 0}, {0, 0, 10, 10}).width()));
}

}  // namespace
}  // namespace kelvar
