// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/yuv420_to_rgb.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "convert/expected_colour.h"
#include "convert/operand.h"
#include "convert/wrappers.h"

#if defined(__i386__)
#include <xmmintrin.h>
#endif

namespace zor::test {
namespace {

enum class Rules { kPlain, kMmx, kSse2, kSse2Raw };

struct RgbForm : Form<Yuv420ToRgbKernel> {
  int pixel;
  Rules rules;
};

const RgbForm kForms[] = {
    {{"rgb32 plain", ConvertYuv420ToRgb32Plain}, 4, Rules::kPlain},
    {{"rgb32 mmx", ConvertYuv420ToRgb32Mmx}, 4, Rules::kMmx},
    {{"rgb32 sse2", ConvertYuv420ToRgb32Sse2}, 4, Rules::kSse2},
    {{"rgb32 sse2 with avx2", ConvertYuv420ToRgb32Sse2, VectorLevel::kAvx2}, 4, Rules::kSse2},
    {{"rgb32 sse2 with avx512", ConvertYuv420ToRgb32Sse2, VectorLevel::kAvx512}, 4, Rules::kSse2},
    {{"rgb24 plain", ConvertYuv420ToRgb24Plain}, 3, Rules::kPlain},
    {{"rgb24 sse2", ConvertYuv420ToRgb24Sse2}, 3, Rules::kSse2Raw},
    {{"rgb24 sse2 with avx2", ConvertYuv420ToRgb24Sse2, VectorLevel::kAvx2}, 3, Rules::kSse2Raw},
    {{"rgb24 sse2 with avx512", ConvertYuv420ToRgb24Sse2, VectorLevel::kAvx512},
     3,
     Rules::kSse2Raw}};

struct Shape {
  int lumaStride, chromaStride, targetStride, width, height;
};

struct Operands {
  Operand& target;
  Operand& luma;
  Operand& u;
  Operand& v;
};

void PutPixel(Operand& target, int at, int pixel, const Bgr& colour) {
  target.Put(at, colour.b);
  target.Put(at + 1, colour.g);
  target.Put(at + 2, colour.r);
  if (pixel == 4) target.Put(at + 3, 0);
}

/// Offset of a row in walking order.
int TargetRow(const Shape& s, int row) {
  const int rows = s.height < 0 ? -s.height : s.height;
  return (s.height < 0 ? rows - 1 - row : row) * s.targetStride;
}

/// The forms that filter: pairs of rows, within one column by column.
void StateFiltered(const Shape& s, const RgbForm& form, Operands on) {
  const int pairs = (s.height < 0 ? -s.height : s.height) / 2;
  const int odd = s.width % 2;
  const int block = form.rules == Rules::kMmx ? 8 : form.rules == Rules::kSse2 ? 16 : 0;
  const int whole = block == 0 ? 0 : s.width / block * block;
  for (int p = 0; p < pairs; ++p) {
    const bool first = p == 0, last = p == pairs - 1;
    auto paint = [&](int x, bool inBlock) {  // both rows of column x
      const bool t = inBlock && form.rules == Rules::kMmx;
      auto average = [&](int a, int b) { return t ? AvgT(a, b) : Avg(a, b); };
      auto smooth = [&](int a, int b, int c) { return average(average(a, c), b); };
      auto y = [&](int r) { return int{on.luma.Get(r * s.lumaStride + x - p * odd)}; };
      auto chroma = [&](Operand& plane) {
        auto c = [&](int r) { return int{plane.Get(r * s.chromaStride + x / 2)}; };
        if (pairs == 1) return c(0);
        if (first) return inBlock ? average(c(0), c(1)) : c(0);
        if (last) return inBlock ? average(c(p - 1), c(p)) : c(p - 1);
        return smooth(c(p - 1), c(p), c(p + 1));
      };
      const int rows[2] = {first ? y(0) : smooth(y(2 * p - 1), y(2 * p), y(2 * p + 1)),
                           last ? y(2 * p + 1) : smooth(y(2 * p), y(2 * p + 1), y(2 * p + 2))};
      for (int row = 0; row < 2; ++row) {
        const Bgr colour = inBlock ? ExpectedVectorColour(rows[row], chroma(on.u), chroma(on.v))
                                   : ExpectedTableColour(rows[row], chroma(on.u), chroma(on.v));
        PutPixel(on.target, TargetRow(s, 2 * p + row) + (x - p * odd) * form.pixel, form.pixel,
                 colour);
      }
    };
    for (int x = 0; x < whole; ++x) paint(x, true);
    const int tailPairs = form.rules != Rules::kMmx ? (s.width / 2 * 2 - whole) / 2
                          : first                   ? s.width / 2 % 4
                                                    : s.width / 2 % 8;
    for (int x = whole; x < whole + 2 * tailPairs; ++x) paint(x, false);
  }
}

/// Single rows without the filter.
void StateRaw(const Shape& s, Operands on) {
  const int rows = s.height < 0 ? -s.height : s.height;
  const int odd = s.width % 2;
  const int whole = s.width / 16 * 16;
  for (int r = 0; r < rows; ++r) {
    for (int x = 0; x < s.width - odd; ++x) {
      const int y = on.luma.Get(r * s.lumaStride + x - r * odd);
      const int at = TargetRow(s, r) + 3 * (x - r * odd);
      const int row = r / 2 * s.chromaStride;
      if (x < whole) {
        PutPixel(on.target, at, 3,
                 ExpectedVectorColour(y, on.u.Get(row + x / 2), on.v.Get(row + x / 2)));
      } else {
        const Bgr c = ExpectedTableColour(y, on.u.Get(row), on.v.Get(row));
        PutPixel(on.target, at, 3, {c.r, c.g, c.b});
      }
    }
  }
}

TEST(Yuv420ToRgb, EveryFormGivesTheStatedBytesAndTouchesNoOthers) {
  Operand target(61), luma(62), u(63), v(64);
  OperandSet operands({&target, &luma, &u, &v});
  ForEachShape([&](std::int32_t width, std::int32_t height, std::ptrdiff_t shift) {
    bool right = true;
    const RgbForm* stated = nullptr;
    for (const RgbForm& form : kForms) {
      // A tight target: what runs past a row lands in its neighbour.
      const Shape s = {width + 3, width / 2 + 2, width * form.pixel + (width % 5), width, height};
      // Neighbours in the list that differ by their vector level only have one statement.
      if (stated == nullptr || stated->rules != form.rules || stated->pixel != form.pixel) {
        operands.Reset();
        if (form.rules == Rules::kSse2Raw) {
          StateRaw(s, {target, luma, u, v});
        } else {
          StateFiltered(s, form, {target, luma, u, v});
        }
        stated = &form;
      }
      const PinnedVectorLevel pinned(form.level);
      const std::string wrong = operands.Check(shift, [&](const std::vector<std::uint8_t*>& p) {
        form.kernel(p[0], s.targetStride, p[1], p[2], p[3], s.lumaStride, s.chromaStride, width,
                    height);
      });
      EXPECT_EQ(wrong, "") << form.name << ", " << width << " x " << height << ", shift " << shift;
      right = right && wrong.empty();
    }
    return right;
  });
}

/// A picture of one value of each sample. @return the target's bytes.
std::vector<std::uint8_t> Uniform(const RgbForm& form, int width, int height, int y, int u, int v) {
  const PinnedVectorLevel pinned(form.level);
  const auto bytes = [](int count, int value) {
    return std::vector<std::uint8_t>(static_cast<std::size_t>(count),
                                     static_cast<std::uint8_t>(value));
  };
  const auto luma = bytes(width * height + 64, y);
  const auto planeU = bytes(width * height + 64, u), planeV = bytes(width * height + 64, v);
  auto target = bytes(width * height * form.pixel + 64, 77);
  form.kernel(target.data(), width * form.pixel, luma.data(), planeU.data(), planeV.data(), width,
              width / 2, width, height);
  return target;
}

TEST(Yuv420ToRgb, ColourArithmeticHoldsForAllYAndUAndV) {
  // A single pair of rows is taken without the filter in every form. 128 columns of both rows hold
  // every Y once, the 4 pixels of a chroma sample having 4 of them; 4 values of U stand in a row.
  constexpr int kOfOneU = 128, kColumns = 4 * kOfOneU;
  std::vector<std::uint8_t> luma(2 * kColumns), u(kColumns / 2), v(kColumns / 2);
  const auto lumaAt = [](int row, int x) { return x % kOfOneU * 2 + row; };
  for (int x = 0; x < kColumns; ++x) {
    for (int row = 0; row < 2; ++row) {
      luma[static_cast<std::size_t>(row * kColumns + x)] =
          static_cast<std::uint8_t>(lumaAt(row, x));
    }
  }
  std::vector<std::uint8_t> target(2 * kColumns * 4), expected[2][2];
  for (auto& ofRules : expected) {
    for (int pixel : {3, 4}) {
      ofRules[pixel - 3].resize(static_cast<std::size_t>(2 * kColumns * pixel));
    }
  }
  for (int cv = 0; cv < 256; ++cv) {
    std::fill(v.begin(), v.end(), static_cast<std::uint8_t>(cv));
    for (int cu = 0; cu < 256; cu += 4) {
      for (int x = 0; x < kColumns; ++x) {
        const int ownU = cu + x / kOfOneU;
        u[static_cast<std::size_t>(x / 2)] = static_cast<std::uint8_t>(ownU);
        for (int row = 0; row < 2; ++row) {
          const int y = lumaAt(row, x);
          const Bgr colours[2] = {ExpectedTableColour(y, ownU, cv),
                                  ExpectedVectorColour(y, ownU, cv)};
          for (int rules = 0; rules < 2; ++rules) {
            for (int pixel : {3, 4}) {
              std::uint8_t* at = expected[rules][pixel - 3].data() + (row * kColumns + x) * pixel;
              at[0] = static_cast<std::uint8_t>(colours[rules].b);
              at[1] = static_cast<std::uint8_t>(colours[rules].g);
              at[2] = static_cast<std::uint8_t>(colours[rules].r);
            }
          }
        }
      }
      for (const RgbForm& form : kForms) {
        const PinnedVectorLevel pinned(form.level);
        std::fill(target.begin(), target.end(), std::uint8_t{77});
        form.kernel(target.data(), kColumns * form.pixel, luma.data(), u.data(), v.data(), kColumns,
                    kColumns / 2, kColumns, 2);
        const auto& bytes = expected[form.rules == Rules::kPlain ? 0 : 1][form.pixel - 3];
        ASSERT_TRUE(std::memcmp(bytes.data(), target.data(), bytes.size()) == 0)
            << form.name << ", U from " << cu << ", V " << cv << ", byte "
            << std::mismatch(bytes.begin(), bytes.end(), target.begin()).first - bytes.begin();
      }
    }
  }
}

TEST(Yuv420ToRgb, HeightFourHasNoMiddlePairAndItsLastPairTakesTheFirstChromaRowInThePlainForm) {
  // Chroma rows of 100 and 200: both pairs take row 0.
  for (const RgbForm& form : {kForms[0], kForms[5]}) {
    const std::vector<std::uint8_t> luma(16, 128);
    const std::vector<std::uint8_t> u = {100, 100, 200, 200}, v(4, 128);
    std::vector<std::uint8_t> target(64);
    form.kernel(target.data(), 4 * form.pixel, luma.data(), u.data(), v.data(), 4, 2, 4, 4);
    const Bgr c = ExpectedTableColour(128, 100, 128);
    for (int row = 0; row < 4; ++row)
      EXPECT_EQ(c.b, target[static_cast<std::size_t>(row * 4 * form.pixel)]);
  }
}

TEST(Yuv420ToRgb, HeightsTwoAndThreeAreOnePairUnchangedAndHeightOneWritesNothing) {
  for (const RgbForm& form : kForms) {
    if (form.rules == Rules::kSse2Raw) continue;
    const PinnedVectorLevel pinned(form.level);
    for (const int height : {1, 2, 3}) {
      std::vector<std::uint8_t> luma(64 * 3), u(32, 90), v(32, 170), target(64 * 4 * 3, 5);
      for (std::size_t i = 0; i < luma.size(); ++i)
        luma[i] = static_cast<std::uint8_t>(40 + 50 * (i / 64));
      form.kernel(target.data(), 64 * form.pixel, luma.data(), u.data(), v.data(), 64, 32, 64,
                  height);
      for (int row = 0; row < 3; ++row) {
        const Bgr c = form.rules == Rules::kPlain ? ExpectedTableColour(40 + 50 * row, 90, 170)
                                                  : ExpectedVectorColour(40 + 50 * row, 90, 170);
        const bool written = height >= 2 && row < 2;
        EXPECT_EQ(written ? c.b : 5, target[static_cast<std::size_t>(row * 64 * form.pixel)])
            << form.name << " height " << height << " row " << row;
      }
    }
  }
}

TEST(Yuv420ToRgb, Rgb24Sse2WritesNothingAtHeightZeroAndOneRowAtHeightOne) {
  for (const RgbForm& form : kForms) {
    if (form.rules != Rules::kSse2Raw) continue;
    EXPECT_EQ(77, Uniform(form, 16, 1, 200, 128, 128)[48]);
    const PinnedVectorLevel pinned(form.level);
    const std::vector<std::uint8_t> luma(64, 200), chroma(32, 128);
    std::vector<std::uint8_t> target(96, 77);
    form.kernel(target.data(), 48, luma.data(), chroma.data(), chroma.data(), 16, 8, 16, 0);
    EXPECT_EQ(std::vector<std::uint8_t>(96, 77), target);
    form.kernel(target.data(), 48, luma.data(), chroma.data(), chroma.data(), 16, 8, 16, 1);
    EXPECT_NE(77, target[0]);
    EXPECT_EQ(77, target[48]);
  }
}

TEST(Yuv420ToRgb, Rgb24Sse2BelowWidth16TakesTheRowsFirstChromaWithBlueAndRedExchanged) {
  const std::vector<std::uint8_t> luma(14, 100), v(7, 128);
  std::vector<std::uint8_t> u(7, 10), target(42);
  u[0] = 200;
  ConvertYuv420ToRgb24Sse2(target.data(), 42, luma.data(), u.data(), v.data(), 14, 7, 14, 1);
  const Bgr c = ExpectedTableColour(100, 200, 128);
  for (std::size_t x = 0; x < 14; ++x) {
    EXPECT_EQ(c.r, target[3 * x]);
    EXPECT_EQ(c.g, target[3 * x + 1]);
    EXPECT_EQ(c.b, target[3 * x + 2]);
  }
  EXPECT_NE(c.r, c.b);
}

TEST(Yuv420ToRgb, WidthBelowTwoWritesNothing) {
  for (const RgbForm& form : kForms) {
    for (const int width : {0, 1}) {
      const std::vector<std::uint8_t> out = Uniform(form, width, 8, 200, 90, 90);
      EXPECT_EQ(std::vector<std::uint8_t>(out.size(), 77), out) << form.name;
    }
  }
}

TEST(Yuv420ToRgb, OddWidthLeavesTheLastColumnAndDriftsOnePixelPerPair) {
  // Six rows of 5 columns, tight: pair p starts p pixels early, so each pair overlaps the last.
  const std::vector<std::uint8_t> out = Uniform(kForms[0], 5, 6, 235, 128, 128);
  std::vector<bool> written(40, false);
  for (int p = 0; p < 3; ++p) {
    for (int row = 0; row < 2; ++row) {
      for (int x = 0; x < 4; ++x)
        written[static_cast<std::size_t>((2 * p + row) * 5 - p + x)] = true;
    }
  }
  for (std::size_t i = 0; i < 30; ++i) EXPECT_EQ(written[i] ? 254 : 77, out[4 * i]) << i;
}

TEST(Yuv420ToRgb, OddHeightLeavesTheLastRowExceptInRgb24Sse2) {
  for (const RgbForm& form : kForms) {
    const std::vector<std::uint8_t> out = Uniform(form, 32, 5, 235, 128, 128);
    const auto row = static_cast<std::size_t>(4 * 32 * form.pixel);
    EXPECT_NE(77, out[row - 4]) << form.name;
    EXPECT_EQ(form.rules == Rules::kSse2Raw ? 253 : 77, out[row]) << form.name;
  }
}

TEST(Yuv420ToRgb, GreyInputGivesGreyWith254ByTablesAnd253ByVectors) {
  for (const RgbForm& form : kForms) {
    for (const int y : {16, 235}) {
      const std::vector<std::uint8_t> out = Uniform(form, 32, 4, y, 128, 128);
      const int white = form.rules == Rules::kPlain ? 254 : 253;
      for (int c = 0; c < 3; ++c)
        EXPECT_EQ(y == 16 ? 0 : white, out[static_cast<std::size_t>(c)]) << form.name;
    }
  }
}

TEST(Yuv420ToRgb, FourthByteIsZeroInAllForms) {
  for (const RgbForm& form : kForms) {
    if (form.pixel != 4) continue;
    const std::vector<std::uint8_t> out = Uniform(form, 38, 6, 180, 20, 240);
    for (std::size_t i = 3; i < 38 * 6 * 4; i += 4) ASSERT_EQ(0, out[i]) << form.name;
  }
}

TEST(Yuv420ToRgb, MmxRunsEightColumnsPastAWidthWithBitThreeSetButNotInTheFirstPair) {
  const std::vector<std::uint8_t> luma(40 * 8 + 64, 235), chroma(20 * 4 + 64, 128);
  std::vector<std::uint8_t> target(160 * 8, 77);
  ConvertYuv420ToRgb32Mmx(target.data(), 160, luma.data(), chroma.data(), chroma.data(), 40, 20, 12,
                          8);
  for (int row = 0; row < 8; ++row) {
    EXPECT_NE(77, target[static_cast<std::size_t>(row * 160 + 44)]);
    EXPECT_EQ(row < 2 ? 77 : 254, target[static_cast<std::size_t>(row * 160 + 48)]);
    EXPECT_EQ(row < 2 ? 77 : 254, target[static_cast<std::size_t>(row * 160 + 76)]);
    EXPECT_EQ(77, target[static_cast<std::size_t>(row * 160 + 80)]);
  }
}

#if defined(__i386__)
TEST(Yuv420ToRgb, MmxFormsLeaveTheFloatingPointRegistersFree) {
  Uniform(kForms[1], 32, 8, 100, 100, 100);
  struct {
    std::uint32_t control, status, tags, rest[4];
  } environment;
  __asm__ volatile("fnstenv %0\n\tfldenv %0" : "=m"(environment));
  EXPECT_EQ(0xFFFFu, environment.tags & 0xFFFF);  // all empty
}
#endif

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
