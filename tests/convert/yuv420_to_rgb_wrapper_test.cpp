// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "convert/wrappers.h"
#include "convert/yuv420_to_rgb.h"
#include "support/guarded_memory.h"

namespace zor::test {
namespace {

/// Runs the wrapper on noise. @return the target's bytes.
std::vector<std::uint8_t> Wrapped(std::uint32_t features, int depth, std::uint32_t orientation) {
  const std::vector<std::uint8_t> source = Noise(9).Bytes(32 * 8 * 3 / 2 + 64);
  std::vector<std::uint8_t> target(32 * 4 * 8, 77);
  EXPECT_EQ(1u, ConvertYuv420ToRgb(source.data(), 32, target.data(), 32 * 4, 32, 8, features, depth,
                                   orientation));
  return target;
}

TEST(Yuv420ToRgbWrapper, ChoosesTheFormByBit26ThenBit23AndFindsVBeforeU) {
  const std::vector<std::uint8_t> source = Noise(9).Bytes(32 * 8 * 3 / 2 + 64);
  struct Choice {
    std::uint32_t features;
    int depth;
    Yuv420ToRgbKernel* kernel;
  };
  const std::uint32_t sse2 = 1u << 26, mmx = 1u << 23, sse = 1u << 25;
  for (const Choice& choice :
       {Choice{sse2 | mmx | sse, 32, ConvertYuv420ToRgb32Sse2},
        Choice{sse2, 32, ConvertYuv420ToRgb32Sse2}, Choice{mmx | sse, 32, ConvertYuv420ToRgb32Mmx},
        Choice{mmx, 32, ConvertYuv420ToRgb32Mmx}, Choice{sse, 32, ConvertYuv420ToRgb32Plain},
        Choice{0, 32, ConvertYuv420ToRgb32Plain}, Choice{sse2, 24, ConvertYuv420ToRgb24Sse2},
        Choice{mmx, 24, ConvertYuv420ToRgb24Plain}, Choice{0, 24, ConvertYuv420ToRgb24Plain}}) {
    for (const std::uint32_t orientation : {0u, 1u}) {
      std::vector<std::uint8_t> expected(32 * 4 * 8, 77);
      const std::uint8_t* v = source.data() + 32 * 8;
      const std::uint8_t* u = v + 16 * 8 / 2;
      choice.kernel(expected.data(), 32 * 4, source.data(), u, v, 32, 16, 32,
                    orientation != 0 ? -8 : 8);
      EXPECT_EQ(expected, Wrapped(choice.features, choice.depth, orientation));
    }
  }
}

TEST(Yuv420ToRgbWrapper, NullGivesZeroAndAnUnknownDepthOneWithNothingDone) {
  std::uint8_t bytes[64] = {};
  EXPECT_EQ(0u, ConvertYuv420ToRgb(nullptr, 4, bytes, 16, 4, 4, 0, 32, 0));
  EXPECT_EQ(0u, ConvertYuv420ToRgb(bytes, 4, nullptr, 16, 4, 4, 0, 32, 0));
  EXPECT_EQ(0u, ConvertYuv420ToRgb(nullptr, 4, bytes, 16, 4, 4, 0, 16, 0));
  const std::vector<std::uint8_t> untouched(32 * 4 * 8, 77);
  for (const int depth : {0, 8, 16, 23, 33}) EXPECT_EQ(untouched, Wrapped(1u << 26, depth, 0));
}

TEST(Yuv420ToRgbWrapper, NegativeHeightAndWidthsUnderOneDoNothing) {
  const std::vector<std::uint8_t> source(256, 99);
  std::vector<std::uint8_t> target(256, 77);
  for (const std::uint32_t features : {0u, 1u << 23, 1u << 26}) {
    EXPECT_EQ(1u, ConvertYuv420ToRgb(source.data(), 8, target.data(), 32, 8, -4, features, 32, 0));
    EXPECT_EQ(1u, ConvertYuv420ToRgb(source.data(), 8, target.data(), 32, 0, 4, features, 32, 0));
    EXPECT_EQ(1u, ConvertYuv420ToRgb(source.data(), 8, target.data(), 32, -8, 4, features, 24, 0));
  }
  EXPECT_EQ(std::vector<std::uint8_t>(256, 77), target);
}

}  // namespace
}  // namespace zor::test
