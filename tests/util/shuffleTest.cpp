#include "util/shuffle.h"

#include <gtest/gtest.h>

#include <QList>
#include <map>

namespace kelvar {
namespace {

TEST(ShuffleTest, EveryOrderIsEquallyLikely) {
  constexpr int kOrders = 120, kRounds = 1000 * kOrders;
  std::map<QList<int>, int> seen;
  for (int i = 0; i < kRounds; ++i) {
    QList<int> list{0, 1, 2, 3, 4};
    EXPECT_EQ(&shuffle(list), &list);
    ++seen[list];
  }
  ASSERT_EQ(seen.size(), size_t(kOrders));
  double chiSquare = 0;
  for (const auto& [order, count] : seen) {
    const double off = count - double(kRounds) / kOrders;
    chiSquare += off * off / (double(kRounds) / kOrders);
  }
  // With 119 degrees of freedom, a fair shuffle exceeds this once in about 10^11 runs; one that
  // swaps with any element instead of the rest comes to several thousand.
  EXPECT_LT(chiSquare, 250);
}

TEST(ShuffleTest, KeepsShortListsAndRepeatedElements) {
  QList<int> none, one{7}, same(50, 3);
  EXPECT_EQ(shuffle(none), QList<int>());
  EXPECT_EQ(shuffle(one), QList<int>{7});
  EXPECT_EQ(shuffle(same), QList<int>(50, 3));
}

}  // namespace
}  // namespace kelvar
