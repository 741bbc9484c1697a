// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "scale/stretch.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/memory.h"
#include "scale/scale_cases.h"
#include "scale/scale_picture.h"
#include "surface/fill.h"

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

// --- Planar ------------------------------------------------------------------------------------

std::size_t PlanarBytes(int stride, int height) {
  return static_cast<std::size_t>(stride) * static_cast<std::size_t>(height) * 3 / 2;
}

struct Planar {
  Planar(int width, int height, int stride, std::uint64_t seed, unsigned edge)
      : width(width),
        height(height),
        stride(stride),
        memory(PlanarBytes(stride, height), EdgeOf(edge)) {
    Noise(seed).Fill(memory.data(), memory.size());
  }
  int width, height, stride;
  GuardedMemory memory;
};

void ExpectPlanar(Planar& target, const RECT* to, Planar& source, const RECT* from,
                  ScaleMode mode) {
  static const std::vector<VectorLevel> levels = LevelsAtHand();
  const Bytes targetBefore = target.memory.Copy();
  const Bytes sourceBefore = source.memory.Copy();
  Bytes expected = targetBefore;
  Bytes expectedSource = sourceBefore;
  int fromWords[4], toWords[4];
  for (const auto& [rect, words] : {std::pair{from, fromWords}, std::pair{to, toWords}}) {
    if (rect == nullptr) continue;
    words[0] = static_cast<int>(rect->left);
    words[1] = static_cast<int>(rect->top);
    words[2] = static_cast<int>(rect->right);
    words[3] = static_cast<int>(rect->bottom);
  }
  RefYuv420(expectedSource.data(), source.width, source.height, source.stride,
            from == nullptr ? nullptr : fromWords, expected.data(), target.width, target.height,
            target.stride, to == nullptr ? nullptr : toWords, mode);
  for (const VectorLevel level : levels) {
    const PinnedLevel pinned(level);
    std::copy(targetBefore.begin(), targetBefore.end(), target.memory.data());
    std::copy(sourceBefore.begin(), sourceBefore.end(), source.memory.data());
    ASSERT_EQ(1u, StretchYuv420(source.memory.data(), source.width, source.height, source.stride,
                                from, target.memory.data(), target.width, target.height,
                                target.stride, to, 0, mode, 0));
    ASSERT_EQ(expected, target.memory.Copy())
        << source.width << "x" << source.height << " (" << source.stride << ") to " << target.width
        << "x" << target.height << " (" << target.stride << "), mode " << mode;
    ASSERT_EQ(expectedSource, source.memory.Copy());
    ASSERT_TRUE(target.memory.GuardsIntact() && source.memory.GuardsIntact());
  }
}

TEST(StretchYuv420, NullPixelsReturnZero) {
  std::uint8_t byte = 5;
  EXPECT_EQ(0u, StretchYuv420(nullptr, 1, 1, 1, nullptr, &byte, 1, 1, 1, nullptr, 0, 0, 0));
  EXPECT_EQ(0u, StretchYuv420(&byte, 1, 1, 1, nullptr, nullptr, 1, 1, 1, nullptr, 0, 0, 0));
}

TEST(StretchYuv420, EverySmallSizeAndModeMatchesTheStatement) {
  Noise noise(12);
  for (int sw = 1; sw <= 40; ++sw) {
    for (int dw = 1 + sw % 2; dw <= 40; dw += 3) {
      const unsigned n = noise.Next();
      Planar source(sw, noise.Range(1, 12), sw + noise.Range(0, 3), n, n);
      Planar target(dw, noise.Range(1, 12), dw + noise.Range(0, 3), n + 1, n >> 1);
      for (const ScaleMode mode : kAllModes) {
        ExpectPlanar(target, nullptr, source, nullptr, mode);
        if (HasFatalFailure()) return;
      }
    }
  }
}

TEST(StretchYuv420, EqualSizesWithAnyStrides) {
  Noise noise(13);
  for (int round = 0; round < 60; ++round) {
    const int width = noise.Range(1, 20), height = noise.Range(1, 9);
    const unsigned n = noise.Next();
    Planar source(width, height, width + noise.Range(0, 9), n, n);
    Planar target(width, height, width + noise.Range(0, 9), n + 1, n >> 1);
    for (const ScaleMode mode : kAllModes) {
      ExpectPlanar(target, nullptr, source, nullptr, mode);
      if (HasFatalFailure()) return;
    }
  }
}

TEST(StretchYuv420, RectanglesAreHalvedAndTheirSizesMadeEven) {
  Noise noise(14);
  for (int round = 0; round < 150; ++round) {
    const int sw = noise.Range(8, 40), sh = noise.Range(8, 18);
    const int dw = noise.Range(8, 40), dh = noise.Range(8, 18);
    const unsigned n = noise.Next();
    Planar source(sw, sh, sw + noise.Range(0, 4), n, n);
    Planar target(dw, dh, dw + noise.Range(0, 4), n + 1, n >> 1);
    const int sl = noise.Range(0, sw - 2), st = noise.Range(0, sh - 2);
    const int dl = noise.Range(0, dw - 2), dt = noise.Range(0, dh - 2);
    const RECT from{sl, st, noise.Range(sl, sw), noise.Range(st, sh)};
    const RECT to{dl, dt, noise.Range(dl, dw), noise.Range(dt, dh)};
    for (const ScaleMode mode : kAllModes) {
      ExpectPlanar(target, &to, source, &from, mode);
      if (HasFatalFailure()) return;
    }
  }
}

TEST(StretchYuv420, LargerPicturesMatchTheStatement) {
  const int shapes[][4] = {{320, 40, 214, 28},
                           {214, 27, 320, 41},
                           {333, 33, 222, 22},
                           {640, 24, 320, 12},
                           {160, 20, 320, 40}};
  unsigned n = 0;
  for (const auto& s : shapes) {
    ++n;
    Planar source(s[0], s[1], s[0], n, n);
    Planar target(s[2], s[3], s[2] + 2, n + 70, n);
    for (const ScaleMode mode : kAllModes) {
      ExpectPlanar(target, nullptr, source, nullptr, mode);
      if (HasFatalFailure()) return;
    }
  }
}

TEST(StretchYuv420, SourceAndTargetPlanesStartByTheirOwnFormulas) {
  // Stride 6 and height 5: the second chroma plane starts 2 x 3 behind the first in a source, and
  // (3 x 5) / 2 = 7 behind it in a target.
  Bytes source(45, 0);
  source[30] = 11;
  source[36] = 22;
  Bytes target(45, 9);
  StretchYuv420(source.data(), 6, 5, 6, nullptr, target.data(), 6, 5, 6, nullptr, 0, SCALE_BILINEAR,
                0);
  EXPECT_EQ(11, target[30]);
  EXPECT_EQ(0, target[36 - 1]);
  EXPECT_EQ(9, target[36]);
  EXPECT_EQ(22, target[37]);
}

TEST(StretchYuv420, AreaWithASourceThatIsNotLargerIsBilinearOnAllPlanes) {
  for (const int dh : {8, 12, 20}) {
    Bytes source = Noise(15).Bytes(PlanarBytes(20, 12));
    Bytes bilinear(PlanarBytes(dh == 8 ? 20 : 14, dh), 9);
    Bytes area = bilinear;
    const int dw = dh == 8 ? 20 : 14;
    StretchYuv420(source.data(), 20, 12, 20, nullptr, bilinear.data(), dw, dh, dw, nullptr, 0,
                  SCALE_BILINEAR, 0);
    StretchYuv420(source.data(), 20, 12, 20, nullptr, area.data(), dw, dh, dw, nullptr, 0,
                  SCALE_AREA, 0);
    EXPECT_EQ(bilinear, area);
  }
}

TEST(StretchYuv420, AWidthOfThreeMakesChromaNearestWhileLumaStaysBilinear) {
  // Chroma of 3 x 8 is 1 x 4; to 6 x 8 that is 3 x 4, a column of its own for every row.
  Bytes source(36, 0);
  const std::uint8_t luma[] = {0, 100, 200};
  for (int y = 0; y < 8; ++y) std::copy(luma, luma + 3, source.begin() + 3 * y);
  for (int i = 0; i < 12; ++i) source[24 + i] = static_cast<std::uint8_t>(50 + 10 * i);
  Bytes target(72, 9);
  StretchYuv420(source.data(), 3, 8, 3, nullptr, target.data(), 6, 8, 6, nullptr, 0, SCALE_BILINEAR,
                0);
  EXPECT_EQ(0, target[0]);
  EXPECT_EQ(25, target[1]);  // position 0.25: weight 64 of 256
  for (int y = 0; y < 4; ++y) {
    for (int x = 0; x < 3; ++x) EXPECT_EQ(50 + 10 * y, target[48 + 3 * y + x]);
  }
}

TEST(StretchYuv420, AFlatSourceIsNotSharpened) {
  Bytes source(PlanarBytes(20, 12), 90);
  const Bytes before = source;
  Bytes target(PlanarBytes(14, 8), 9);
  StretchYuv420(source.data(), 20, 12, 20, nullptr, target.data(), 14, 8, 14, nullptr, 0,
                SCALE_PLANAR_SHARPEN, 0);
  EXPECT_EQ(before, source);
  EXPECT_EQ(Bytes(target.size(), 90), target);
}

TEST(StretchYuv420, SharpenChangesTheLumaOfItsSourceAndNothingElse) {
  Bytes source = Noise(16).Bytes(PlanarBytes(20, 12));
  Bytes expected = source;
  RefSharpen(expected.data(), 20, 12, 20);
  Bytes target(PlanarBytes(14, 8), 9);
  ASSERT_NE(expected, source);
  StretchYuv420(source.data(), 20, 12, 20, nullptr, target.data(), 14, 8, 14, nullptr, 0,
                SCALE_PLANAR_SHARPEN, 0);
  EXPECT_EQ(expected, source);
}

TEST(StretchYuv420, PlanarAreaWalksTheSecondChromaPlaneByItsHalfWidth) {
  // Rows of 8 pixels in a stride of 16: chroma rows of 4 in 8. The first plane's rows differ, and
  // in the second the walk takes row 0's padding for row 1.
  Bytes source(PlanarBytes(16, 4), 0);
  std::uint8_t* first = source.data() + 64;
  std::uint8_t* second = first + 16;
  std::fill_n(first, 4, 100);
  std::fill_n(first + 8, 4, 200);
  std::fill_n(second, 4, 100);
  std::fill_n(second + 4, 4, 50);
  std::fill_n(second + 8, 4, 200);
  Bytes target(PlanarBytes(4, 2), 9);
  StretchYuv420(source.data(), 8, 4, 16, nullptr, target.data(), 4, 2, 4, nullptr, 0,
                SCALE_PLANAR_AREA, 0);
  EXPECT_EQ(150, target[8]);
  EXPECT_EQ(150, target[9]);
  EXPECT_EQ(75, target[10]);
  EXPECT_EQ(75, target[11]);
}

TEST(StretchYuv420, PlanarModesAtEqualSizesWalkTheTargetsChromaByTheSourcesHalfStride) {
  // Source stride 8, target stride 16: target chroma rows of 4 stand 4 apart instead of 8.
  Bytes source(PlanarBytes(8, 4));
  for (std::size_t i = 0; i < source.size(); ++i) source[i] = static_cast<std::uint8_t>(i);
  Bytes target(PlanarBytes(16, 4), 9);
  StretchYuv420(source.data(), 8, 4, 8, nullptr, target.data(), 8, 4, 16, nullptr, 0,
                SCALE_PLANAR_NEAREST, 0);
  for (int i = 0; i < 8; ++i) {
    EXPECT_EQ(32 + i, target[64 + i]) << i;
    EXPECT_EQ(40 + i, target[80 + i]) << i;
    EXPECT_EQ(9, target[72 + i]) << i;
  }
}

TEST(StretchYuv420, PlanarModesAtEqualSizesWriteOnlyInsideTheTargetsPlanes) {
  Bytes source = Noise(17).Bytes(PlanarBytes(32, 6));
  for (const GuardedMemory::Edge edge : {GuardedMemory::Edge::kEnd, GuardedMemory::Edge::kStart}) {
    GuardedMemory target(PlanarBytes(8, 6), edge, 9);
    StretchYuv420(source.data(), 8, 6, 32, nullptr, target.data(), 8, 6, 8, nullptr, 0,
                  SCALE_PLANAR_AREA, 0);
    EXPECT_TRUE(target.GuardsIntact());
    EXPECT_EQ(source[32 * 6], target.data()[48]);
  }
}

TEST(StretchYuv420, AreaCopiesChromaPlanesOfEqualSize) {
  // 5 x 5 to 4 x 4: chroma is 2 x 2 on both sides and passes as a block.
  Bytes source(PlanarBytes(5, 5) + 1);
  for (std::size_t i = 0; i < source.size(); ++i) source[i] = static_cast<std::uint8_t>(i);
  GuardedMemory target(PlanarBytes(4, 4), GuardedMemory::Edge::kEnd, 9);
  StretchYuv420(source.data(), 5, 5, 5, nullptr, target.data(), 4, 4, 4, nullptr, 0, SCALE_AREA, 0);
  for (int i = 0; i < 8; ++i) EXPECT_EQ(25 + i, target.data()[16 + i]) << i;
}

TEST(StretchYuv420, ModesBeyondTheListAreBilinearOnPlanes) {
  Bytes source = Noise(18).Bytes(PlanarBytes(20, 12));
  Bytes bilinear(PlanarBytes(14, 8), 9);
  StretchYuv420(source.data(), 20, 12, 20, nullptr, bilinear.data(), 14, 8, 14, nullptr, 0,
                SCALE_BILINEAR, 0);
  for (const ScaleMode mode : {7u, 0xFF03u, 0xFFFFFFFFu}) {
    Bytes target(bilinear.size(), 9);
    StretchYuv420(source.data(), 20, 12, 20, nullptr, target.data(), 14, 8, 14, nullptr, 0, mode,
                  0);
    EXPECT_EQ(bilinear, target) << mode;
  }
}

TEST(StretchYuv420, AWorkingSizeOfNothingDoesNothing) {
  Bytes source = Noise(19).Bytes(PlanarBytes(20, 12));
  const Bytes before = source;
  Bytes target(PlanarBytes(14, 8), 9);
  const RECT thin{3, 3, 4, 9};
  const RECT crossed{9, 9, 3, 3};
  for (const RECT* rect : {&thin, &crossed}) {
    for (const ScaleMode mode : kAllModes) {
      StretchYuv420(source.data(), 20, 12, 20, rect, target.data(), 14, 8, 14, nullptr, 0, mode, 0);
      StretchYuv420(source.data(), 20, 12, 20, nullptr, target.data(), 14, 8, 14, rect, 0, mode, 0);
    }
  }
  EXPECT_EQ(before, source);
  EXPECT_EQ(Bytes(target.size(), 9), target);
}

TEST(StretchYuv420, AFitPaintsItsBandsWithTheBandColour) {
  Bytes source = Noise(20).Bytes(PlanarBytes(20, 12));
  const RECT to{4, 2, 12, 6};
  Bytes target(PlanarBytes(16, 8), 9);
  Bytes expected = target;
  StretchYuv420(source.data(), 20, 12, 20, nullptr, expected.data(), 16, 8, 16, &to, 0, 1, 0);
  const RECT bands[] = {{0, 0, 16, 2}, {0, 6, 16, 8}, {0, 2, 4, 6}, {12, 2, 16, 6}};
  for (const RECT& band : bands) FillRectYuv420(expected.data(), 16, 8, 16, &band, 0x123456);
  StretchYuv420(source.data(), 20, 12, 20, nullptr, target.data(), 16, 8, 16, &to, 1, 1, 0x123456);
  EXPECT_EQ(expected, target);
  EXPECT_NE(9, target[0]);
  EXPECT_EQ(target[0], target[16 * 7 + 15]);
}

TEST(StretchYuv420, RefusedMemoryLeavesAPlaneAsItWas) {
  Bytes source = Noise(21).Bytes(PlanarBytes(20, 12));
  const Bytes sourceBefore = source;
  for (const ScaleMode mode : kAllModes) {
    Bytes target(PlanarBytes(14, 8), 9);
    RefuseAllocation(1);
    EXPECT_EQ(1u, StretchYuv420(source.data(), 20, 12, 20, nullptr, target.data(), 14, 8, 14,
                                nullptr, 0, mode, 0));
    RefuseAllocation(0);
    EXPECT_EQ(Bytes(14 * 8, 9), Bytes(target.begin(), target.begin() + 14 * 8)) << mode;
    source = sourceBefore;
  }
  EXPECT_EQ(0, LiveAllocations());
}

// --- Packed ------------------------------------------------------------------------------------

TEST(StretchYuy2, NullPixelsReturnZero) {
  std::uint8_t bytes[8] = {};
  EXPECT_EQ(0u, StretchYuy2(nullptr, 2, 2, 4, nullptr, bytes, 2, 2, 4, nullptr, 0, 0, 0));
  EXPECT_EQ(0u, StretchYuy2(bytes, 2, 2, 4, nullptr, nullptr, 2, 2, 4, nullptr, 0, 0, 0));
}

TEST(StretchYuy2, EveryModeIsTheSameBilinear) {
  const Bytes source = Noise(22).Bytes(40 * 10);
  Bytes expected(30 * 8, 9);
  RefYuy2({expected.data(), 14, 8, 30}, {source.data(), 20, 10, 40, 2});
  for (const ScaleMode mode : {0u, 1u, 3u, 5u, 6u, 7u, 0xFF01u, 0xFFFFu}) {
    Bytes target(30 * 8, 9);
    EXPECT_EQ(1u, StretchYuy2(source.data(), 20, 10, 40, nullptr, target.data(), 15, 8, 30, nullptr,
                              0, mode, 0));
    EXPECT_EQ(expected, target) << mode;
  }
}

TEST(StretchYuy2, OddWorkingSizesLoseTheirLastRowAndColumn) {
  const Bytes source = Noise(23).Bytes(42 * 11);
  Bytes expected(30 * 9, 9);
  RefYuy2({expected.data(), 14, 8, 30}, {source.data(), 20, 10, 42, 2});
  Bytes target(30 * 9, 9);
  StretchYuy2(source.data(), 21, 11, 42, nullptr, target.data(), 15, 9, 30, nullptr, 0, 1, 0);
  EXPECT_EQ(expected, target);
}

TEST(StretchYuy2, AnOddLeftEdgeLandsOnTheOtherChromaPhase) {
  const Bytes source = Noise(24).Bytes(40 * 10);
  const RECT from{3, 1, 12, 8};
  const RECT to{5, 2, 14, 7};
  Bytes target(32 * 9, 9);
  Bytes expected = target;
  RefYuy2({expected.data() + 2 * 32 + 10, 8, 4, 32}, {source.data() + 40 + 6, 8, 6, 40, 2});
  StretchYuy2(source.data(), 20, 10, 40, &from, target.data(), 16, 9, 32, &to, 0, 1, 0);
  EXPECT_EQ(expected, target);
}

TEST(StretchYuy2, TheBandsOfAFitAllStartAtThePicturesFirstByte) {
  const Bytes source = Noise(25).Bytes(40 * 10);
  const RECT to{4, 2, 12, 6};
  Bytes target(32 * 8, 9);
  Bytes expected = target;
  StretchYuy2(source.data(), 20, 10, 40, nullptr, expected.data(), 16, 8, 32, &to, 0, 1, 0);
  const RECT bands[] = {{0, 0, 16, 2}, {0, 6, 16, 8}, {0, 2, 4, 6}, {12, 2, 16, 6}};
  for (const RECT& band : bands) FillRectPacked422(expected.data(), 16, 8, 32, &band, 0x445566);
  StretchYuy2(source.data(), 20, 10, 40, nullptr, target.data(), 16, 8, 32, &to, 1, 1, 0x445566);
  EXPECT_EQ(expected, target);
  EXPECT_NE(9, target[0]);
  EXPECT_EQ(9, target[32 * 7]);
}

}  // namespace
}  // namespace zor::test
