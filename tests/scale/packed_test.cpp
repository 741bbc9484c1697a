// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "scale/packed.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/memory.h"
#include "scale/scale_cases.h"

namespace zor::test {
namespace {

void ExpectSame(GuardedPicture& target, GuardedPicture& source) {
  ExpectAtEveryLevel(
      target, source, "packed",
      [&](std::uint8_t* bytes) {
        RefYuy2({bytes, target.width, target.height, target.stride}, source.Ref());
      },
      [&] {
        ScaleYuy2({target.data(), target.width, target.height, target.stride},
                  {source.data(), source.width, source.height, source.stride});
      });
}

TEST(PackedScaler, SmallSizesMatchTheStatement) {
  Noise noise(1);
  for (int sw = 1; sw <= 40; ++sw) {
    for (int dw = 1; dw <= 40; ++dw) {
      const unsigned n = noise.Next();
      GuardedPicture source(sw, noise.Range(1, 9), 2 * sw + noise.Range(0, 3), 2, EdgeOf(n), n);
      GuardedPicture target(dw, noise.Range(1, 12), 2 * dw + noise.Range(0, 3), 2, EdgeOf(n >> 1),
                            n + 1);
      ExpectSame(target, source);
      if (HasFatalFailure()) return;
    }
  }
}

TEST(PackedScaler, LargerPicturesMatchTheStatement) {
  const int shapes[][4] = {{640, 20, 426, 14}, {320, 9, 1000, 31}, {1920, 10, 1280, 7},
                           {700, 30, 70, 3},   {64, 64, 64, 20},   {64, 20, 200, 20}};
  unsigned n = 0;
  for (const auto& s : shapes) {
    ++n;
    GuardedPicture source(s[0], s[1], 2 * s[0] + 2, 2, EdgeOf(n), n);
    GuardedPicture target(s[2], s[3], 2 * s[2], 2, EdgeOf(n), n + 70);
    ExpectSame(target, source);
    if (HasFatalFailure()) return;
  }
}

TEST(PackedScaler, EqualSizesGiveTheSourceBytesInTheSamePhase) {
  GuardedPicture source(33, 7, 70, 2, EdgeOf(0), 3);
  GuardedPicture target(33, 7, 66, 2, EdgeOf(0), 4);
  ScaleYuy2({target.data(), 33, 7, 66}, {source.data(), 33, 7, 70});
  for (int y = 0; y < 7; ++y) {
    EXPECT_TRUE(
        std::equal(target.data() + 66 * y, target.data() + 66 * y + 66, source.data() + 70 * y));
  }
}

TEST(PackedScaler, ChromaOfNeighboursMixesWhateverItsPhase) {
  // Y0 U Y1 V to four pixels: positions 0, 0.5, 1 and 1.5, the last between V and itself.
  const std::uint8_t source[] = {10, 100, 30, 200};
  std::uint8_t target[8] = {};
  ScaleYuy2({target, 4, 1, 8}, {source, 2, 1, 4});
  const std::uint8_t expected[] = {10, 100, 20, 150, 30, 200, 30, 200};
  EXPECT_TRUE(std::equal(expected, expected + 8, target));
}

TEST(PackedScaler, RowsAreAnchoredAtTheTopAndTheLastIsRepeated) {
  const std::uint8_t source[] = {0, 0, 100, 200};
  std::uint8_t target[8] = {};
  ScaleYuy2({target, 1, 4, 2}, {source, 1, 2, 2});
  const std::uint8_t expected[] = {0, 0, 50, 100, 100, 200, 100, 200};
  EXPECT_TRUE(std::equal(expected, expected + 8, target));
}

TEST(PackedScaler, ASizeOfNothingDoesNothing) {
  std::uint8_t bytes[4] = {1, 2, 3, 4};
  const std::uint8_t source[4] = {9, 9, 9, 9};
  ScaleYuy2({bytes, 0, 1, 4}, {source, 2, 1, 4});
  ScaleYuy2({bytes, 2, 0, 4}, {source, 2, 1, 4});
  ScaleYuy2({bytes, 2, 1, 4}, {source, 0, 1, 4});
  ScaleYuy2({bytes, 2, 1, 4}, {source, 2, -1, 4});
  EXPECT_EQ(1, bytes[0]);
  EXPECT_EQ(4, bytes[3]);
}

TEST(PackedScaler, RefusedMemoryLeavesTheTargetAsItWas) {
  GuardedPicture source(20, 10, 40, 2, EdgeOf(0), 5);
  GuardedPicture target(30, 5, 60, 2, EdgeOf(0), 6);
  const std::vector<std::uint8_t> before = target.Copy();
  RefuseAllocation(0);
  ScaleYuy2({target.data(), 30, 5, 60}, {source.data(), 20, 10, 40});
  const std::uint64_t requests = CountAllocations();
  ASSERT_GT(requests, 0u);
  ASSERT_NE(before, target.Copy());
  std::copy(before.begin(), before.end(), target.data());
  for (std::uint64_t k = 1; k <= requests; ++k) {
    RefuseAllocation(k);
    ScaleYuy2({target.data(), 30, 5, 60}, {source.data(), 20, 10, 40});
    RefuseAllocation(0);
    EXPECT_EQ(before, target.Copy()) << k;
  }
  EXPECT_EQ(0, LiveAllocations());
}

}  // namespace
}  // namespace zor::test
