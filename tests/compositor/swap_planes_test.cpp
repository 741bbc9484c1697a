// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "compositor/swap_planes.h"

#include <gtest/gtest.h>

#include "support/guarded_memory.h"

namespace zor::test {
namespace {

TEST(SwapPlanes, ExchangesEveryLengthAndNothingElse) {
  using Edge = GuardedMemory::Edge;
  Noise noise(4);
  for (const Edge edge : {Edge::kStart, Edge::kEnd}) {
    for (std::int32_t length = 0; length <= 200; ++length) {
      GuardedMemory a(static_cast<std::size_t>(length), edge), b(static_cast<std::size_t>(length), edge);
      noise.Fill(a.data(), a.size());
      noise.Fill(b.data(), b.size());
      const auto first = a.Copy(), second = b.Copy();
      EXPECT_EQ(1, SwapPlanes(a.data(), b.data(), length));
      ASSERT_EQ(second, a.Copy()) << length;
      ASSERT_EQ(first, b.Copy()) << length;
      ASSERT_TRUE(a.GuardsIntact() && b.GuardsIntact());
    }
  }
}

TEST(SwapPlanes, LengthSeventeenExchangesAllSeventeenBytes) {
  std::uint8_t a[18], b[18];
  for (int i = 0; i < 18; ++i) a[i] = static_cast<std::uint8_t>(i), b[i] = static_cast<std::uint8_t>(100 + i);
  EXPECT_EQ(1, SwapPlanes(a, b, 17));
  for (int i = 0; i < 17; ++i) EXPECT_TRUE(a[i] == 100 + i && b[i] == i) << i;
  EXPECT_TRUE(a[17] == 17 && b[17] == 117);
}

TEST(SwapPlanes, LengthsOfZeroAndBelowDoNothingAndGiveOne) {
  std::uint8_t a[4] = {1, 2, 3, 4}, b[4] = {5, 6, 7, 8};
  for (const std::int32_t length : {0, -1, -100}) EXPECT_EQ(1, SwapPlanes(a, b, length));
  EXPECT_TRUE(a[0] == 1 && b[0] == 5);
}

}  // namespace
}  // namespace zor::test
