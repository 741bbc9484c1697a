// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/rgb_to_yuv420.h"

#include <gtest/gtest.h>

#include "convert/expected_colour.h"
#include "convert/operand.h"

namespace zor::test {
namespace {

using KernelForm = Form<RgbToYuv420Kernel>;

const KernelForm kForms32[] = {
    {"plain", ConvertRgb32ToYuv420Plain},
    {"mmx", ConvertRgb32ToYuv420Mmx},
    {"sse2", ConvertRgb32ToYuv420Sse2},
    {"sse2 with avx2", ConvertRgb32ToYuv420Sse2, VectorLevel::kAvx2},
    {"sse2 with avx512", ConvertRgb32ToYuv420Sse2, VectorLevel::kAvx512}};
const KernelForm kForms24[] = {
    {"plain", ConvertRgb24ToYuv420Plain},
    {"mmx", ConvertRgb24ToYuv420Mmx},
    {"sse2", ConvertRgb24ToYuv420Sse2},
    {"sse2 with avx2", ConvertRgb24ToYuv420Sse2, VectorLevel::kAvx2},
    {"sse2 with avx512", ConvertRgb24ToYuv420Sse2, VectorLevel::kAvx512}};

struct Shape {
  std::int32_t lumaStride;
  std::int32_t chromaStride;
  std::int32_t sourceStride;
  std::int32_t width;
  std::int32_t height;
};

/// Group by group, with addresses worked out from the top for each.
void State(const Shape& s, int bytes, Operand& luma, Operand& u, Operand& v, Operand& source) {
  const int rows = s.height < 0 ? -s.height : s.height;
  const int odd = s.width % 2;
  const auto pixel = [&](int pair, int row, int column) {
    const int line = 2 * pair + row;
    const int at =
        (s.height < 0 ? rows - 1 - line : line) * s.sourceStride + (column - pair * odd) * bytes;
    source.Get(at + bytes - 1);  // whole pixels may be read
    return Bgr{source.Get(at), source.Get(at + 1), source.Get(at + 2)};
  };
  for (int pair = 0; pair < rows / 2; ++pair) {
    for (int group = 0; group < s.width / 2; ++group) {
      Bgr sum{0, 0, 0};
      for (int row = 0; row < 2; ++row) {
        for (int column = 2 * group; column < 2 * group + 2; ++column) {
          const Bgr p = pixel(pair, row, column);
          sum = sum + p;
          luma.Put((2 * pair + row) * s.lumaStride + column - pair * odd, ExpectedLuma(p));
        }
      }
      u.Put(pair * s.chromaStride + group, ExpectedU(sum, 10));
      v.Put(pair * s.chromaStride + group, ExpectedV(sum, 10));
    }
  }
}

class RgbToYuv420 : public testing::TestWithParam<int> {
 protected:
  int Bytes() const { return GetParam(); }
  std::vector<KernelForm> Forms() const {
    return Bytes() == 4 ? std::vector<KernelForm>(std::begin(kForms32), std::end(kForms32))
                        : std::vector<KernelForm>(std::begin(kForms24), std::end(kForms24));
  }

  /// Converts one group of 2 x 2 pixels in every form and expects the same of all.
  void ExpectGroup(const std::vector<Bgr>& pixels, const std::vector<int>& lumas, int u, int v) {
    for (const KernelForm& form : Forms()) {
      const PinnedVectorLevel pinned(form.level);
      std::vector<std::uint8_t> source;
      for (const Bgr& p : pixels) {
        for (int sample : {p.b, p.g, p.r}) source.push_back(static_cast<std::uint8_t>(sample));
        if (Bytes() == 4) source.push_back(0x77);
      }
      std::uint8_t luma[4] = {};
      std::uint8_t planes[2] = {};
      form.kernel(luma, &planes[0], &planes[1], 2, 1, source.data(), 2 * Bytes(), 2, 2);
      for (int i = 0; i < 4; ++i)
        EXPECT_EQ(luma[i], lumas[static_cast<std::size_t>(i)]) << form.name;
      EXPECT_EQ(planes[0], u) << form.name;
      EXPECT_EQ(planes[1], v) << form.name;
    }
  }
};

TEST_P(RgbToYuv420, EveryFormGivesTheStatedBytesAndTouchesNoOthers) {
  Operand luma(1), u(2), v(3), source(4);
  OperandSet operands({&luma, &u, &v, &source});
  ForEachShape([&](std::int32_t width, std::int32_t height, std::ptrdiff_t shift) {
    const Shape shape = {width + 5, width / 2 + 3, width * Bytes() + 7, width, height};
    operands.Reset();
    State(shape, Bytes(), luma, u, v, source);
    for (const KernelForm& form : Forms()) {
      const PinnedVectorLevel pinned(form.level);
      const std::string wrong = operands.Check(shift, [&](const std::vector<std::uint8_t*>& p) {
        form.kernel(p[0], p[1], p[2], shape.lumaStride, shape.chromaStride, p[3],
                    shape.sourceStride, width, height);
      });
      EXPECT_EQ(wrong, "") << form.name << ", " << width << " x " << height << ", shift " << shift;
      if (!wrong.empty()) return false;
    }
    return true;
  });
}

TEST_P(RgbToYuv420, BlackAndWhiteAreTheEndsOfVideoRange) {
  ExpectGroup({{0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {0, 0, 0}}, {16, 16, 16, 16}, 128, 128);
  ExpectGroup({{255, 255, 255}, {255, 255, 255}, {255, 255, 255}, {255, 255, 255}},
              {235, 235, 235, 235}, 128, 128);
}

TEST_P(RgbToYuv420, PureBlueFloorsItsRedDifference) {
  ExpectGroup({{255, 0, 0}, {255, 0, 0}, {255, 0, 0}, {255, 0, 0}}, {40, 40, 40, 40}, 239, 110);
}

TEST_P(RgbToYuv420, ChromaIsTheBoxSumOfTheFourPixels) {
  // Sums 63, 129, 257: U = (7056 - 9546 - 9766) >> 10 = -12, V = (28784 - 12126 - 1134) >> 10 = 15.
  ExpectGroup({{1, 2, 4}, {62, 0, 1}, {0, 0, 252}, {0, 127, 0}},
              {(129 * 2 + 66 * 4 + 25) / 256 + 16, (66 + 25 * 62) / 256 + 16, 66 * 252 / 256 + 16,
               129 * 127 / 256 + 16},
              116, 143);
}

TEST_P(RgbToYuv420, HeightBelowTwoWritesNothingInAnyForm) {
  for (const KernelForm& form : Forms()) {
    for (std::int32_t height : {-1, 0, 1}) {
      std::uint8_t source[64] = {};
      std::uint8_t target[64];
      std::memset(target, 0xAB, sizeof(target));
      form.kernel(target + 16, target + 32, target + 48, 4, 2, source + 16, 16, 4, height);
      for (std::uint8_t byte : target) EXPECT_EQ(byte, 0xAB) << form.name;
    }
  }
}

TEST_P(RgbToYuv420, OddHeightLeavesTheLastRowUnreadAndUnwritten) {
  for (const KernelForm& form : Forms()) {
    const PinnedVectorLevel pinned(form.level);
    const int stride = 70 * Bytes();
    // The third row of the source would lie in the page without access.
    GuardedMemory source(static_cast<std::size_t>(2 * stride), GuardedMemory::Edge::kEnd, 200);
    std::vector<std::uint8_t> luma(3 * 70, 1), u(2 * 35, 1), v(2 * 35, 1);
    form.kernel(luma.data(), u.data(), v.data(), 70, 35, source.data(), stride, 70, 3);
    EXPECT_EQ(luma[139], 200 * 220 / 256 + 16) << form.name;
    EXPECT_EQ(luma[140], 1) << form.name;
    EXPECT_EQ(u[34], 128) << form.name;
    EXPECT_EQ(u[35], 1) << form.name;
    EXPECT_EQ(v[35], 1) << form.name;
  }
}

TEST_P(RgbToYuv420, OddWidthDriftsOnePixelLeftPerRowPairButNotInChroma) {
  for (const KernelForm& form : Forms()) {
    const PinnedVectorLevel pinned(form.level);
    // Rows of 3 pixels, 4 rows: the second pair is read from one pixel in front of row 2, that is
    // the odd last pixel of row 1.
    std::vector<std::uint8_t> source(static_cast<std::size_t>(12 * Bytes()), 0);
    source[static_cast<std::size_t>(5 * Bytes() + 1)] = 255;  // green of row 1, column 2
    std::vector<std::uint8_t> luma(12, 0), u(2, 0), v(2, 0);
    form.kernel(luma.data(), u.data(), v.data(), 3, 1, source.data(), 3 * Bytes(), 3, 4);
    const std::vector<std::uint8_t> expected = {16, 16, 0, 16, 16, 144, 16, 0, 16, 16, 0, 0};
    EXPECT_EQ(luma, expected) << form.name;
    EXPECT_EQ(u[0], 128) << form.name;
    EXPECT_EQ(u[1], 128 - 19) << form.name;  // (-74 x 255) >> 10 = -19
    EXPECT_EQ(v[1], 128 - 24) << form.name;  // (-94 x 255) >> 10 = -24
  }
}

TEST_P(RgbToYuv420, NegativeHeightReadsTheSourceFromItsLastRow) {
  for (const KernelForm& form : Forms()) {
    const PinnedVectorLevel pinned(form.level);
    std::vector<std::uint8_t> source(static_cast<std::size_t>(8 * Bytes()), 0);
    for (int i = 0; i < 4 * Bytes(); ++i) source[static_cast<std::size_t>(i)] = 255;  // rows 0, 1
    std::vector<std::uint8_t> luma(8, 0), u(2, 0), v(2, 0);
    form.kernel(luma.data(), u.data(), v.data(), 2, 1, source.data(), 2 * Bytes(), 2, -4);
    EXPECT_EQ(luma, (std::vector<std::uint8_t>{16, 16, 16, 16, 235, 235, 235, 235})) << form.name;
  }
}

TEST_P(RgbToYuv420, WidthsBesideMultiplesOfFourGiveTheSameAsPlain) {
  Noise noise(7);
  const std::vector<std::uint8_t> source = noise.Bytes(2 * 70 * 4);
  for (std::int32_t width = 60; width <= 70; ++width) {
    std::vector<std::uint8_t> plain;
    for (const KernelForm& form : Forms()) {
      const PinnedVectorLevel pinned(form.level);
      std::vector<std::uint8_t> planes(2 * 70 + 70, 9);
      form.kernel(planes.data(), planes.data() + 140, planes.data() + 175, 70, 35, source.data(),
                  70 * Bytes(), width, 2);
      if (plain.empty()) plain = planes;
      EXPECT_EQ(planes, plain) << form.name << ", width " << width;
    }
  }
}

TEST_P(RgbToYuv420, EveryColourGivesTheStatedLumaAndChroma) {
  // Groups of four equal pixels: 256 x 256 groups for every B.
  constexpr int kGroups = 256 * 256;
  constexpr int kColumns = 512;
  const int stride = kColumns * Bytes();
  std::vector<std::uint8_t> source(static_cast<std::size_t>(stride) * 2);
  std::vector<std::uint8_t> luma(2 * kColumns), u(kColumns / 2), v(kColumns / 2);
  for (const KernelForm& form : Forms()) {
    const PinnedVectorLevel pinned(form.level);
    int wrong = 0;
    for (int first = 0; first < 256 * kGroups && wrong == 0; first += kColumns / 2) {
      for (int i = 0; i < kColumns; ++i) {
        const int colour = first + i / 2;
        std::uint8_t* pixel = source.data() + i * Bytes();
        pixel[0] = static_cast<std::uint8_t>(colour >> 16);
        pixel[1] = static_cast<std::uint8_t>(colour >> 8);
        pixel[2] = static_cast<std::uint8_t>(colour);
      }
      std::memcpy(source.data() + stride, source.data(), static_cast<std::size_t>(stride));
      form.kernel(luma.data(), u.data(), v.data(), kColumns, kColumns / 2, source.data(), stride,
                  kColumns, 2);
      for (int i = 0; i < kColumns / 2; ++i) {
        const int colour = first + i;
        const Bgr p = {colour >> 16, colour >> 8 & 255, colour & 255};
        const int expected = ExpectedLuma(p);
        wrong += luma[static_cast<std::size_t>(2 * i)] != expected;
        wrong += luma[static_cast<std::size_t>(2 * i + 1 + kColumns)] != expected;
        wrong += u[static_cast<std::size_t>(i)] != ExpectedU(p + p + p + p, 10);
        wrong += v[static_cast<std::size_t>(i)] != ExpectedV(p + p + p + p, 10);
      }
    }
    EXPECT_EQ(wrong, 0) << form.name;
  }
}

INSTANTIATE_TEST_SUITE_P(PixelBytes, RgbToYuv420, testing::Values(3, 4));

}  // namespace
}  // namespace zor::test
