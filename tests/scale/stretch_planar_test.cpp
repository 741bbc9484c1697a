// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "scale/stretch.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/memory.h"
#include "scale/scale_cases.h"
#include "surface/fill.h"

namespace zor::test {
namespace {

using Bytes = std::vector<std::uint8_t>;
constexpr ScaleMode kAllModes[] = {0, 1, 2, 3, 4, 5, 6, 0xFF00, 0xFF01, 0xFF02};

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
    const PinnedVectorLevel pinned(level);
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

TEST(StretchYuv420, EqualSizesWithAnyStridesMatchTheStatement) {
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

TEST(StretchYuv420, PlanarModesAtEqualSizesRunFromTheFirstChromaPlaneIntoTheSecond) {
  // Source stride 8, target stride 4: target chroma rows of 2 stand 4 apart instead of 2. Row 1 of
  // the first plane lands where row 0 of the second one stands, and after it; row 1 of the second
  // would land behind the picture.
  Bytes source(PlanarBytes(8, 4));
  for (std::size_t i = 0; i < source.size(); ++i) source[i] = static_cast<std::uint8_t>(i);
  GuardedMemory target(PlanarBytes(4, 4), GuardedMemory::Edge::kEnd, 9);
  const Bytes before = target.Copy();
  StretchYuv420(source.data(), 4, 4, 8, nullptr, target.data(), 4, 4, 4, nullptr, 0,
                SCALE_PLANAR_NEAREST, 0);
  const Bytes after = target.Copy();
  for (std::size_t i = 0; i < 2; ++i) {
    EXPECT_EQ(32 + i, after[16 + i]);
    EXPECT_EQ(before[18 + i], after[18 + i]);
    EXPECT_EQ(36 + i, after[20 + i]);
    EXPECT_EQ(before[22 + i], after[22 + i]);
  }
  EXPECT_TRUE(target.GuardsIntact());
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
