// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

// Small and odd sizes, and what each form writes outside of whole blocks.
#include <gtest/gtest.h>

#include "convert/expected_colour.h"
#include "convert/yuv420_to_rgb_forms.h"

namespace zor::test {
namespace {

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

}  // namespace
}  // namespace zor::test
