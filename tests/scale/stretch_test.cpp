// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "scale/stretch.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/memory.h"
#include "scale/scale_cases.h"
#include "scale/scale_picture.h"

namespace zor::test {
namespace {

using Bytes = std::vector<std::uint8_t>;
constexpr ScaleMode kAllModes[] = {0, 1, 2, 3, 4, 5, 6, 0xFF00, 0xFF01, 0xFF02};

Bytes Gray(int width, int height, std::uint64_t seed) {
  return Noise(seed).Bytes(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
}

/// Gray pictures without padding, both top-down, no fit.
void StretchGray(Bytes* target, int dw, int dh, const RECT* to, const Bytes& source, int sw, int sh,
                 const RECT* from, ScaleMode mode) {
  ASSERT_EQ(1u, StretchRgb(target->data(), dw, dh, to, dw, 8, 1, source.data(), sw, sh, from, sw, 8,
                           1, 0, mode));
}

// --- The core ---------------------------------------------------------------------------------

TEST(ScalePicture, AnyOtherPairOfPixelSizesLeavesTheTargetUntouched) {
  const Bytes source = Noise(1).Bytes(400);
  for (int from = 0; from <= 5; ++from) {
    for (int to = 0; to <= 5; ++to) {
      if (from == to && (from == 1 || from == 3 || from == 4)) continue;
      if ((from == 3 && to == 4) || (from == 4 && to == 3)) continue;
      Bytes target(400, 9);
      ScalePicture({target.data(), 8, 8, 32, to}, {source.data(), 10, 10, 40, from},
                   {0, 1.25, 0, 1.25}, SCALE_NEAREST, nullptr);
      EXPECT_EQ(Bytes(400, 9), target) << from << " to " << to;
    }
  }
}

TEST(ScalePicture, ASizeOfNothingLeavesTheTargetUntouched) {
  const Bytes source = Noise(2).Bytes(100);
  Bytes target(100, 9);
  const int sizes[][4] = {{0, 5, 5, 5}, {5, 0, 5, 5}, {5, 5, 0, 5}, {5, 5, 5, 0}, {1, 0, 1, 1}};
  for (const auto& s : sizes) {
    for (const ScaleMode mode : kAllModes) {
      ScalePicture({target.data(), s[0], s[1], 10, 1}, {source.data(), s[2], s[3], 10, 1},
                   {0, 1, 0, 1}, mode, nullptr);
    }
  }
  EXPECT_EQ(Bytes(100, 9), target);
}

TEST(ScalePicture, ASizeOfOneOnAnySideTurnsEveryModeIntoNearest) {
  const int sizes[][4] = {{1, 6, 9, 8}, {7, 1, 9, 8}, {7, 6, 1, 8}, {7, 6, 9, 1}};  // dw dh sw sh
  for (const auto& s : sizes) {
    const Bytes source = Gray(s[2], s[3], 3);
    const ScaleAxes axes{0, static_cast<double>(s[2]) / s[0], 0, static_cast<double>(s[3]) / s[1]};
    Bytes expected(static_cast<std::size_t>(s[0] * s[1]));
    RefGray8({expected.data(), s[0], s[1], s[0]}, {source.data(), s[2], s[3], s[2], 1}, 0,
             axes.stepX, 0, axes.stepY, 0);
    for (const ScaleMode mode : kAllModes) {
      Bytes target(expected.size(), 9);
      ScalePicture({target.data(), s[0], s[1], s[0], 1}, {source.data(), s[2], s[3], s[2], 1}, axes,
                   mode, nullptr);
      EXPECT_EQ(expected, target) << mode;
    }
  }
}

TEST(ScalePicture, AreaAveragesGrayOnlyWhereTheSourceIsLargerInBothAxes) {
  const int shapes[][4] = {{20, 10, 13, 7},  {20, 10, 13, 10}, {20, 10, 20, 7},
                           {20, 10, 13, 15}, {20, 10, 30, 15}, {20, 10, 20, 10}};
  for (const auto& s : shapes) {
    const Bytes source = Gray(s[0], s[1], 4);
    Bytes target(static_cast<std::size_t>(s[2] * s[3]), 9);
    Bytes expected = target;
    const RefTarget to{expected.data(), s[2], s[3], s[2]};
    const RefSource from{source.data(), s[0], s[1], s[0], 1};
    if (s[0] > s[2] && s[1] > s[3]) {
      RefArea(to, from);
    } else {
      RefGray8(to, from, 0, static_cast<double>(s[0]) / s[2], 0, static_cast<double>(s[1]) / s[3],
               SCALE_BILINEAR);
    }
    StretchGray(&target, s[2], s[3], nullptr, source, s[0], s[1], nullptr, SCALE_AREA);
    EXPECT_EQ(expected, target) << s[2] << " x " << s[3];
  }
}

TEST(ScalePicture, AreaServesThreeAndFourBytePixels) {
  for (const int channels : {3, 4}) {
    const Bytes source = Noise(5).Bytes(static_cast<std::size_t>(30 * 20 * channels));
    Bytes target(static_cast<std::size_t>(21 * 13 * channels), 9);
    Bytes expected = target;
    RefArea({expected.data(), 21, 13, 21 * channels},
            {source.data(), 30, 20, 30 * channels, channels});
    ScalePicture({target.data(), 21, 13, 21 * channels, channels},
                 {source.data(), 30, 20, 30 * channels, channels}, {0, 30 / 21.0, 0, 20 / 13.0},
                 SCALE_AREA, nullptr);
    EXPECT_EQ(expected, target);
  }
}

TEST(ScalePicture, BoxModesInterpolateGrayAtEveryRatio) {
  // One step below 2 and one of 3; exactly 2; far above.
  const int shapes[][4] = {{30, 30, 20, 10}, {20, 20, 10, 10}, {60, 60, 10, 6}};
  for (const auto& s : shapes) {
    const Bytes source = Gray(s[0], s[1], 6);
    Bytes bilinear(static_cast<std::size_t>(s[2] * s[3]), 9);
    StretchGray(&bilinear, s[2], s[3], nullptr, source, s[0], s[1], nullptr, SCALE_BILINEAR);
    for (const ScaleMode mode : {SCALE_BOX, SCALE_BOX_FADE, SCALE_BILINEAR_FADE}) {
      Bytes target(bilinear.size(), 9);
      StretchGray(&target, s[2], s[3], nullptr, source, s[0], s[1], nullptr, mode);
      EXPECT_EQ(bilinear, target) << mode;
    }
  }
}

TEST(ScalePicture, BoxModesInterpolateColourIfOneStepIsBelowTwo) {
  for (const int channels : {3, 4}) {
    // 1.5 across and 3 down, and the other way round.
    const int shapes[][4] = {{30, 30, 20, 10}, {30, 30, 10, 20}};
    for (const auto& s : shapes) {
      const Bytes source = Noise(26).Bytes(static_cast<std::size_t>(s[0] * s[1] * channels));
      const auto scale = [&](ScaleMode mode) {
        Bytes target(static_cast<std::size_t>(s[2] * s[3] * channels), 9);
        StretchRgb(target.data(), s[2], s[3], nullptr, s[2] * channels, 8 * channels, 1,
                   source.data(), s[0], s[1], nullptr, s[0] * channels, 8 * channels, 1, 0, mode);
        return target;
      };
      EXPECT_EQ(scale(SCALE_BILINEAR), scale(SCALE_BOX));
      EXPECT_EQ(scale(SCALE_BILINEAR_FADE), scale(SCALE_BOX_FADE));
    }
  }
}

TEST(ScalePicture, BoxAveragesTwoByTwoAtExactlyTwo) {
  const Bytes source = Noise(27).Bytes(40 * 20 * 4);
  Bytes target(20 * 10 * 4, 9);
  StretchRgb(target.data(), 20, 10, nullptr, 80, 32, 1, source.data(), 40, 20, nullptr, 160, 32, 1,
             0, SCALE_BOX);
  for (int y = 0; y < 10; ++y) {
    for (int v = 0; v < 80; ++v) {
      const std::uint8_t* p = source.data() + 2 * y * 160 + v / 4 * 8 + v % 4;
      ASSERT_EQ((p[0] + p[4] + p[160] + p[164]) / 4, target[80 * y + v]) << v << ", " << y;
    }
  }
}

// --- RGB and gray ------------------------------------------------------------------------------

TEST(StretchRgb, NullPixelsReturnZero) {
  std::uint8_t byte = 5;
  EXPECT_EQ(0u, StretchRgb(nullptr, 1, 1, nullptr, 1, 8, 1, &byte, 1, 1, nullptr, 1, 8, 1, 0, 0));
  EXPECT_EQ(0u, StretchRgb(&byte, 1, 1, nullptr, 1, 8, 1, nullptr, 1, 1, nullptr, 1, 8, 1, 0, 0));
  EXPECT_EQ(5, byte);
}

TEST(StretchRgb, EveryModeAndRectangleMatchesTheStatement) {
  Noise noise(7);
  for (int round = 0; round < 200; ++round) {
    const int sw = noise.Range(3, 50), sh = noise.Range(3, 20);
    const int dw = noise.Range(3, 50), dh = noise.Range(3, 20);
    const Bytes source = Gray(sw, sh, noise.Next());
    const int sl = noise.Range(0, sw - 2), st = noise.Range(0, sh - 2);
    const int dl = noise.Range(0, dw - 2), dt = noise.Range(0, dh - 2);
    const RECT from{sl, st, noise.Range(sl + 1, sw), noise.Range(st + 1, sh)};
    const RECT to{dl, dt, noise.Range(dl + 1, dw), noise.Range(dt + 1, dh)};
    const int fw = static_cast<int>(from.right) - sl, fh = static_cast<int>(from.bottom) - st;
    const int tw = static_cast<int>(to.right) - dl, th = static_cast<int>(to.bottom) - dt;
    for (const ScaleMode mode : {0u, 1u, 2u, 3u, 4u, 5u, 6u}) {
      Bytes target(static_cast<std::size_t>(dw * dh), 9);
      Bytes expected = target;
      RefScalePlane({expected.data() + dt * dw + dl, tw, th, dw},
                    {source.data() + st * sw + sl, fw, fh, sw, 1}, static_cast<double>(fw) / tw,
                    static_cast<double>(fh) / th, mode);
      StretchGray(&target, dw, dh, &to, source, sw, sh, &from, mode);
      ASSERT_EQ(expected, target) << round << ", mode " << mode;
    }
  }
}

TEST(StretchRgb, RowsTurnOverIfExactlyOneOrientationIsZero) {
  const Bytes source = Gray(9, 8, 8);
  const auto stretch = [&](std::uint32_t to, std::uint32_t from) {
    Bytes target(7 * 6, 9);
    StretchRgb(target.data(), 7, 6, nullptr, 7, 8, to, source.data(), 9, 8, nullptr, 9, 8, from, 0,
               SCALE_BILINEAR);
    return target;
  };
  const Bytes plain = stretch(1, 1);
  EXPECT_EQ(plain, stretch(0, 0));
  EXPECT_EQ(plain, stretch(1, 7));
  Bytes over;
  for (int y = 5; y >= 0; --y)
    over.insert(over.end(), plain.begin() + 7 * y, plain.begin() + 7 * y + 7);
  EXPECT_EQ(over, stretch(0, 1));
  EXPECT_EQ(over, stretch(1, 0));
}

TEST(StretchRgb, RectanglesCountMemoryRowsWhateverTheOrientation) {
  const Bytes source = Gray(4, 4, 9);
  Bytes target(4 * 8, 9);
  const RECT to{1, 2, 4, 5};
  StretchRgb(target.data(), 4, 8, &to, 4, 8, 0, source.data(), 4, 4, nullptr, 4, 8, 1, 0, 0);
  for (int y = 0; y < 8; ++y) {
    for (int x = 0; x < 4; ++x) {
      const bool inside = x >= 1 && y >= 2 && y < 5;
      if (!inside) {
        EXPECT_EQ(9, target[4 * y + x]) << x << ", " << y;
      }
    }
  }
  // Source rows 0, 1 and 3 at positions 0.166, 1.5 and 2.833, in rising order from row 4 up.
  EXPECT_EQ(source[4 * 0 + 0], target[4 * 4 + 1]);
}

TEST(StretchRgb, AModeOutsideOfTheContractDrawsNothing) {
  const Bytes source = Noise(10).Bytes(400);
  const RECT to{1, 1, 4, 4};
  for (const ScaleMode mode : {7u, 8u, 0xFF00u, 0xFF01u, 0xFF02u, 0xFFFFFFFFu}) {
    for (const int bits : {8, 24, 32}) {
      Bytes target(400, 9);
      EXPECT_EQ(1u, StretchRgb(target.data(), 5, 5, nullptr, 20, bits, 1, source.data(), 5, 5,
                               nullptr, 20, bits, 1, 0, mode));
      EXPECT_EQ(1u, StretchRgb(target.data(), 5, 5, &to, 20, bits, 1, source.data(), 1, 5, nullptr,
                               20, bits, 1, 1, mode));
      EXPECT_EQ(Bytes(400, 9), target) << mode << ", " << bits;
    }
  }
}

TEST(StretchRgb, AFitPaintsFourBandsThatMeetButDoNotOverlap) {
  // 24-bit pixels whose area is filled by the exact scaler, on ground that isn't black.
  const Bytes source(30 * 30 * 3, 77);
  Bytes target(20 * 16 * 3, 9);
  const RECT to{5, 4, 12, 11};
  StretchRgb(target.data(), 20, 16, &to, 60, 24, 1, source.data(), 30, 30, nullptr, 90, 24, 1, 1,
             SCALE_AREA);
  for (int y = 0; y < 16; ++y) {
    for (int x = 0; x < 60; ++x) {
      const bool inside = x >= 15 && x < 36 && y >= 4 && y < 11;
      ASSERT_EQ(inside ? 77 : 0, target[60 * y + x]) << x << ", " << y;
    }
  }
}

TEST(StretchRgb, TheBandsOfAGrayFitStayUnpainted) {
  const Bytes source(100, 77);
  Bytes target(100, 9);
  const RECT to{2, 2, 8, 8};
  StretchRgb(target.data(), 10, 10, &to, 10, 8, 1, source.data(), 10, 10, nullptr, 10, 8, 1, 1, 1);
  EXPECT_EQ(9, target[0]);
  EXPECT_EQ(77, target[22]);
  EXPECT_EQ(9, target[99]);
}

TEST(StretchRgb, WithoutTheFitFlagOrARectangleNoBandIsPainted) {
  const Bytes source(30 * 30 * 3, 77);
  Bytes target(20 * 16 * 3, 9);
  const RECT to{5, 4, 12, 11};
  StretchRgb(target.data(), 20, 16, &to, 60, 24, 1, source.data(), 30, 30, nullptr, 90, 24, 1, 0,
             SCALE_AREA);
  EXPECT_EQ(9, target[0]);
  StretchRgb(target.data(), 20, 16, nullptr, 60, 24, 1, source.data(), 0, 30, nullptr, 90, 24, 1, 1,
             SCALE_AREA);
  EXPECT_EQ(9, target[0]);
}

TEST(StretchRgb, BandsOfATurnedOverFitWalkUpFromTheStartOfTheBuffer) {
  // The picture lands right, mirrored within its rectangle; of the bands only row 0 is in memory.
  const Bytes source(30 * 30 * 3, 77);
  GuardedPicture target(20, 16, 60, 3, GuardedMemory::Edge::kStart, 11);
  std::fill_n(target.data(), target.size(), 9);
  const RECT to{5, 4, 12, 11};
  StretchRgb(target.data(), 20, 16, &to, 60, 24, 0, source.data(), 30, 30, nullptr, 90, 24, 1, 1,
             SCALE_AREA);
  for (int y = 0; y < 16; ++y) {
    for (int x = 0; x < 60; ++x) {
      const bool inside = x >= 15 && x < 36 && y >= 4 && y < 11;
      ASSERT_EQ(inside ? 77 : y == 0 ? 0 : 9, target.data()[60 * y + x]) << x << ", " << y;
    }
  }
  // With the rectangle at the top there is no top band, and the sides begin at row 0.
  std::fill_n(target.data(), target.size(), 9);
  const RECT top{5, 0, 12, 11};
  StretchRgb(target.data(), 20, 16, &top, 60, 24, 0, source.data(), 30, 30, nullptr, 90, 24, 1, 1,
             SCALE_AREA);
  for (int x = 0; x < 60; ++x) {
    EXPECT_EQ(x >= 15 && x < 36 ? 77 : 0, target.data()[x]) << x;
    EXPECT_EQ(x >= 15 && x < 36 ? 77 : 9, target.data()[60 + x]) << x;
  }
}

TEST(StretchRgb, RefusedMemoryStillPaintsTheBands) {
  const Bytes source(30 * 30 * 3, 77);
  Bytes target(20 * 16 * 3, 9);
  const RECT to{5, 4, 12, 11};
  RefuseAllocation(1);
  EXPECT_EQ(1u, StretchRgb(target.data(), 20, 16, &to, 60, 24, 1, source.data(), 30, 30, nullptr,
                           90, 24, 1, 1, SCALE_AREA));
  RefuseAllocation(0);
  EXPECT_EQ(0, target[0]);
  EXPECT_EQ(9, target[60 * 5 + 20]);
}

}  // namespace
}  // namespace zor::test
