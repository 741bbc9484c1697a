// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include <cstring>

#include "scale/reduction_rows.h"
#include "scale/rgb_cases.h"
#include "scale/rgb_picture.h"

namespace zor::test {
namespace {

// --- Kernels ---------------------------------------------------------------------------

/// Scales by whole steps without the core's look at the ratio, so that boxes of one row or column
/// come about too.
void BoxRoute(RgbRectangle& target, RgbRectangle& source) {
  const std::uint32_t background = 0;
  const RgbRefAxes axes = WholeAxes(target, source);
  ScaleRgb(target.Target(false), source.Source(),
           {axes.startX, axes.stepX, axes.startY, axes.stepY}, SCALE_BOX, &background);
}

/// Averages boxes of one shape and compares each lane with its sum, reduced by the text of the
/// sequence.
void ExpectBoxes(const RgbPair& pair, int rows, int columns, bool white) {
  const int width = 11;
  RgbRectangle source(width * columns, rows, pair.from, {}, GuardedMemory::Edge::kEnd,
                      static_cast<std::uint64_t>(rows * 16 + columns));
  RgbRectangle target(width, 1, pair.to, {}, GuardedMemory::Edge::kEnd, 5);
  const ReductionRow& row = ReductionOf(rows, columns, pair.from, pair.to);
  if (white) std::fill_n(source.data(), rows * source.stride, std::uint8_t{255});
  BoxRoute(target, source);
  for (int x = 0; x < width; ++x) {
    for (int k = 0; k < std::min(pair.from, pair.to); ++k) {
      int sum = 0;
      for (int v = 0; v < rows; ++v) {
        for (int h = 0; h < columns; ++h) {
          sum += source.data()[v * source.stride + (x * columns + h) * pair.from + k];
        }
      }
      int t = row.halve ? sum / 2 : sum;
      int acc = t;
      for (const char* c = row.shifts; *c != 0; ++c) {
        if (*c == ' ') continue;
        t >>= *c - '0';
        acc += t;
      }
      const int average = std::min(255, acc >> row.finalShift);
      ASSERT_EQ(average, target.data()[x * pair.to + k])
          << rows << "x" << columns << ", " << pair.from << " to " << pair.to;
      if (white) {
        ASSERT_EQ(row.white, average) << rows << "x" << columns;
      }
    }
    if (pair.from == 3 && pair.to == 4) {
      ASSERT_EQ(0, target.data()[4 * x + 3]);
    }
  }
}

TEST(BoxKernels, EveryShapeOnEveryRouteAndLevelReducesByItsSequence) {
  for (const VectorLevel level : LevelsAtHand()) {
    const PinnedVectorLevel pinned(level);
    for (const RgbPair& pair : kRgbPairs) {
      // A step of 16 is the plain integer route's; boxes of 16 come of fractions only.
      for (int rows = 1; rows <= 15; ++rows) {
        for (int columns = 1; columns <= 15; ++columns) {
          ExpectBoxes(pair, rows, columns, false);
          ExpectBoxes(pair, rows, columns, true);
          if (HasFatalFailure()) return;
        }
      }
    }
  }
}

TEST(BoxKernels, BoxesOfSixteenComeOfStepsAboveFifteen) {
  // Steps of 15.875 on one axis: boxes of 15 and 16 by every length on the other.
  for (const RgbPair& pair : kRgbPairs) {
    for (int length = 2 * 8; length <= 127; ++length) {
      for (const ScaleMode mode : {SCALE_BOX, SCALE_BOX_FADE}) {
        RgbRectangle wide(127, length, pair.from, {}, GuardedMemory::Edge::kEnd, 3);
        RgbRectangle tall(length, 127, pair.from, {}, GuardedMemory::Edge::kEnd, 3);
        RgbRectangle target(8, 8, pair.to, {}, GuardedMemory::Edge::kStart, 4);
        ExpectStated(target, wide, WholeAxes(target, wide), mode);
        ExpectStated(target, tall, WholeAxes(target, tall), mode);
        if (HasFatalFailure()) return;
      }
    }
  }
}

TEST(BoxKernels, SixteenRowsByAnyColumnsReduceByTheirSequence) {
  // Rows of 15 then 16: the second destination row has boxes of 16 rows.
  for (const RgbPair& pair : kRgbPairs) {
    for (int columns = 1; columns <= 15; ++columns) {
      RgbRectangle source(3 * columns, 31, pair.from, {}, GuardedMemory::Edge::kEnd, 6);
      RgbRectangle target(3, 2, pair.to, {}, GuardedMemory::Edge::kEnd, 7);
      std::fill_n(source.data(), 31 * source.stride, std::uint8_t{255});
      BoxRoute(target, source);
      for (int x = 0; x < 3; ++x) {
        EXPECT_EQ(ReductionOf(15, columns, pair.from, pair.to).white, target.data()[x * pair.to]);
        EXPECT_EQ(ReductionOf(16, columns, pair.from, pair.to).white,
                  target.data()[target.stride + x * pair.to + 1]);
      }
    }
  }
}

// --- Pictures --------------------------------------------------------------------------

std::vector<std::uint8_t> ScaleWhite(const RgbPair& pair, int sw, int sh, int dw, int dh,
                                     ScaleMode mode, std::uint8_t before = 9) {
  RgbRectangle source(sw, sh, pair.from, {}, GuardedMemory::Edge::kEnd, 1);
  RgbRectangle target(dw, dh, pair.to, {}, GuardedMemory::Edge::kEnd, 2);
  std::fill_n(source.data(), sh * source.stride, std::uint8_t{255});
  std::fill_n(target.data(), dh * target.stride, before);
  const RgbRefAxes axes = WholeAxes(target, source);
  ScalePicture(target.Target(false), source.Source(),
               {axes.startX, axes.stepX, axes.startY, axes.stepY}, mode, nullptr);
  return target.Copy();
}

TEST(BoxPictures, ExactlyTwoOnBothAxesTruncatesTheSumOfFour) {
  for (const RgbPair& pair : kRgbPairs) {
    RgbRectangle source(20, 12, pair.from, {}, GuardedMemory::Edge::kEnd, 1);
    RgbRectangle target(10, 6, pair.to, {}, GuardedMemory::Edge::kEnd, 2);
    const RgbRefAxes axes = WholeAxes(target, source);
    ScalePicture(target.Target(false), source.Source(),
                 {axes.startX, axes.stepX, axes.startY, axes.stepY}, SCALE_BOX, nullptr);
    for (int y = 0; y < 6; ++y) {
      for (int x = 0; x < 10; ++x) {
        const std::uint8_t* p = source.data() + 2 * y * source.stride + 2 * x * pair.from;
        const std::uint8_t* q = p + source.stride;
        for (int k = 0; k < 3; ++k) {
          ASSERT_EQ((p[k] + p[k + pair.from] + q[k] + q[k + pair.from]) / 4,
                    target.data()[y * target.stride + x * pair.to + k]);
        }
      }
    }
  }
}

TEST(BoxPictures, WhiteStaysWhiteAtPowersOfTwoOnly) {
  for (const RgbPair& pair : kRgbPairs) {
    EXPECT_EQ(255, ScaleWhite(pair, 32, 16, 8, 8, SCALE_BOX)[0]);    // 4 x 2
    EXPECT_EQ(254, ScaleWhite(pair, 24, 24, 8, 8, SCALE_BOX)[0]);    // 3 x 3
    EXPECT_EQ(254, ScaleWhite(pair, 40, 40, 8, 8, SCALE_BOX)[0]);    // 5 x 5
    EXPECT_EQ(253, ScaleWhite(pair, 104, 104, 8, 8, SCALE_BOX)[0]);  // 13 x 13
    EXPECT_EQ(255, ScaleWhite(pair, 56, 40, 8, 8, SCALE_BOX)[0]);    // 7 across, 5 down
    // 13 across and 3 down: 252 but for 4 to 3.
    const bool whole = pair.from == 4 && pair.to == 3;
    EXPECT_EQ(whole ? 254 : 252, ScaleWhite(pair, 104, 24, 8, 8, SCALE_BOX)[0]);
  }
}

TEST(BoxPictures, FromSixteenOnAveragesAreExact) {
  for (const RgbPair& pair : kRgbPairs) {
    // 15 and 3 lose to the reduction; 16 and 3 don't.
    EXPECT_EQ(254, ScaleWhite(pair, 120, 24, 8, 8, SCALE_BOX)[0]);
    EXPECT_EQ(255, ScaleWhite(pair, 128, 24, 8, 8, SCALE_BOX)[0]);
    EXPECT_EQ(254, ScaleWhite(pair, 24, 127, 8, 8, SCALE_BOX)[0]);
    EXPECT_EQ(255, ScaleWhite(pair, 24, 128, 8, 8, SCALE_BOX)[0]);
  }
}

TEST(BoxPictures, FromSixteenOnEveryColourIsTheTruncatedMeanOfItsBoxOfAnyHeight) {
  // 257 rows of 255 are the most that 16 bits hold.
  struct Box {
    int columns, rows;
  };
  for (const Box box : {Box{16, 16}, Box{33, 2}, Box{5, 19}, Box{17, 257}, Box{3, 258}}) {
    for (const RgbPair& pair : kRgbPairs) {
      for (const bool white : {false, true}) {
        RgbRectangle source(3 * box.columns, 2 * box.rows, pair.from, {1, 1, 2, 1, 3},
                            GuardedMemory::Edge::kEnd, 6);
        RgbRectangle target(3, 2, pair.to, {}, GuardedMemory::Edge::kEnd, 7);
        const std::int64_t size = std::int64_t{source.stride} * (source.height + 2);
        if (white) std::fill_n(source.data(), size, std::uint8_t{255});
        BoxRoute(target, source);
        for (int i = 0; i < 18; ++i) {
          const int x = i % 3, y = i / 3 % 2, colour = i / 6;
          int sum = 0;
          for (int v = 0; v < box.rows; ++v) {
            for (int h = 0; h < box.columns; ++h) {
              const std::int64_t row = source.start + (y * box.rows + v) * source.stride;
              sum += source.data()[row + (x * box.columns + h) * pair.from + colour];
            }
          }
          ASSERT_EQ(sum / (box.rows * box.columns),
                    target.data()[y * target.stride + x * pair.to + colour])
              << box.columns << " x " << box.rows << ", " << pair.from << " to " << pair.to;
        }
        ASSERT_TRUE(target.GuardsIntact() && source.GuardsIntact());
      }
    }
  }
}

TEST(BoxPictures, FromSixteenOnPixelsLieATruePixelApartAndAFourthByteStays) {
  for (const RgbPair& pair : kRgbPairs) {
    for (const ScaleMode mode : {SCALE_BOX, SCALE_BOX_FADE}) {
      const std::vector<std::uint8_t> out = ScaleWhite(pair, 64, 64, 4, 4, mode);
      for (int i = 0; i < 16; ++i) {
        const bool edge = mode == SCALE_BOX_FADE && (i % 4 == 3 || i / 4 == 3);
        for (int k = 0; k < 3; ++k) {
          ASSERT_EQ(edge ? 254 : 255, out[static_cast<std::size_t>(i * pair.to + k)]);
        }
        if (pair.to == 4) {
          ASSERT_EQ(9, out[static_cast<std::size_t>(4 * i + 3)]);
        }
      }
    }
  }
}

TEST(BoxPictures, AFadingEdgeWithoutBackgroundIsDarkenedByOne) {
  // The last column and row pass through the blend: keep is 254, so 1020 x 254 / 4 / 255.
  const std::vector<std::uint8_t> out = ScaleWhite({4, 4}, 12, 8, 6, 4, SCALE_BOX_FADE);
  for (int y = 0; y < 4; ++y) {
    for (int x = 0; x < 6; ++x) {
      EXPECT_EQ(x == 5 || y == 3 ? 254 : 255, out[static_cast<std::size_t>(24 * y + 4 * x)]);
    }
  }
}

TEST(BoxPictures, BoxesFadeToBlackWhateverTheBackground) {
  RgbRectangle source(8, 8, 4, {}, GuardedMemory::Edge::kEnd, 1);
  RgbRectangle target(4, 4, 4, {}, GuardedMemory::Edge::kEnd, 2);
  std::fill_n(source.data(), 8 * 32, std::uint8_t{200});
  const std::uint32_t background = 0xFFFFFFFF;
  // Wholly in front, half in front: 200 x 2 x 4 sums of rows -4..0 | -2..2.
  ScalePicture(target.Target(false), source.Source(), {-6.0, 4.0, 0.0, 2.0}, SCALE_BOX_FADE,
               &background);
  for (int k = 0; k < 3; ++k) {
    EXPECT_EQ(0, target.data()[k]);
    // Share 255 - trunc(2 x 255 / 4 + 0.5) = 127, keep (128 x 255) >> 8 = 127; 200 x 127 / 255.
    EXPECT_EQ(200 * 127 / 255, target.data()[4 + k]);
    EXPECT_EQ(200, target.data()[8 + k]);
  }
}

TEST(BoxPictures, FourToThreeInModeFourLeavesTheRowsFromLastDownOnUntouched) {
  const std::vector<std::uint8_t> below = ScaleWhite({4, 3}, 30, 30, 10, 10, SCALE_BOX_FADE);
  for (int x = 0; x < 30; ++x) {
    EXPECT_NE(9, below[static_cast<std::size_t>(8 * 30 + x)]) << x;
    // The row above may spill into the first byte.
    if (x > 2) {
      EXPECT_EQ(9, below[static_cast<std::size_t>(9 * 30 + x)]) << x;
    }
  }
  // The other routes write them, and so does this one from 16 on.
  EXPECT_NE(9, ScaleWhite({3, 3}, 30, 30, 10, 10, SCALE_BOX_FADE)[9 * 30 + 8]);
  EXPECT_EQ(254, ScaleWhite({4, 3}, 170, 170, 10, 10, SCALE_BOX_FADE)[9 * 30 + 8]);
}

TEST(BoxPictures, BelowSixteenTheFadeOfMixedPairsStepsByTheOtherPixelSize) {
  // The last row of 3 to 4 is all fade: source pixels four bytes apart, destination pixels three.
  RgbRectangle source(12, 4, 3, {}, GuardedMemory::Edge::kEnd, 3);
  RgbRectangle target(4, 2, 4, {}, GuardedMemory::Edge::kEnd, 4);
  std::fill_n(target.data(), 32, std::uint8_t{9});
  const RgbRefAxes axes = WholeAxes(target, source);
  ScalePicture(target.Target(false), source.Source(), {0, axes.stepX, 0, axes.stepY},
               SCALE_BOX_FADE, nullptr);
  for (int x = 0; x < 4; ++x) {
    for (int k = 0; k < 3; ++k) {
      int sum = 0;
      for (int v = 2; v < 4; ++v) {
        for (int h = 0; h < 3; ++h) {
          const int at = v * 36 + x * 9 + h * 4 + k;
          if (at < 4 * 36) sum += source.data()[at];
        }
      }
      EXPECT_EQ(sum * 254 / 6 / 255, target.data()[16 + 3 * x + k]) << x << ", " << k;
    }
  }
  for (int i = 28; i < 32; ++i) EXPECT_EQ(9, target.data()[i]);
}

TEST(BoxPictures, AreaThatIsNotLargerInBothAxesTakesBoxesOfNoPixels) {
  for (const RgbPair& pair : {RgbPair{3, 3}, RgbPair{4, 4}}) {
    // Twice as wide and half as high: counts 0 1 0 1 0 1 across, offsets one place behind.
    RgbRectangle source(3, 8, pair.from, {}, GuardedMemory::Edge::kEnd, 5);
    RgbRectangle target(6, 4, pair.to, {}, GuardedMemory::Edge::kEnd, 6);
    ScalePicture(target.Target(false), source.Source(), {0, 0.5, 0, 2.0}, SCALE_AREA, nullptr);
    // Boxes 0.5-1, 1.5-2, 2.5-3 start at pixels 0, 1, 2; the offsets taken are those of
    // positions 0, 1, 2: pixels 0, 0, 1.
    const int taken[] = {0, 0, 1};
    for (int y = 0; y < 4; ++y) {
      for (int x = 0; x < 6; ++x) {
        for (int k = 0; k < 3; ++k) {
          const std::uint8_t* p = source.data() + 2 * y * source.stride + taken[x / 2] * pair.from;
          const int expected = x % 2 == 0 ? 0 : (p[k] + p[source.stride + k]) / 2;
          ASSERT_EQ(expected, target.data()[y * target.stride + x * pair.to + k]) << x << ", " << y;
        }
      }
    }
    // Twice as high: rows of no pixels stay unwritten.
    RgbRectangle tall(4, 6, pair.to, {}, GuardedMemory::Edge::kEnd, 7);
    RgbRectangle low(8, 3, pair.from, {}, GuardedMemory::Edge::kEnd, 8);
    const std::vector<std::uint8_t> before = tall.Copy();
    ScalePicture(tall.Target(false), low.Source(), {0, 2.0, 0, 0.5}, SCALE_AREA, nullptr);
    for (int y = 0; y < 6; y += 2) {
      // What a row of 3-byte pixels spills lands in the first byte of the next.
      const auto from = static_cast<std::size_t>(y * tall.stride);
      for (int i = y > 0 && pair.to == 3 ? 1 : 0; i < tall.stride; ++i) {
        ASSERT_EQ(before[from + static_cast<std::size_t>(i)],
                  tall.data()[from + static_cast<std::size_t>(i)]);
      }
      ASSERT_NE(0, std::memcmp(before.data() + from + static_cast<std::size_t>(tall.stride),
                               tall.data() + from + static_cast<std::size_t>(tall.stride),
                               static_cast<std::size_t>(tall.stride)));
    }
  }
}

TEST(BoxPictures, TheVeryLastPixelOfAThreeByteSourceIsReadWithinItsMemory) {
  // The byte behind it is the first of a page without access; it counts as 0 in what spills.
  for (const VectorLevel level : LevelsAtHand()) {
    const PinnedVectorLevel pinned(level);
    RgbRectangle source(4, 4, 3, {}, GuardedMemory::Edge::kEnd, 9);
    RgbRectangle target(2, 2, 3, {0, 0, 1, 0, 0}, GuardedMemory::Edge::kStart, 10);
    ScalePicture(target.Target(false), source.Source(), {0, 2, 0, 2}, SCALE_BOX, nullptr);
    const std::uint8_t* p = source.data();
    // First bytes of pixels 3 and behind of the rows 2 and 3; nothing follows the last.
    EXPECT_EQ((p[24 + 9] + p[36] + p[36 + 9]) / 4, target.data()[9 + 6]);
  }
}

TEST(BoxPictures, AnAverageSpillsItsFourthLaneBehindTheRow) {
  RgbRectangle source(4, 4, 4, {}, GuardedMemory::Edge::kEnd, 11);
  RgbRectangle target(2, 2, 3, {1, 0, 1, 0, 0}, GuardedMemory::Edge::kEnd, 12);
  ScalePicture(target.Target(false), source.Source(), {0, 2, 0, 2}, SCALE_BOX, nullptr);
  const std::uint8_t* p = source.data();
  EXPECT_EQ((p[11] + p[15] + p[16 + 11] + p[16 + 15]) / 4, target.data()[9]);
}

}  // namespace
}  // namespace zor::test
