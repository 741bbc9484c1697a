// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

/// @file
/// The peculiarities of the routes, with results worked out by hand, and the entry for rectangles.

#include <gtest/gtest.h>

#include "platform/memory.h"
#include "scale/rgb_cases.h"
#include "scale/stretch.h"

namespace zor::test {
namespace {

using Bytes = std::vector<std::uint8_t>;

int Lerp256(int a, int b, int weight) {
  return (a * 256 + (b - a) * weight - ((b - a) * weight % 256 + 256) % 256) / 256;
}

/// A picture without margins of pixels (10 x + y, 100 + 10 x + y, 200 - 10 x - y, 77).
struct Ramp {
  static int At(int x, int y, int k) {
    const int v = 10 * x + y;
    return k == 0 ? v : k == 1 ? 100 + v : k == 2 ? 200 - v : 77;
  }
  static void Fill(RgbRectangle& picture) {
    for (int y = 0; y < picture.height; ++y) {
      for (int x = 0; x < picture.width; ++x) {
        for (int k = 0; k < picture.channels; ++k) {
          picture.data()[y * picture.stride + x * picture.channels + k] =
              static_cast<std::uint8_t>(At(x, y, k));
        }
      }
    }
  }
};

/// One scaling of a ramp.
class Scaled {
 public:
  Scaled(const RgbPair& pair, int sw, int sh, int dw, int dh, ScaleMode mode,
         std::uint32_t background = 0, const RgbRefAxes* axes = nullptr)
      : target_(dw, dh, pair.to, {}, GuardedMemory::Edge::kEnd, 1) {
    RgbRectangle source(sw, sh, pair.from, {}, GuardedMemory::Edge::kEnd, 2);
    Ramp::Fill(source);
    std::fill_n(target_.data(), dh * target_.stride, std::uint8_t{9});
    const RgbRefAxes a = axes != nullptr ? *axes : WholeAxes(target_, source);
    ScalePicture(target_.Target(false), source.Source(), {a.startX, a.stepX, a.startY, a.stepY},
                 mode, &background);
  }
  int At(int x, int y, int k) {
    return target_.data()[y * target_.stride + x * target_.channels + k];
  }
  Bytes Copy() const { return target_.Copy(); }

 private:
  RgbRectangle target_;
};

TEST(RgbEdges, TheCopyOfThreeToThreeRepeatsTheFirstByte) {
  Scaled out({3, 3}, 4, 4, 8, 8, SCALE_BILINEAR);
  // The lower right corner.
  EXPECT_EQ(Ramp::At(3, 3, 0), out.At(7, 7, 0));
  EXPECT_EQ(Ramp::At(3, 3, 0), out.At(7, 7, 1));
  EXPECT_EQ(Ramp::At(3, 3, 1), out.At(7, 7, 2));
}

TEST(RgbEdges, TheCopyOfTheMixedRoutesIsPlain) {
  for (const RgbPair& pair : {RgbPair{3, 4}, RgbPair{4, 3}}) {
    for (const ScaleMode mode : {SCALE_BILINEAR, SCALE_BILINEAR_FADE}) {
      Scaled out(pair, 4, 4, 8, 8, mode);
      for (int k = 0; k < 3; ++k) EXPECT_EQ(Ramp::At(3, 3, k), out.At(7, 7, k));
    }
  }
}

TEST(RgbEdges, FadingRunsOfTheMixedRoutesBlendEveryPixelWithTheTrueBackground) {
  // Doubled, row 0 has half of its weight: a run of the top band, pixel after pixel the same blend.
  const std::uint32_t background = 0x00102030;
  for (const RgbPair& pair : {RgbPair{3, 4}, RgbPair{4, 3}}) {
    Scaled out(pair, 6, 6, 12, 12, SCALE_BILINEAR_FADE, background);
    for (int x = 1; x < 11; ++x) {
      for (int k = 0; k < 3; ++k) {
        const int bg = static_cast<int>((background >> (8 * k)) & 255);
        const int w = x % 2 != 0 ? 64 : 191;
        const int across = Lerp256(Ramp::At((x - 1) / 2, 0, k), Ramp::At((x + 1) / 2, 0, k), w);
        EXPECT_EQ(Lerp256(Lerp256(bg, bg, w), across, 128), out.At(x, 0, k)) << x << ", " << k;
        // Below, row 11 has 127 of 255 and blends towards the background, the missing sample too.
        const int last = Lerp256(Ramp::At((x - 1) / 2, 5, k), Ramp::At((x + 1) / 2, 5, k), w);
        EXPECT_EQ(Lerp256(last, bg, 127), out.At(x, 11, k)) << x << ", " << k;
      }
    }
  }
}

TEST(RgbEdges, DoublingInModeOneRepeatsTheFirstPixel) {
  for (const RgbPair& pair : {RgbPair{3, 4}, RgbPair{4, 3}, RgbPair{4, 4}}) {
    Scaled out(pair, 4, 4, 8, 8, SCALE_BILINEAR);
    for (int k = 0; k < 3; ++k) EXPECT_EQ(Ramp::At(0, 0, k), out.At(0, 0, k));
  }
}

TEST(RgbEdges, DoublingInModeTwoBlendsTheFirstPixelAtOneHundredTwentyEight) {
  const std::uint32_t background = 0xFF806040;
  for (const RgbPair& pair : kRgbPairs) {
    Scaled out(pair, 4, 4, 8, 8, SCALE_BILINEAR_FADE, background);
    for (int k = 0; k < 3; ++k) {
      const int bg = static_cast<int>((background >> (8 * k)) & 255);
      const int p = Ramp::At(0, 0, k);
      // By the product of both weights, or across and then down.
      const int expected = pair.from == pair.to ? Lerp256(bg, p, 128 * 128 >> 8)
                                                : Lerp256(bg, Lerp256(bg, p, 128), 128);
      EXPECT_EQ(expected, out.At(0, 0, k)) << pair.from << " to " << pair.to;
    }
  }
}

TEST(RgbEdges, EqualSizesInModeOneReproduceThePictureButForTheirEdges) {
  for (const RgbPair& pair : kRgbPairs) {
    Scaled out(pair, 7, 6, 7, 6, SCALE_BILINEAR);
    for (int y = 0; y < 6; ++y) {
      for (int x = 0; x < 7; ++x) {
        for (int k = 0; k < 3; ++k) {
          // Three-byte rows give their last but one column away.
          const int from = pair.from == 3 && x == 5 ? 6 : x;
          int expected = Ramp::At(from, y, k);
          const bool lastRow = y == 5;
          if (pair.from == 3 && pair.to == 3 && lastRow && x >= 5) {
            expected = Ramp::At(from, y, k == 2 ? 1 : 0);  // b0 b0 b1
          } else if (pair.from == 4 && pair.to == 4 && lastRow) {
            // Against the background, at the weight of an edge: 255, or 255 x 255 >> 8.
            expected = Lerp256(0, expected, x == 6 ? 254 : 255);
          }
          ASSERT_EQ(expected, out.At(x, y, k))
              << pair.from << " to " << pair.to << " at " << x << ", " << y << ", " << k;
        }
      }
    }
  }
}

TEST(RgbEdges, TheLastColumnAndRowOfThreeToThreeInModeOneAreEdgesEvenIfTheirEntriesAreInterior) {
  // 10 to 3: positions 1.166, 4.5, 7.833; the last entry is index 7 with a weight.
  Scaled out({3, 3}, 10, 10, 3, 3, SCALE_BILINEAR);
  // Last column, middle row: down only, from row 4 at 128.
  // First column, last row: across only, from column 1 at trunc(0.1666 x 255 + 0.5) = 43.
  for (int k = 0; k < 3; ++k) {
    EXPECT_EQ(Lerp256(Ramp::At(7, 4, k), Ramp::At(7, 5, k), 128), out.At(2, 1, k));
    EXPECT_EQ(Lerp256(Ramp::At(1, 7, k), Ramp::At(2, 7, k), 43), out.At(0, 2, k));
    EXPECT_EQ(Ramp::At(7, 7, k == 2 ? 1 : 0), out.At(2, 2, k));
  }
}

TEST(RgbEdges, TheClampedLastColumnOfAModeTwoReductionTakesItsWeightForABackgroundShare) {
  const std::uint32_t background = 0x00FF00FF;
  Scaled out({3, 3}, 10, 10, 3, 3, SCALE_BILINEAR_FADE, background);
  // Weight of 7.833: trunc(0.8333 x 255 + 0.5) = 213.
  for (int k = 0; k < 3; ++k) {
    const int bg = static_cast<int>((background >> (8 * k)) & 255);
    const int down = Lerp256(Ramp::At(7, 4, k), Ramp::At(7, 5, k), 128);
    EXPECT_EQ(Lerp256(bg, down, 213), out.At(2, 1, k));
  }
}

TEST(RgbEdges, ThreeToThreeCopiesTheRightCornersOfTheFirstAndTheLastRowOnly) {
  // Started two rows early, two rows are of the top band: the first copies, the second blends.
  const RgbRefAxes axes{-1.0, 1.0, -2.5, 1.0};
  const std::uint32_t background = 0x00FFFFFF;
  Scaled out({3, 3}, 6, 6, 9, 6, SCALE_BILINEAR_FADE, background, &axes);
  EXPECT_EQ(Ramp::At(5, 0, 0), out.At(8, 0, 0));
  EXPECT_EQ(Ramp::At(5, 0, 0), out.At(8, 0, 1));
  EXPECT_EQ(Ramp::At(5, 0, 1), out.At(8, 0, 2));
  for (int k = 0; k < 3; ++k) EXPECT_EQ(255, out.At(8, 1, k));  // no weight at all
}

TEST(RgbEdges, AnOddHeightInModeFiveRepeatsTheRowBeforeTheLast) {
  for (const RgbPair& pair : kRgbPairs) {
    RgbRectangle source(9, 11, pair.from, {}, GuardedMemory::Edge::kEnd, 3);
    RgbRectangle target(9, 7, pair.to, {}, GuardedMemory::Edge::kEnd, 4);
    for (const ScaleMode mode : {SCALE_ROW_PAIRS}) {
      ExpectStated(target, source, WholeAxes(target, source), mode);
      const RgbRefAxes axes = WholeAxes(target, source);
      ScalePicture(target.Target(false), source.Source(), {0, axes.stepX, 0, axes.stepY}, mode,
                   nullptr);
    }
    if (pair.to == 3 && pair.from == 3) continue;  // its last row is always of the bottom band
    EXPECT_TRUE(std::equal(target.data() + 5 * target.stride, target.data() + 6 * target.stride,
                           target.data() + 6 * target.stride));
  }
}

TEST(RgbEdges, ModeSixOfMixedPairsInterpolatesByteByByteOfItsWords) {
  // Step 2: words of -10, so weights 246, 255, 255, 255 on lanes 0 to 3.
  Scaled out({4, 3}, 8, 8, 4, 4, SCALE_AREA);
  for (int k = 0; k < 3; ++k) {
    const int w = k == 0 ? 246 : 255;
    const int above = Lerp256(Ramp::At(2, 2, k), Ramp::At(3, 2, k), w);
    const int below = Lerp256(Ramp::At(2, 3, k), Ramp::At(3, 3, k), w);
    EXPECT_EQ(Lerp256(above, below, w), out.At(1, 1, k));
  }
}

TEST(RgbEdges, ARepackAtEqualWidthSetsTheFourthByteAndNearestOtherwiseClearsIt) {
  Scaled repack({3, 4}, 6, 6, 6, 4, SCALE_NEAREST);
  Scaled nearest({3, 4}, 6, 6, 5, 4, SCALE_NEAREST);
  Scaled bilinear({3, 4}, 6, 6, 6, 4, SCALE_BILINEAR);
  for (int y = 0; y < 4; ++y) {
    EXPECT_EQ(255, repack.At(3, y, 3));
    EXPECT_EQ(0, nearest.At(3, y, 3));
    EXPECT_EQ(0, bilinear.At(3, y, 3));
  }
}

TEST(RgbEdges, AWidthOrHeightOfOneOnAnySideIsNearestInEveryMode) {
  const int sizes[][4] = {{1, 6, 9, 8}, {7, 1, 9, 8}, {7, 6, 1, 8}, {7, 6, 9, 1}, {1, 1, 1, 1}};
  for (const RgbPair& pair : kRgbPairs) {
    for (const auto& s : sizes) {
      const Bytes nearest = Scaled(pair, s[2], s[3], s[0], s[1], SCALE_NEAREST).Copy();
      for (const ScaleMode mode : {1u, 2u, 3u, 4u, 5u, 6u}) {
        EXPECT_EQ(nearest, Scaled(pair, s[2], s[3], s[0], s[1], mode).Copy()) << mode;
      }
    }
  }
}

TEST(RgbEdges, BoxAtOneAndAHalfByThreeInterpolates) {
  for (const RgbPair& pair : kRgbPairs) {
    for (const auto& s : {RgbPair{20, 10}, RgbPair{10, 20}}) {
      EXPECT_EQ(Scaled(pair, 30, 30, s.from, s.to, SCALE_BILINEAR).Copy(),
                Scaled(pair, 30, 30, s.from, s.to, SCALE_BOX).Copy());
      EXPECT_EQ(Scaled(pair, 30, 30, s.from, s.to, SCALE_BILINEAR_FADE).Copy(),
                Scaled(pair, 30, 30, s.from, s.to, SCALE_BOX_FADE).Copy());
    }
  }
}

TEST(RgbEdges, RefusedMemoryLeavesTheTargetAsItWas) {
  for (const RgbPair& pair : kRgbPairs) {
    for (const ScaleMode mode : {0u, 1u, 2u, 3u, 4u, 5u, 6u}) {
      RefuseAllocation(0);
      const Bytes drawn = Scaled(pair, 30, 30, 10, 10, mode).Copy();
      const std::uint64_t requests = CountAllocations();
      EXPECT_GT(requests, 0u);
      for (std::uint64_t k = 1; k <= requests; ++k) {
        RefuseAllocation(k);
        EXPECT_EQ(Bytes(drawn.size(), 9), Scaled(pair, 30, 30, 10, 10, mode).Copy())
            << "mode " << mode << ", request " << k;
      }
      RefuseAllocation(0);
      EXPECT_NE(Bytes(drawn.size(), 9), drawn);
    }
  }
}

// --- Rectangles ------------------------------------------------------------------------

RECT Rect(int left, int top, int right, int bottom) {
  return RECT{left, top, right, bottom};
}

TEST(StretchColour, RectanglesOfBothPicturesMatchTheStatementInEveryModeAndOrientation) {
  Noise noise(41);
  for (int round = 0; round < 400; ++round) {
    for (const RgbPair& pair : kRgbPairs) {
      const unsigned n = noise.Next();
      const Margins from = Margins::Some(noise), to = Margins::Some(noise);
      RgbRectangle source(noise.Range(1, 40), noise.Range(1, 30), pair.from, from, EdgeOf(n), n);
      RgbRectangle target(noise.Range(1, 20), noise.Range(1, 14), pair.to, to, EdgeOf(n >> 1), n);
      const auto mode = static_cast<ScaleMode>(noise.Range(0, 6));
      if (IsExactArea(target, source, mode)) continue;
      const std::uint32_t towards = n >> 3 & 1, came = n >> 4 & 1;
      const bool turnedOver = towards != came;
      const Bytes expected = Stated(target, source, WholeAxes(target, source), mode, turnedOver, 0);
      const int tw = to.left + target.width + to.right, th = to.top + target.height + to.bottom;
      const int sw = from.left + source.width + from.right;
      const int sh = from.top + source.height + from.bottom;
      const RECT toRect = Rect(to.left, to.top, to.left + target.width, to.top + target.height);
      const RECT fromRect =
          Rect(from.left, from.top, from.left + source.width, from.top + source.height);
      EXPECT_EQ(
          1u, StretchRgb(target.data(), static_cast<std::uint32_t>(tw), th, &toRect, target.stride,
                         8 * pair.to, towards, source.data(), static_cast<std::uint32_t>(sw), sh,
                         &fromRect, source.stride, 8 * pair.from, came, 0, mode));
      ASSERT_TRUE(expected == target.Copy())
          << pair.from << " to " << pair.to << ", mode " << mode << ", turned over " << turnedOver
          << ": " << FirstDifference(expected, target.Copy(), target);
      ASSERT_TRUE(target.GuardsIntact() && source.GuardsIntact());
    }
  }
}

TEST(StretchColour, AFourthByteSpillsIntoThePixelRightOfTheRectangle) {
  // 4 to 3 in mode 2: the right edge's value has a fourth lane, the source's alpha.
  Bytes source(4 * 4 * 4);
  for (std::size_t i = 0; i < source.size(); ++i) source[i] = i % 4 == 3 ? 200 : 50;
  Bytes target(6 * 4 * 3, 9);
  const RECT to = Rect(1, 0, 5, 4);
  StretchRgb(target.data(), 6, 4, &to, 18, 24, 1, source.data(), 4, 4, nullptr, 16, 32, 1, 0,
             SCALE_BILINEAR_FADE);
  for (int y = 0; y < 4; ++y) {
    const auto at = static_cast<std::size_t>(18 * y + 15);
    // Inner rows blend 255 - 0 of alpha: lerp(200, 0, 255) = 0; the last row copies and spills
    // nothing. Row weights are 0 throughout.
    EXPECT_EQ(y == 3 ? 9 : Lerp256(200, 0, 255), target[at]) << y;
    EXPECT_EQ(9, target[at + 1]);
  }
}

TEST(StretchColour, AFitOnAPictureOfTheOtherOrientationLandsRightBetweenFalseBands) {
  for (const RgbPair& pair : kRgbPairs) {
    const Bytes source(static_cast<std::size_t>(12 * 12 * pair.from), 77);
    const int stride = 10 * pair.to;
    Bytes target(static_cast<std::size_t>(8 * stride), 9);
    const RECT to = Rect(2, 3, 8, 7);
    StretchRgb(target.data(), 10, 8, &to, stride, 8 * pair.to, 0, source.data(), 12, 12, nullptr,
               12 * pair.from, 8 * pair.from, 1, 1, SCALE_NEAREST);
    for (int y = 0; y < 8; ++y) {
      for (int x = 0; x < 10; ++x) {
        const bool inside = x >= 2 && x < 8 && y >= 3 && y < 7;
        for (int k = 0; k < 3; ++k) {
          ASSERT_EQ(inside   ? 77
                    : y == 0 ? 0
                             : 9,
                    target[static_cast<std::size_t>(y * stride + x * pair.to + k)])
              << x << ", " << y;
        }
      }
    }
  }
}

}  // namespace
}  // namespace zor::test
