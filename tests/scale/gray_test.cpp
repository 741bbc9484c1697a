// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "scale/gray.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/memory.h"
#include "scale/gray_tables.h"
#include "scale/scale_cases.h"

namespace zor::test {
namespace {

struct Axes {
  double startX, stepX, startY, stepY;
};

Axes Whole(const GuardedPicture& target, const GuardedPicture& source) {
  return {0.0, static_cast<double>(source.width) / target.width, 0.0,
          static_cast<double>(source.height) / target.height};
}

void ExpectSame(GuardedPicture& target, GuardedPicture& source, const Axes& axes, ScaleMode mode) {
  ExpectAtEveryLevel(
      target, source, mode,
      [&](std::uint8_t* bytes) {
        RefGray8({bytes, target.width, target.height, target.stride}, source.Ref(), axes.startX,
                 axes.stepX, axes.startY, axes.stepY, mode);
      },
      [&] {
        ScaleGray8({target.data(), target.width, target.height, target.stride, 1},
                   {source.data(), source.width, source.height, source.stride, 1},
                   {axes.startX, axes.stepX, axes.startY, axes.stepY}, mode);
      });
}

TEST(GrayScaler, SmallSizesMatchTheStatementInEveryMode) {
  Noise noise(1);
  for (int sw = 2; sw <= 40; ++sw) {
    for (int dw = 2; dw <= 40; ++dw) {
      // Widths go through all pairs; every fifth picture is as tall as others are wide.
      const bool tall = (sw + dw) % 5 == 0;
      const int sh = tall ? dw : noise.Range(2, 12);
      const int dh = tall ? sw : noise.Range(2, 14);
      const unsigned n = noise.Next();
      GuardedPicture source(sw, sh, sw + noise.Range(0, 5), 1, EdgeOf(n), n);
      GuardedPicture target(dw, dh, dw + noise.Range(0, 5), 1, EdgeOf(n >> 1), n + 1);
      for (const ScaleMode mode : {0u, 1u, 2u, 3u, 4u, 5u}) {
        ExpectSame(target, source, Whole(target, source), mode);
        if (HasFatalFailure()) return;
      }
    }
  }
}

TEST(GrayScaler, SizesOfOneMatchTheStatementInEveryMode) {
  for (int n = 1; n <= 40; n += 3) {
    for (const ScaleMode mode : {0u, 1u}) {
      GuardedPicture point(1, 1, 1, 1, EdgeOf(0), 3);
      GuardedPicture row(n, 1, n, 1, EdgeOf(1), 4);
      GuardedPicture column(1, n, 3, 1, EdgeOf(0), 5);
      GuardedPicture square(n, n, n, 1, EdgeOf(0), 6);
      ExpectSame(square, point, Whole(square, point), mode);
      ExpectSame(point, square, Whole(point, square), mode);
      ExpectSame(row, column, Whole(row, column), mode);
      ExpectSame(column, square, Whole(column, square), mode);
      ExpectSame(square, row, Whole(square, row), mode);
      if (HasFatalFailure()) return;
    }
  }
}

TEST(GrayScaler, WidthsAroundTheVectorsMatchTheStatementAtManyRatios) {
  Noise noise(2);
  const int widths[] = {15,  16,  17,  31,  33,  63,  64,  65, 100,
                        127, 128, 129, 191, 200, 257, 300, 555};
  for (const int sw : widths) {
    for (const int dw : widths) {
      const unsigned n = noise.Next();
      const int sh = noise.Range(2, 5);
      GuardedPicture source(sw, sh, sw + noise.Range(0, 3), 1, EdgeOf(n), n);
      GuardedPicture target(dw, noise.Range(2, 6), dw + noise.Range(0, 3), 1, EdgeOf(n >> 1),
                            n + 1);
      for (const ScaleMode mode : {0u, 2u}) {
        ExpectSame(target, source, Whole(target, source), mode);
        if (HasFatalFailure()) return;
      }
    }
  }
}

TEST(GrayScaler, LargePicturesMatchTheStatement) {
  const int shapes[][4] = {{640, 48, 427, 32},   {427, 33, 640, 49},  {320, 24, 640, 48},
                           {1920, 20, 1280, 13}, {1000, 7, 3000, 21}, {2048, 9, 500, 4},
                           {4000, 8, 121, 3},    {640, 40, 640, 27},  {640, 27, 640, 40}};
  unsigned n = 0;
  for (const auto& s : shapes) {
    ++n;
    GuardedPicture source(s[0], s[1], s[0] + 3, 1, EdgeOf(n), n);
    GuardedPicture target(s[2], s[3], s[2], 1, EdgeOf(n), n + 70);
    for (const ScaleMode mode : {0u, 1u, 5u}) {
      ExpectSame(target, source, Whole(target, source), mode);
      if (HasFatalFailure()) return;
    }
  }
}

TEST(GrayScaler, StartsAndStepsOfTheCallersChoiceMatchTheStatement) {
  Noise noise(3);
  for (int round = 0; round < 400; ++round) {
    const unsigned n = noise.Next();
    const int sw = noise.Range(2, 90);
    const int sh = noise.Range(2, 20);
    const int dw = noise.Range(2, 90);
    GuardedPicture source(sw, sh, sw + noise.Range(0, 2), 1, EdgeOf(n), n);
    GuardedPicture target(dw, noise.Range(2, 20), dw + 1, 1, EdgeOf(n >> 1), n + 1);
    const Axes axes{noise.Range(-300, 300) / 16.0, noise.Range(1, 100) / 16.0,
                    noise.Range(-100, 100) / 16.0, noise.Range(1, 100) / 16.0};
    for (const ScaleMode mode : {0u, 1u, 5u}) {
      ExpectSame(target, source, axes, mode);
      if (HasFatalFailure()) return;
    }
  }
}

TEST(GrayScaler, WalksUpwardOverANegativeStride) {
  GuardedPicture source(70, 9, 71, 1, EdgeOf(0), 8);
  GuardedPicture target(50, 12, 53, 1, EdgeOf(0), 9);
  std::vector<std::uint8_t> down(target.size());
  RefGray8({down.data(), 50, 12, 53}, source.Ref(), 0, 1.4, 0, 0.75, 1);
  ScaleGray8({target.data() + 11 * 53, 50, 12, -53, 1}, {source.data(), 70, 9, 71, 1},
             {0, 1.4, 0, 0.75}, SCALE_BILINEAR);
  for (int y = 0; y < 12; ++y) {
    for (int x = 0; x < 50; ++x) {
      ASSERT_EQ(down[(11 - y) * 53 + x], target.data()[y * 53 + x]) << x << ", " << y;
    }
  }
}

TEST(GrayScaler, FadeBoxAndUnknownModesAreBilinear) {
  GuardedPicture source(60, 20, 60, 1, EdgeOf(0), 10);
  GuardedPicture target(20, 8, 20, 1, EdgeOf(0), 11);
  const ScaleAxes axes{0, 3.0, 0, 2.5};
  const auto scale = [&](ScaleMode mode) {
    ScaleGray8({target.data(), 20, 8, 20, 1}, {source.data(), 60, 20, 60, 1}, axes, mode);
    return target.Copy();
  };
  const std::vector<std::uint8_t> bilinear = scale(SCALE_BILINEAR);
  EXPECT_NE(bilinear, scale(SCALE_NEAREST));
  for (const ScaleMode mode : {2u, 3u, 4u, 6u, 7u, 0xFF00u, 0xFFFFFFFFu}) {
    EXPECT_EQ(bilinear, scale(mode)) << mode;
  }
}

TEST(GrayScaler, EqualWidthOnlyBlendsRowsAndCopiesThoseOfWeightZero) {
  GuardedPicture source(37, 16, 37, 1, EdgeOf(0), 12);
  GuardedPicture target(37, 8, 37, 1, EdgeOf(0), 13);
  const std::vector<std::uint8_t> before = target.Copy();
  ScaleGray8({target.data(), 37, 8, 37, 1}, {source.data(), 37, 16, 37, 1}, {0, 1.0, 0, 2.0},
             SCALE_BILINEAR);
  for (int y = 0; y < 8; ++y) {
    EXPECT_TRUE(
        std::equal(target.data() + y * 37, target.data() + y * 37 + 37, source.data() + 2 * y * 37))
        << y;
  }
  // At 1.5 every other row lies half way between two; its last column is at the edge and copied.
  ScaleGray8({target.data(), 37, 8, 37, 1}, {source.data(), 37, 16, 37, 1}, {0, 1.0, 0, 1.5},
             SCALE_BILINEAR);
  for (int x = 0; x < 37; ++x) {
    const int a = source.data()[37 + x];
    const int b = source.data()[2 * 37 + x];
    const int blended = a + ((b - a) * 128 >> 8);
    EXPECT_EQ(x == 36 ? a : blended, target.data()[37 + x]) << x;
  }
}

TEST(GrayScaler, EqualSizesComeOutAsCopiesOnEitherPath) {
  for (const ScaleMode mode : {0u, 1u, 2u}) {
    GuardedPicture source(41, 9, 44, 1, EdgeOf(0), 14);
    GuardedPicture target(41, 9, 43, 1, EdgeOf(0), 15);
    ScaleGray8({target.data(), 41, 9, 43, 1}, {source.data(), 41, 9, 44, 1}, {0, 1, 0, 1}, mode);
    for (int y = 0; y < 9; ++y) {
      for (int x = 0; x < 41; ++x) ASSERT_EQ(source.data()[y * 44 + x], target.data()[y * 43 + x]);
    }
  }
  // A start that isn't 0 takes the other path: the same rows, moved by a whole column. The run has
  // 40 columns, so none of them stands singly.
  GuardedPicture source(42, 9, 42, 1, EdgeOf(0), 16);
  GuardedPicture target(42, 9, 42, 1, EdgeOf(0), 17);
  ScaleGray8({target.data(), 42, 9, 42, 1}, {source.data(), 42, 9, 42, 1}, {1, 1, 0, 1}, 1);
  for (int x = 0; x < 42; ++x) {
    EXPECT_EQ(source.data()[std::min(x + 1, 41)], target.data()[x]) << x;
  }
}

TEST(GrayScaler, TheLastRowIsRepeatedAndTheOneBehindItIsNotRead) {
  // The source ends at a page without access, so reading a row further would fault.
  GuardedPicture source(64, 2, 64, 1, GuardedMemory::Edge::kEnd, 18);
  GuardedPicture target(64, 8, 64, 1, EdgeOf(0), 19);
  ScaleGray8({target.data(), 64, 8, 64, 1}, {source.data(), 64, 2, 64, 1}, {0, 1, 0, 0.25}, 1);
  for (int y = 4; y < 8; ++y) {
    EXPECT_TRUE(
        std::equal(target.data() + y * 64, target.data() + y * 64 + 64, source.data() + 64));
  }
}

TEST(GrayScaler, SinglePixelsOfARunTakeTheWeightAtFourTimesTheirIndex) {
  // 10 columns to 7: the run is columns 0 to 5, so columns 4 and 5 stand singly and read the bytes
  // 16 and 20 of the block: bytes of the second and third offset word, 7 bytes of weights ahead.
  GrayTables tables(7, 2);
  ASSERT_TRUE(static_cast<bool>(tables));
  const GrayEdges edges = BuildGrayColumnTable(7, 10, tables.ColumnWeights(),
                                               tables.ColumnOffsets(), 0, 10.0 / 7, SCALE_BILINEAR);
  EXPECT_EQ(0, edges.first);
  EXPECT_EQ(7, edges.last);
  // Positions 0.2142, 1.6428, 3.0714, 4.5, 5.9285, 7.3571, 8.7857.
  const int offsets[] = {0, 1, 3, 4, 5, 7, 8};
  const int weights[] = {55, 164, 18, 128, 237, 91, 200};
  for (int i = 0; i < 7; ++i) {
    EXPECT_EQ(offsets[i], tables.ColumnOffset(i)) << i;
    EXPECT_EQ(weights[i], tables.ColumnWeight(i)) << i;
  }
  EXPECT_EQ(0, tables.OddWeight(0, 4));    // byte 16: the second byte of the third word
  EXPECT_EQ(0, tables.OddWeight(0, 5));    // byte 20: the second byte of the fourth word
  EXPECT_EQ(200, tables.OddWeight(2, 1));  // byte 6 is still a weight
  EXPECT_EQ(1, tables.OddWeight(3, 2));    // byte 11: the low byte of the second word

  GuardedPicture source(10, 2, 10, 1, EdgeOf(0), 20);
  GuardedPicture target(7, 2, 7, 1, EdgeOf(0), 21);
  ScaleGray8({target.data(), 7, 2, 7, 1}, {source.data(), 10, 2, 10, 1}, {0, 10.0 / 7, 0, 1.0}, 1);
  // 7 mod 4 = 3: columns 4 to 6 stand singly, with bytes 16, 20 and 24, all 0.
  for (int i = 4; i < 7; ++i) EXPECT_EQ(source.data()[offsets[i]], target.data()[i]) << i;
  for (int i = 0; i < 4; ++i) {
    const int p = source.data()[offsets[i]];
    const int q = source.data()[offsets[i] + 1];
    EXPECT_EQ(p + ((q - p) * weights[i] >> 8), target.data()[i]) << i;
  }
}

TEST(GrayTables, RowsAreAnchoredAtTheTopEdgeAndColumnsAtPixelCentres) {
  GrayTables tables(8, 8);
  const GrayEdges across = BuildGrayColumnTable(8, 4, tables.ColumnWeights(),
                                                tables.ColumnOffsets(), 0, 0.5, SCALE_BILINEAR);
  const GrayEdges down = BuildGrayRowTable(8, 4, tables.RowWeights(), tables.RowOffsets(), 100, 0,
                                           0.5, SCALE_BILINEAR);
  EXPECT_EQ(1, across.first);  // -0.25, 0.25, 0.75, ..
  EXPECT_EQ(7, across.last);   // .. 3.25
  EXPECT_EQ(64, tables.ColumnWeight(1));
  EXPECT_EQ(191, tables.ColumnWeight(2));
  EXPECT_EQ(0, down.first);  // 0, 0.5, 1, ..
  EXPECT_EQ(6, down.last);   // .. 3
  EXPECT_EQ(0, tables.RowWeight(0));
  EXPECT_EQ(128, tables.RowWeight(1));
  EXPECT_EQ(100, tables.RowOffset(2));
  EXPECT_EQ(300, tables.RowOffset(7));
}

TEST(GrayTables, NearestRoundsHalfStepPositionsDownOnBothAxes) {
  GrayTables tables(4, 4);
  BuildGrayColumnTable(4, 8, tables.ColumnWeights(), tables.ColumnOffsets(), 0, 2.0, 0);
  BuildGrayRowTable(4, 8, tables.RowWeights(), tables.RowOffsets(), 10, 0, 2.0, 0);
  for (int i = 0; i < 4; ++i) {  // positions 0.5, 2.5, ..
    EXPECT_EQ(2 * i, tables.ColumnOffset(i));
    EXPECT_EQ(20 * i, tables.RowOffset(i));
  }
}

TEST(GrayTables, RowPairsStartOnRowsOfTheirOwnParity) {
  GrayTables tables(2, 6);
  const GrayEdges edges =
      BuildGrayRowTable(6, 12, tables.RowWeights(), tables.RowOffsets(), 10, 0, 2.0, 5);
  // Pairs at 0.5, 2.5 and 4.5 of six pairs of rows.
  const int rows[] = {0, 1, 4, 5, 8, 9};
  for (int i = 0; i < 6; ++i) {
    EXPECT_EQ(10 * rows[i], tables.RowOffset(i)) << i;
    EXPECT_EQ(128, tables.RowWeight(i)) << i;
  }
  EXPECT_EQ(0, edges.first);
  EXPECT_EQ(6, edges.last);
}

TEST(GrayTables, EdgesOfRowPairsCountPairs) {
  GrayTables tables(2, 8);
  const GrayEdges edges =
      BuildGrayRowTable(8, 4, tables.RowWeights(), tables.RowOffsets(), 10, 0, 0.5, 5);
  // Pairs at -0.25, 0.25, 0.75 and 1.25 of two pairs: one in front, one at the end.
  EXPECT_EQ(1, edges.first);
  EXPECT_EQ(3, edges.last);
}

TEST(GrayTables, AnOddLastRowOfPairsRepeatsTheRowBefore) {
  GrayTables tables(2, 5);
  BuildGrayRowTable(5, 10, tables.RowWeights(), tables.RowOffsets(), 10, 0, 2.0, 5);
  EXPECT_EQ(tables.RowOffset(3), tables.RowOffset(4));
  EXPECT_EQ(tables.RowWeight(3), tables.RowWeight(4));
  EXPECT_EQ(50, tables.RowOffset(4));
}

TEST(GrayScaler, RefusedMemoryLeavesTheTargetAsItWas) {
  GuardedPicture source(100, 20, 100, 1, EdgeOf(0), 22);
  GuardedPicture target(70, 31, 70, 1, EdgeOf(0), 23);
  const std::vector<std::uint8_t> before = target.Copy();
  for (const ScaleMode mode : {0u, 1u}) {
    RefuseAllocation(0);
    ScaleGray8({target.data(), 70, 31, 70, 1}, {source.data(), 100, 20, 100, 1},
               {0, 100 / 70.0, 0, 20 / 31.0}, mode);
    const std::uint64_t requests = CountAllocations();
    ASSERT_GT(requests, 0u);
    ASSERT_NE(before, target.Copy());
    for (std::uint64_t k = 1; k <= requests; ++k) {
      std::copy(before.begin(), before.end(), target.data());
      RefuseAllocation(k);
      ScaleGray8({target.data(), 70, 31, 70, 1}, {source.data(), 100, 20, 100, 1},
                 {0, 100 / 70.0, 0, 20 / 31.0}, mode);
      RefuseAllocation(0);
      EXPECT_EQ(before, target.Copy()) << k;
    }
  }
  EXPECT_EQ(0, LiveAllocations());
}

}  // namespace
}  // namespace zor::test
