#include "runtime/DelegateFunction.h"

#include <gtest/gtest.h>

namespace kelvar {
namespace {

TEST(DelegateFunctionTest, IsImplementedWhileItsConditionHolds) {
  DelegateFunction<int(int)> function;
  EXPECT_FALSE(function);
  function = [](int value) { return value + 1; };
  ASSERT_TRUE(function);
  EXPECT_EQ(function(1), 2);
  bool isThere = false;
  function = DelegateFunction<int(int)>([](int value) { return value * 2; },
                                        [&isThere] { return isThere; });
  const DelegateFunction<int(int)> copy = function;
  EXPECT_FALSE(copy);
  isThere = true;
  ASSERT_TRUE(copy);
  EXPECT_EQ(copy(4), 8);
  function = {};
  EXPECT_FALSE(function);
}

}  // namespace
}  // namespace kelvar
