// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/yuy2_rgb.h"

#include <gtest/gtest.h>

#include "convert/expected_colour.h"
#include "convert/operand.h"

namespace zor::test {
namespace {

/// A form and the width of its blocks; 0 if the table arithmetic serves whole rows.
struct KernelForm : Form<Yuy2ToRgbKernel> {
  int block;
};

const KernelForm kForms32[] = {
    {{"plain", ConvertYuy2ToRgb32Plain}, 0},
    {{"mmx", ConvertYuy2ToRgb32Mmx}, 8},
    {{"sse2", ConvertYuy2ToRgb32Sse2}, 16},
    {{"sse2 with avx2", ConvertYuy2ToRgb32Sse2, VectorLevel::kAvx2}, 16},
    {{"sse2 with avx512", ConvertYuy2ToRgb32Sse2, VectorLevel::kAvx512}, 16}};
const KernelForm kForms24[] = {
    {{"plain", ConvertYuy2ToRgb24Plain}, 0},
    {{"mmx", ConvertYuy2ToRgb24Mmx}, 8},
    {{"sse2", ConvertYuy2ToRgb24Sse2}, 16},
    {{"sse2 with avx2", ConvertYuy2ToRgb24Sse2, VectorLevel::kAvx2}, 16},
    {{"sse2 with avx512", ConvertYuy2ToRgb24Sse2, VectorLevel::kAvx512}, 16}};

struct Shape {
  std::int32_t targetStride;
  std::int32_t sourceStride;
  std::int32_t width;
  std::int32_t height;
};

void State(const Shape& s, int bytes, int block, Operand& target, Operand& source) {
  const int rows = s.height < 0 ? -s.height : s.height;
  const int odd = s.width % 2;
  const int inBlocks = block == 0 ? 0 : s.width / block * block;
  for (int y = 0; y < rows; ++y) {
    const int line = s.height < 0 ? rows - 1 - y : y;
    for (int x = 0; x < s.width - odd; ++x) {
      const int pair = line * s.sourceStride + 2 * (x / 2 * 2 - y * odd);
      const int luma = source.Get(pair + x % 2 * 2);
      const int u = source.Get(pair + 1);
      const int v = source.Get(pair + 3);
      const Bgr p =
          x < inBlocks ? ExpectedVectorColour(luma, u, v) : ExpectedTableColour(luma, u, v);
      const int to = y * s.targetStride + (x - y * odd) * bytes;
      target.Put(to, p.b);
      target.Put(to + 1, p.g);
      target.Put(to + 2, p.r);
      if (bytes == 4) target.Put(to + 3, 0);
    }
  }
}

class Yuy2ToRgb : public testing::TestWithParam<int> {
 protected:
  int Bytes() const { return GetParam(); }
  std::vector<KernelForm> Forms() const {
    return Bytes() == 4 ? std::vector<KernelForm>(std::begin(kForms32), std::end(kForms32))
                        : std::vector<KernelForm>(std::begin(kForms24), std::end(kForms24));
  }
};

TEST_P(Yuy2ToRgb, EveryFormGivesTheStatedBytesAndTouchesNoOthers) {
  Operand target(31), source(32);
  OperandSet operands({&target, &source});
  for (const KernelForm& form : Forms()) {
    const PinnedVectorLevel pinned(form.level);
    ForEachShape([&](std::int32_t width, std::int32_t height, std::ptrdiff_t shift) {
      const Shape shape = {width * Bytes() + 5, width * 2 + 3, width, height};
      operands.Reset();
      State(shape, Bytes(), form.block, target, source);
      const std::string wrong = operands.Check(shift, [&](const std::vector<std::uint8_t*>& p) {
        form.kernel(p[0], shape.targetStride, p[1], shape.sourceStride, width, height);
      });
      EXPECT_EQ(wrong, "") << form.name << ", " << width << " x " << height << ", shift " << shift;
      return wrong.empty();
    });
  }
}

TEST_P(Yuy2ToRgb, EverySampleGivesTheStatedColour) {
  constexpr int kColumns = 512;  // both lumas of a pair, 256 pairs
  std::vector<std::uint8_t> source(kColumns * 2), target(kColumns * 4);
  for (const KernelForm& form : Forms()) {
    const PinnedVectorLevel pinned(form.level);
    int wrong = 0;
    for (int chroma = 0; chroma < 65536 && wrong == 0; ++chroma) {
      const int u = chroma >> 8;
      const int v = chroma & 255;
      for (int i = 0; i < kColumns / 2; ++i) {
        std::uint8_t* pair = source.data() + 4 * i;
        pair[0] = static_cast<std::uint8_t>(i);
        pair[1] = static_cast<std::uint8_t>(u);
        pair[2] = static_cast<std::uint8_t>(255 - i);
        pair[3] = static_cast<std::uint8_t>(v);
      }
      // Two pairs of rows' worth of columns are enough: luma runs up and down.
      form.kernel(target.data(), 0, source.data(), 0, kColumns, 1);
      for (int x = 0; x < kColumns; x += 2) {
        const Bgr p =
            form.block == 0 ? ExpectedTableColour(x / 2, u, v) : ExpectedVectorColour(x / 2, u, v);
        const std::uint8_t* even = target.data() + x * Bytes();
        const std::uint8_t* odd = target.data() + (kColumns - 1 - x) * Bytes();
        wrong += even[0] != p.b || even[1] != p.g || even[2] != p.r;
        wrong += odd[0] != p.b || odd[1] != p.g || odd[2] != p.r;
      }
    }
    EXPECT_EQ(wrong, 0) << form.name;
  }
}

TEST_P(Yuy2ToRgb, TailsKeepTheOrderBlueGreenRed) {
  // Width 2 is all tail: Y 81, U 90, V 240 is red.
  const std::uint8_t source[4] = {81, 90, 81, 240};
  for (const KernelForm& form : Forms()) {
    std::uint8_t target[8] = {};
    form.kernel(target, 8, source, 4, 2, 1);
    EXPECT_EQ(target[0], 0) << form.name;
    EXPECT_EQ(target[2], 254) << form.name;
    EXPECT_EQ(target[Bytes()], 0) << form.name;
    EXPECT_EQ(target[Bytes() + 2], 254) << form.name;
  }
}

TEST_P(Yuy2ToRgb, AnyHeightFromZeroUpIsConvertedWhole) {
  const std::vector<std::uint8_t> source(3 * 32, 128);
  for (const KernelForm& form : Forms()) {
    for (std::int32_t height = 0; height <= 3; ++height) {
      std::vector<std::uint8_t> target(static_cast<std::size_t>(4 * 16 * Bytes()), 1);
      form.kernel(target.data(), 16 * Bytes(), source.data(), 32, 16, height);
      for (int y = 0; y < 4; ++y) {
        EXPECT_EQ(target[static_cast<std::size_t>(y * 16 * Bytes())] != 1, y < height) << form.name;
      }
    }
  }
}

TEST_P(Yuy2ToRgb, WidthBelowTwoYieldsNothing) {
  const std::uint8_t source[16] = {};
  for (const KernelForm& form : Forms()) {
    for (std::int32_t width : {0, 1}) {
      std::uint8_t target[16];
      std::memset(target, 5, sizeof(target));
      form.kernel(target + 8, 4, source + 8, 4, width, 2);
      for (std::uint8_t byte : target) EXPECT_EQ(byte, 5) << form.name;
    }
  }
}

TEST_P(Yuy2ToRgb, OddWidthLeavesTheLastPixelAndStartsEachRowOnePixelFurtherLeft) {
  // Tight rows of 3 pixels: row y takes the pair behind the last and writes pixels 2y and 2y + 1.
  std::vector<std::uint8_t> source;
  for (int pixel = 0; pixel < 9; ++pixel) {
    source.push_back(static_cast<std::uint8_t>(16 + 20 * pixel));
    source.push_back(128);
  }
  for (const KernelForm& form : Forms()) {
    const PinnedVectorLevel pinned(form.level);
    std::vector<std::uint8_t> target(static_cast<std::size_t>(9 * Bytes()), 7);
    form.kernel(target.data(), 3 * Bytes(), source.data(), 6, 3, 3);
    for (int pixel = 0; pixel < 9; ++pixel) {
      EXPECT_EQ(target[static_cast<std::size_t>(pixel * Bytes())],
                pixel < 6 ? 9535 * 20 * pixel / 8192 : 7)
          << form.name;
    }
  }
}

TEST_P(Yuy2ToRgb, FourthByteIsZeroAndPaddingStays) {
  Noise noise(8);
  const std::vector<std::uint8_t> source = noise.Bytes(2 * 42);
  for (const KernelForm& form : Forms()) {
    std::vector<std::uint8_t> target(static_cast<std::size_t>(42 * Bytes() + 4), 7);
    form.kernel(target.data(), 0, source.data(), 0, 42, 1);
    for (std::size_t i = 0; Bytes() == 4 && i < 42; ++i) EXPECT_EQ(target[4 * i + 3], 0);
    for (std::size_t i = static_cast<std::size_t>(42 * Bytes()); i < target.size(); ++i) {
      EXPECT_EQ(target[i], 7) << form.name;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(PixelBytes, Yuy2ToRgb, testing::Values(3, 4));

}  // namespace
}  // namespace zor::test
