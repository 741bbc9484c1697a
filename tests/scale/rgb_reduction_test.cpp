// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "scale/box_reduction.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>

#include "scale/reduction_rows.h"
#include "scale/rgb_cases.h"

namespace zor::test {
namespace {

BoxPair PairOf(const RgbPair& pair) {
  return pair.from == 3 ? (pair.to == 3 ? BoxPair::k3To3 : BoxPair::k3To4)
                        : (pair.to == 3 ? BoxPair::k4To3 : BoxPair::k4To4);
}

/// A reduction as one factor: the sum of all its terms' powers of two.
double Multiplier(const BoxReduction& reduction) {
  double term = reduction.halve ? 0.5 : 1.0;
  double total = term;
  for (const std::uint8_t shift : reduction.shifts) {
    if (shift == 0) break;
    term = std::ldexp(term, -shift);
    total += term;
  }
  return std::ldexp(total, -reduction.finalShift);
}

int GainMillionths(const BoxReduction& reduction, int pixels) {
  return static_cast<int>(std::lround(Multiplier(reduction) * pixels * 1e6));
}

int White(const BoxReduction& reduction, int pixels) {
  return static_cast<int>(
      std::min(255u, ReduceBoxSum(255u * static_cast<unsigned>(pixels), reduction)));
}

bool IsException(int rows, int columns, const RgbPair& pair) {
  for (const ReductionException& e : kReductionExceptions) {
    if (e.rows == rows && e.columns == columns &&
        &ReductionOf(rows, columns, pair.from, pair.to) == &e.row) {
      return true;
    }
  }
  return false;
}

TEST(BoxReduction, EveryProductOfTwoNumbersUpToSixteenHasItsGainAndItsWhite) {
  EXPECT_EQ(97u, std::size(kReductionRows));
  for (const ReductionRow& row : kReductionRows) {
    int shapes = 0;
    for (int rows = 1; rows <= 16; ++rows) {
      if (row.pixels % rows != 0 || row.pixels / rows > 16) continue;
      for (const RgbPair& pair : kRgbPairs) {
        const int columns = row.pixels / rows;
        if (IsException(rows, columns, pair)) continue;
        ++shapes;
        const BoxReduction reduction = BoxReductionFor(rows, columns, PairOf(pair));
        EXPECT_EQ(row.gainMillionths, GainMillionths(reduction, row.pixels)) << row.pixels;
        EXPECT_EQ(row.white, White(reduction, row.pixels)) << row.pixels;
        EXPECT_EQ(row.halve, reduction.halve) << row.pixels;
      }
    }
    EXPECT_GT(shapes, 0) << row.pixels;
  }
}

TEST(BoxReduction, SixShapesDifferFromTheirNumberOfPixelsOnTheirRoutesOnly) {
  for (const ReductionException& e : kReductionExceptions) {
    const int pixels = e.rows * e.columns;
    for (const RgbPair& pair : kRgbPairs) {
      const bool different = IsException(e.rows, e.columns, pair);
      const ReductionRow& row = ReductionOf(e.rows, e.columns, pair.from, pair.to);
      const BoxReduction reduction = BoxReductionFor(e.rows, e.columns, PairOf(pair));
      EXPECT_EQ(row.gainMillionths, GainMillionths(reduction, pixels))
          << e.rows << "x" << e.columns;
      EXPECT_EQ(row.white, White(reduction, pixels)) << e.rows << "x" << e.columns;
      const BoxReduction turned = BoxReductionFor(e.columns, e.rows, PairOf(pair));
      const bool alike = Multiplier(turned) == Multiplier(reduction);
      EXPECT_EQ(!different, alike) << e.rows << "x" << e.columns;
    }
  }
  EXPECT_EQ(257u, ReduceBoxSum(35 * 255, BoxReductionFor(5, 7, BoxPair::k4To4)));
  EXPECT_EQ(257u, ReduceBoxSum(70 * 255, BoxReductionFor(7, 10, BoxPair::k3To4)));
}

TEST(BoxReduction, NoSumLeavesSixteenBitsOnItsWay) {
  for (const RgbPair& pair : kRgbPairs) {
    for (int rows = 1; rows <= 16; ++rows) {
      for (int columns = 1; columns <= 16; ++columns) {
        BoxReduction reduction = BoxReductionFor(rows, columns, PairOf(pair));
        reduction.finalShift = 0;
        EXPECT_LE(ReduceBoxSum(static_cast<unsigned>(255 * rows * columns), reduction), 0xFFFFu)
            << rows << "x" << columns;
      }
    }
  }
}

}  // namespace
}  // namespace zor::test
