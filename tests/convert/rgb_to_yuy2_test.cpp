// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/rgb_to_yuy2.h"

#include <gtest/gtest.h>

#include <array>

#include "convert/expected_colour.h"
#include "convert/operand.h"
#include "platform/pixel_block.h"

namespace zor::test {
namespace {

using KernelForm = Form<RgbToYuy2Kernel>;

struct Shape {
  std::int32_t targetStride;
  std::int32_t sourceStride;
  std::int32_t width;
  std::int32_t height;
};

Bgr PixelAt(Operand& source, std::ptrdiff_t at, int bytes) {
  source.Get(at + bytes - 1);  // whole pixels may be read
  return {source.Get(at), source.Get(at + 1), source.Get(at + 2)};
}

/// Y0 U Y1 V with chroma of a sum of pixels.
std::array<int, 4> Pair(const Bgr& p0, const Bgr& p1, const Bgr& chroma, int shift) {
  return {ExpectedLuma(p0), ExpectedU(chroma, shift), ExpectedLuma(p1), ExpectedV(chroma, shift)};
}

void StatePlain(const Shape& s, int bytes, Operand& target, Operand& source) {
  const int rows = s.height < 0 ? -s.height : s.height;
  const int odd = s.width % 2;
  for (int y = 0; y < rows; ++y) {
    const int line = s.height < 0 ? rows - 1 - y : y;
    for (int x = 0; x + 1 < s.width; x += 2) {
      const int at = line * s.sourceStride + (x - y * odd) * bytes;
      const Bgr p0 = PixelAt(source, at, bytes);
      const Bgr p1 = PixelAt(source, at + bytes, bytes);
      const auto pair = Pair(p0, p1, p0 + p1, 9);
      for (int i = 0; i < 4; ++i) {
        target.Put(y * s.targetStride + 2 * (x - y * odd) + i, pair[static_cast<std::size_t>(i)]);
      }
    }
  }
}

/// Walks with two moving pointers, as the steps of the form are given.
void StateSse2(const Shape& s, int bytes, Operand& target, Operand& source) {
  const int rows = s.height < 0 ? -s.height : s.height;
  std::ptrdiff_t from = s.height < 0 ? std::ptrdiff_t{rows - 1} * s.sourceStride : 0;
  const std::ptrdiff_t step = s.height < 0 ? -s.sourceStride : s.sourceStride;
  std::ptrdiff_t to = 0;
  for (int y = 0; y < rows; ++y) {
    for (int block = 0; block < s.width >> 3; ++block) {
      for (int i = 0; i < 4; ++i) {
        const Bgr p0 = PixelAt(source, from + 2 * i * bytes, bytes);
        const Bgr p1 = PixelAt(source, from + (2 * i + 1) * bytes, bytes);
        const auto pair = Pair(p0, p1, p1, 8);
        for (int k = 0; k < 4; ++k) target.Put(to + 4 * i + k, pair[static_cast<std::size_t>(k)]);
      }
      from += 32;
      to += 16;
    }
    for (int i = 0; i < (s.width & 7) >> 1; ++i) {
      const Bgr p0 = PixelAt(source, from, 3);
      const Bgr p1 = PixelAt(source, from + 4, 3);
      const Bgr sum = p0 + p1;
      const auto pair = Pair(p0, p1, {sum.b / 2, sum.g / 2, sum.r / 2}, 10);
      for (int k = 0; k < 4; ++k) source.Put(from + k, pair[static_cast<std::size_t>(k)]);
      from += 8;
      to += 4;
    }
    from += step - 4 * s.width;
    to += s.targetStride - 2 * s.width;
  }
}

class RgbToYuy2 : public testing::TestWithParam<int> {
 protected:
  int Bytes() const { return GetParam(); }
  RgbToYuy2Kernel* Plain() const {
    return Bytes() == 4 ? ConvertRgb32ToYuy2Plain : ConvertRgb24ToYuy2Plain;
  }
  RgbToYuy2Kernel* Sse2() const {
    return Bytes() == 4 ? ConvertRgb32ToYuy2Sse2 : ConvertRgb24ToYuy2Sse2;
  }
  std::vector<KernelForm> Sse2Forms() const {
    return {{"sse2", Sse2()},
            {"sse2 with avx2", Sse2(), VectorLevel::kAvx2},
            {"sse2 with avx512", Sse2(), VectorLevel::kAvx512}};
  }

  template <class State>
  void ExpectAllShapes(const std::vector<KernelForm>& forms, const State& state) {
    Operand target(21), source(22);
    OperandSet operands({&target, &source});
    ForEachShape([&](std::int32_t width, std::int32_t height, std::ptrdiff_t shift) {
      const Shape shape = {2 * width + 6, width * Bytes() + 3, width, height};
      operands.Reset();
      state(shape, Bytes(), target, source);
      for (const KernelForm& form : forms) {
        const PinnedVectorLevel pinned(form.level);
        const std::string wrong = operands.Check(shift, [&](const std::vector<std::uint8_t*>& p) {
          form.kernel(p[0], shape.targetStride, p[1], shape.sourceStride, width, height);
        });
        EXPECT_EQ(wrong, "") << form.name << ", " << width << " x " << height << ", shift "
                             << shift;
        if (!wrong.empty()) return false;
      }
      return true;
    });
  }
};

TEST_P(RgbToYuy2, PlainGivesTheStatedBytesAndTouchesNoOthers) {
  ExpectAllShapes({{"plain", Plain()}}, StatePlain);
}

TEST_P(RgbToYuy2, Sse2GivesTheStatedBytesAndTouchesNoOthers) {
  ExpectAllShapes(Sse2Forms(), StateSse2);
}

TEST_P(RgbToYuy2, AnyHeightFromZeroUpIsConvertedWhole) {
  std::vector<KernelForm> forms = Sse2Forms();
  forms.push_back({"plain", Plain()});
  for (const KernelForm& form : forms) {
    const PinnedVectorLevel pinned(form.level);
    for (int height = 0; height <= 3; ++height) {
      std::vector<std::uint8_t> source(static_cast<std::size_t>(3 * 8 * 4 + 32), 255);
      std::vector<std::uint8_t> target(4 * 16, 1);
      form.kernel(target.data(), 16, source.data(), 8 * Bytes(), 8, height);
      for (int y = 0; y < 4; ++y) {
        EXPECT_EQ(target[static_cast<std::size_t>(16 * y)], y < height ? 235 : 1) << form.name;
        EXPECT_EQ(target[static_cast<std::size_t>(16 * y + 15)], y < height ? 128 : 1) << form.name;
      }
    }
  }
}

TEST_P(RgbToYuy2, WidthBelowTwoYieldsNothing) {
  std::vector<KernelForm> forms = Sse2Forms();
  forms.push_back({"plain", Plain()});
  for (const KernelForm& form : forms) {
    for (std::int32_t width : {0, 1}) {
      std::uint8_t source[16];
      std::memset(source, 3, sizeof(source));
      std::uint8_t target[16];
      std::memset(target, 5, sizeof(target));
      form.kernel(target + 8, 4, source + 8, 4, width, 2);
      for (std::uint8_t byte : target) EXPECT_EQ(byte, 5) << form.name;
      for (std::uint8_t byte : source) EXPECT_EQ(byte, 3) << form.name;
    }
  }
}

TEST_P(RgbToYuy2, GreyAgreesBetweenPlainAndSse2) {
  std::vector<std::uint8_t> source(64 * 4 + 8);
  for (int grey = 0; grey < 256; ++grey) {
    std::fill(source.begin(), source.end(), static_cast<std::uint8_t>(grey));
    std::vector<std::uint8_t> plain(128), sse2(128);
    Plain()(plain.data(), 128, source.data(), 64 * Bytes(), 64, 1);
    Sse2()(sse2.data(), 128, source.data(), 64 * Bytes(), 64, 1);
    EXPECT_EQ(plain, sse2);
    EXPECT_EQ(plain[1], 128);
    EXPECT_EQ(plain[3], 128);
  }
}

TEST_P(RgbToYuy2, AtAColourEdgePlainBlendsAndSse2KeepsTheSecondPixel) {
  std::vector<std::uint8_t> source(8 * 4 + 8, 0);
  for (int x = 1; x < 8; x += 2) source[static_cast<std::size_t>(x * Bytes())] = 255;  // blue
  std::uint8_t target[16];
  Plain()(target, 16, source.data(), 8 * Bytes(), 8, 1);
  EXPECT_EQ(target[1], 112 * 255 / 512 + 128);
  Sse2()(target, 16, source.data(), 8 * Bytes(), 8, 1);
  EXPECT_EQ(target[1], 112 * 255 / 256 + 128);
}

TEST_P(RgbToYuy2, OddWidthLeavesTheLastPixelAndStartsEachRowOnePixelFurtherLeft) {
  // Tight rows of 3 pixels: row y takes pixels 2y and 2y + 1 and writes the pair behind the last.
  std::vector<std::uint8_t> source, target(18, 7);
  for (int pixel = 0; pixel < 9; ++pixel) {
    source.insert(source.end(), static_cast<std::size_t>(Bytes()),
                  static_cast<std::uint8_t>(20 * pixel));
  }
  Plain()(target.data(), 6, source.data(), 3 * Bytes(), 3, 3);
  for (int pixel = 0; pixel < 6; ++pixel) {
    EXPECT_EQ(target[static_cast<std::size_t>(2 * pixel)], 16 + 220 * 20 * pixel / 256);
  }
  EXPECT_EQ(std::vector<std::uint8_t>(target.begin() + 12, target.end()),
            std::vector<std::uint8_t>(6, 7));
  // The SSE2 form steps 4 source bytes to the left in both pixel sizes.
  for (const KernelForm& form : Sse2Forms()) {
    const PinnedVectorLevel pinned(form.level);
    std::vector<std::uint8_t> rows(3 * 36);
    for (std::size_t i = 0; i < rows.size(); ++i) rows[i] = static_cast<std::uint8_t>(i / 32 * 40);
    std::vector<std::uint8_t> pairs(3 * 18, 7);
    form.kernel(pairs.data(), 18, rows.data(), 36, 9, 3);
    for (int i = 0; i < 24; ++i) {
      EXPECT_EQ(pairs[static_cast<std::size_t>(2 * i)], 16 + 220 * 40 * (i / 8) / 256) << form.name;
    }
    EXPECT_EQ(std::vector<std::uint8_t>(pairs.begin() + 48, pairs.end()),
              std::vector<std::uint8_t>(6, 7))
        << form.name;
  }
}

TEST(RgbToYuy2Sse2, MultiplesOfEightNeverTouchTheirSource) {
  Noise noise(5);
  for (std::int32_t width = 8; width <= 128; width += 8) {
    std::vector<std::uint8_t> source = noise.Bytes(static_cast<std::size_t>(width) * 4 * 3);
    const std::vector<std::uint8_t> before = source;
    std::vector<std::uint8_t> target(static_cast<std::size_t>(width) * 2 * 3);
    ConvertRgb32ToYuy2Sse2(target.data(), width * 2, source.data(), width * 4, width, 3);
    EXPECT_EQ(source, before) << width;
  }
}

TEST(RgbToYuy2Sse2, TailGoesIntoTheSourceWithAQuarterOfTheChroma) {
  // Width 10: one block, then one pair, which takes the place of pixel 8.
  std::vector<std::uint8_t> source(10 * 4, 0);
  const std::uint8_t blue[8] = {255, 0, 0, 99, 255, 0, 0, 98};
  std::copy(std::begin(blue), std::end(blue), source.begin() + 32);
  std::vector<std::uint8_t> target(20, 7);
  ConvertRgb32ToYuy2Sse2(target.data(), 20, source.data(), 40, 10, 1);
  EXPECT_EQ(std::vector<std::uint8_t>(source.begin() + 32, source.end()),
            (std::vector<std::uint8_t>{40, 155, 40, 123, 255, 0, 0, 98}));
  EXPECT_EQ(target[15], 128);
  for (std::size_t i = 16; i < 20; ++i) EXPECT_EQ(target[i], 7);
}

TEST(RgbToYuy2Sse2, ThreeBytePixelsAreReadWithGaps) {
  // Pixel 8 of a row of 16 is read from byte 32, not from byte 24.
  std::vector<std::uint8_t> source(64, 0);
  source[24] = source[25] = source[26] = 255;
  std::vector<std::uint8_t> target(32);
  ConvertRgb24ToYuy2Sse2(target.data(), 32, source.data(), 48, 16, 1);
  for (std::size_t i = 0; i < 32; i += 2) EXPECT_EQ(target[i], 16);
  source[32] = source[33] = source[34] = 255;
  ConvertRgb24ToYuy2Sse2(target.data(), 32, source.data(), 48, 16, 1);
  EXPECT_EQ(target[16], 235);
}

TEST(RgbToYuy2Sse2, LaterRowsReadWhatTheTailChanged) {
  // Rows of 10 pixels are 30 bytes: the tail of row 0 stands at byte 32, in row 1.
  std::vector<std::uint8_t> source(80, 0);
  std::vector<std::uint8_t> target(40);
  ConvertRgb24ToYuy2Sse2(target.data(), 20, source.data(), 30, 10, 2);
  // Bytes 32 to 35 became 16 128 16 128: the red of pixel 0 and the pixel after it of row 1.
  EXPECT_EQ(target[20], 66 * 16 / 256 + 16);
  EXPECT_EQ(target[22], (25 * 128 + 129 * 16 + 66 * 128) / 256 + 16);
}

TEST(RgbToYuy2Sse2, ReadsAndTailsStayInsideTheGuardsOfABlock) {
  for (std::int32_t width : {2, 7, 10, 33, 101}) {
    for (std::int32_t height : {-9, 1, 9}) {
      const int rows = height < 0 ? -height : height;
      const Shape shape = {width * 2, ((width * 24 + 31) >> 3) & ~3, width, height};
      Operand target(1), source(2);
      target.Reset();
      source.Reset();
      StateSse2(shape, 3, target, source);
      const std::int64_t guard = GuardBytes(width, rows);
      EXPECT_GE(source.low(), -guard);
      EXPECT_LE(source.low() + static_cast<std::ptrdiff_t>(source.size()),
                std::int64_t{shape.sourceStride} * rows + guard);
    }
  }
}

TEST_P(RgbToYuy2, EveryColourGivesTheStatedBytes) {
  // Pairs of a colour and its neighbour in red; the second pixel takes every colour.
  constexpr int kColumns = 512;
  std::vector<KernelForm> forms = Sse2Forms();
  forms.push_back({"plain", Plain()});
  for (const KernelForm& form : forms) {
    const PinnedVectorLevel pinned(form.level);
    const bool plain = form.kernel == Plain();
    const bool gaps = !plain && Bytes() == 3;
    std::vector<std::uint8_t> source(kColumns * 4), target(kColumns * 2);
    const auto colour = [](int i) { return Bgr{i >> 16 & 255, i >> 8 & 255, i & 255}; };
    int wrong = 0;
    for (int first = 0; first < 1 << 24 && wrong == 0; first += kColumns / 2) {
      for (int x = 0; x < kColumns; ++x) {
        const Bgr p = colour(x % 2 == 0 ? first + x / 2 + 77 : first + x / 2);
        const int at = gaps ? x / 8 * 32 + x % 8 * 3 : x * Bytes();
        source[static_cast<std::size_t>(at)] = static_cast<std::uint8_t>(p.b);
        source[static_cast<std::size_t>(at + 1)] = static_cast<std::uint8_t>(p.g);
        source[static_cast<std::size_t>(at + 2)] = static_cast<std::uint8_t>(p.r);
      }
      form.kernel(target.data(), kColumns * 2, source.data(), kColumns * Bytes(), kColumns, 1);
      for (int i = 0; i < kColumns / 2; ++i) {
        const Bgr p0 = colour(first + i + 77);
        const Bgr p1 = colour(first + i);
        const Bgr chroma = plain ? p0 + p1 : p1;
        const int shift = plain ? 9 : 8;
        const std::uint8_t* out = target.data() + 4 * i;
        wrong += out[0] != ExpectedLuma(p0);
        wrong += out[1] != ExpectedU(chroma, shift);
        wrong += out[2] != ExpectedLuma(p1);
        wrong += out[3] != ExpectedV(chroma, shift);
      }
    }
    EXPECT_EQ(wrong, 0) << form.name;
  }
}

INSTANTIATE_TEST_SUITE_P(PixelBytes, RgbToYuy2, testing::Values(3, 4));

}  // namespace
}  // namespace zor::test
