// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "scale/sharpen.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "platform/memory.h"
#include "scale/scale_cases.h"

namespace zor::test {
namespace {

TEST(Gaussian, HasNineWeightsAtOneAndAHalf) {
  const GaussianKernel kernel = MakeGaussianKernel(1.5f);
  ASSERT_EQ(9, kernel.length);
  double sum = 0;
  for (int i = 0; i < 9; ++i) sum += std::exp(-0.5 * (i - 4) * (i - 4) / 2.25);
  for (int i = 0; i < 9; ++i) {
    EXPECT_EQ(kernel.weights[8 - i], kernel.weights[i]);
    EXPECT_NEAR(std::exp(-0.5 * (i - 4) * (i - 4) / 2.25) / sum, kernel.weights[i], 1e-7) << i;
  }
}

TEST(Gaussian, MatchesTheStatementToTheLastBit) {
  for (const float sigma : {0.2f, 0.5f, 1.0f, 1.5f, 2.25f, 5.0f}) {
    const GaussianKernel kernel = MakeGaussianKernel(sigma);
    const std::vector<float> expected = RefGaussian(sigma);
    ASSERT_EQ(expected.size(), static_cast<std::size_t>(kernel.length));
    for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_EQ(expected[i], kernel.weights[i]);
  }
}

TEST(Blur, MatchesTheStatementAtSizesBelowAndAboveTheWindow) {
  Noise noise(1);
  for (int width = 1; width <= 40; ++width) {
    for (const int height : {1, 2, 4, 5, 9, 10, 23}) {
      const std::vector<std::uint8_t> plane =
          noise.Bytes(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
      std::vector<std::uint8_t> blurred(plane.size(), 7);
      ASSERT_TRUE(GaussianBlurPlane(plane.data(), width, height, 1.5f, blurred.data()));
      ASSERT_EQ(RefBlur(plane, width, height, 1.5f), blurred) << width << " x " << height;
    }
  }
}

TEST(Sharpen, MatchesTheStatementInPlaceAtAnyStride) {
  Noise noise(2);
  for (int width = 1; width <= 40; width += 3) {
    for (const int height : {1, 3, 8, 17}) {
      const unsigned n = noise.Next();
      GuardedPicture plane(width, height, width + noise.Range(0, 5), 1, EdgeOf(n), n);
      std::vector<std::uint8_t> expected = plane.Copy();
      RefSharpen(expected.data(), width, height, plane.stride);
      ASSERT_TRUE(SharpenPlane(plane.data(), width, height, plane.stride));
      ASSERT_EQ(expected, plane.Copy()) << width << " x " << height;
      ASSERT_TRUE(plane.GuardsIntact());
    }
  }
}

TEST(Sharpen, AFlatPlaneStaysAsItIs) {
  for (const int value : {0, 1, 77, 128, 254, 255}) {
    std::vector<std::uint8_t> plane(33 * 21, static_cast<std::uint8_t>(value));
    const std::vector<std::uint8_t> before = plane;
    ASSERT_TRUE(SharpenPlane(plane.data(), 33, 21, 33));
    EXPECT_EQ(before, plane);
  }
}

TEST(Sharpen, TheStrongestDetailReachesTheLimitsOfTheRange) {
  std::vector<std::uint8_t> plane(41 * 41, 128);
  plane[20 * 41 + 20] = 220;
  plane[8 * 41 + 8] = 40;
  std::vector<std::uint8_t> expected = plane;
  RefSharpen(expected.data(), 41, 41, 41);
  ASSERT_TRUE(SharpenPlane(plane.data(), 41, 41, 41));
  EXPECT_EQ(255, plane[20 * 41 + 20]);
  EXPECT_EQ(0, plane[8 * 41 + 8]);
  EXPECT_EQ(expected, plane);
}

TEST(Sharpen, AnEmptyPlaneIsLeftAlone) {
  std::uint8_t byte = 5;
  EXPECT_TRUE(SharpenPlane(&byte, 0, 1, 1));
  EXPECT_TRUE(SharpenPlane(&byte, 1, 0, 1));
  EXPECT_EQ(5, byte);
}

TEST(Sharpen, RefusedMemoryLeavesThePlaneAsItWas) {
  std::vector<std::uint8_t> plane = Noise(3).Bytes(40 * 30);
  const std::vector<std::uint8_t> before = plane;
  RefuseAllocation(0);
  ASSERT_TRUE(SharpenPlane(plane.data(), 40, 30, 40));
  const std::uint64_t requests = CountAllocations();
  ASSERT_GT(requests, 0u);
  ASSERT_NE(before, plane);
  plane = before;
  for (std::uint64_t k = 1; k <= requests; ++k) {
    RefuseAllocation(k);
    EXPECT_FALSE(SharpenPlane(plane.data(), 40, 30, 40)) << k;
    RefuseAllocation(0);
    EXPECT_EQ(before, plane) << k;
  }
  EXPECT_EQ(0, LiveAllocations());
}

}  // namespace
}  // namespace zor::test
