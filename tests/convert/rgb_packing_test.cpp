// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/rgb_packing.h"

#include <gtest/gtest.h>

#include "convert/operand.h"

namespace zor::test {
namespace {

using KernelForm = Form<RgbPackingKernel>;

const VectorLevel kLevels[] = {VectorLevel::kSse2, VectorLevel::kAvx2, VectorLevel::kAvx512};

void State(int targetBytes, std::int32_t targetStride, int sourceBytes, std::int32_t sourceStride,
           std::int32_t width, std::int32_t height, Operand& target, Operand& source) {
  const int rows = height < 0 ? -height : height;
  for (int y = 0; y < rows; ++y) {
    for (int x = 0; x < width; ++x) {
      const int from = (height < 0 ? rows - 1 - y : y) * sourceStride + x * sourceBytes;
      const int to = y * targetStride + x * targetBytes;
      source.Get(from + sourceBytes - 1);  // whole pixels may be read
      for (int i = 0; i < 3; ++i) target.Put(to + i, source.Get(from + i));
      if (targetBytes == 4) target.Put(to + 3, 0);
    }
  }
}

void ExpectAllShapes(RgbPackingKernel* kernel, int targetBytes, int sourceBytes) {
  Operand target(11), source(12);
  OperandSet operands({&target, &source});
  ForEachShape([&](std::int32_t width, std::int32_t height, std::ptrdiff_t shift) {
    const std::int32_t targetStride = width * targetBytes + 5;
    const std::int32_t sourceStride = width * sourceBytes + 3;
    operands.Reset();
    State(targetBytes, targetStride, sourceBytes, sourceStride, width, height, target, source);
    for (VectorLevel level : kLevels) {
      const PinnedVectorLevel pinned(level);
      const std::string wrong = operands.Check(shift, [&](const std::vector<std::uint8_t*>& p) {
        kernel(p[0], targetStride, p[1], sourceStride, width, height);
      });
      EXPECT_EQ(wrong, "") << "level " << static_cast<int>(level) << ", " << width << " x "
                           << height << ", shift " << shift;
      if (!wrong.empty()) return false;
    }
    return true;
  });
}

TEST(RgbPacking, Rgb24ToRgb32GivesTheStatedBytesAndTouchesNoOthers) {
  ExpectAllShapes(ConvertRgb24ToRgb32, 4, 3);
}

TEST(RgbPacking, Rgb32ToRgb24GivesTheStatedBytesAndTouchesNoOthers) {
  ExpectAllShapes(ConvertRgb32ToRgb24, 3, 4);
}

TEST(RgbPacking, WidthOrHeightOfZeroDoesNothing) {
  for (auto* kernel : {ConvertRgb24ToRgb32, ConvertRgb32ToRgb24}) {
    std::uint8_t target[16];
    std::memset(target, 7, sizeof(target));
    const std::uint8_t source[16] = {};
    kernel(target, 8, source, 8, 0, 2);
    kernel(target, 8, source, 8, 2, 0);
    for (std::uint8_t byte : target) EXPECT_EQ(byte, 7);
  }
}

TEST(RgbPacking, ThereAndBackTurnsEveryFourthByteToZero) {
  Noise noise(3);
  constexpr int kWidth = 77;
  const std::vector<std::uint8_t> picture = noise.Bytes(kWidth * 4 * 3);
  std::vector<std::uint8_t> packed(kWidth * 3 * 3), back(picture.size(), 1);
  ConvertRgb32ToRgb24(packed.data(), kWidth * 3, picture.data(), kWidth * 4, kWidth, 3);
  ConvertRgb24ToRgb32(back.data(), kWidth * 4, packed.data(), kWidth * 3, kWidth, 3);
  for (std::size_t i = 0; i < picture.size(); ++i) {
    ASSERT_EQ(back[i], i % 4 == 3 ? 0 : picture[i]) << i;
  }
}

TEST(RgbPacking, PaddingBetweenRowsOfTheTargetStays) {
  const std::vector<std::uint8_t> source(40 * 4 * 2, 9);
  std::vector<std::uint8_t> target(2 * 200, 1);
  ConvertRgb32ToRgb24(target.data(), 200, source.data(), 160, 40, 2);
  for (int y = 0; y < 2; ++y) {
    for (int i = 0; i < 200; ++i)
      ASSERT_EQ(target[static_cast<std::size_t>(200 * y + i)], i < 120 ? 9 : 1);
  }
}

TEST(RgbPacking, NegativeHeightReadsTheSourceFromItsLastRow) {
  const std::uint8_t source[6] = {1, 2, 3, 4, 5, 6};
  std::uint8_t target[8] = {};
  ConvertRgb24ToRgb32(target, 4, source, 3, 1, -2);
  const std::uint8_t expected[8] = {4, 5, 6, 0, 1, 2, 3, 0};
  EXPECT_EQ(std::memcmp(target, expected, 8), 0);
}

}  // namespace
}  // namespace zor::test
