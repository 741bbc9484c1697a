// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "scale/axis_table.h"

#include <gtest/gtest.h>

#include "scale/rgb_reference.h"
#include "support/guarded_memory.h"

namespace zor::test {
namespace {

struct Axis {
  std::vector<std::uint32_t> words;
  std::vector<std::int32_t> offsets;
  AxisEdges edges;
};

constexpr std::uint32_t kUnset = 0xABCDEF01u;
constexpr std::uint32_t kOnes = 0xFFFFFFFFu;

Axis Build(int target, int source, int stride, double start, double step, ScaleMode mode) {
  Axis axis{std::vector<std::uint32_t>(static_cast<std::size_t>(target), kUnset),
            std::vector<std::int32_t>(static_cast<std::size_t>(target), -77),
            {}};
  axis.edges = BuildAxisTable(target, source, axis.words.data(), axis.offsets.data(), stride, start,
                              step, mode);
  return axis;
}
Axis Build(int target, int source, int stride, ScaleMode mode) {
  return Build(target, source, stride, 0.0, static_cast<double>(source) / target, mode);
}

void ExpectStatedAxis(int target, int source, int stride, double start, double step,
                      ScaleMode mode) {
  const Axis axis = Build(target, source, stride, start, step, mode);
  const RgbRefAxis stated = RefAxis(target, source, stride, start, step, mode);
  ASSERT_EQ(stated.words, axis.words) << target << " of " << source << ", mode " << mode;
  ASSERT_EQ(stated.places, std::vector<std::int64_t>(axis.offsets.begin(), axis.offsets.end()))
      << target << " of " << source << ", mode " << mode;
  ASSERT_EQ(stated.first, axis.edges.first) << target << " of " << source << ", mode " << mode;
  ASSERT_EQ(stated.last, axis.edges.last) << target << " of " << source << ", mode " << mode;
}

class AxisTable : public testing::TestWithParam<ScaleMode> {
 protected:
  /// Row pairs and pictures of one position are outside of some modes' reach.
  int Least() const { return GetParam() == SCALE_ROW_PAIRS ? 2 : 1; }
};

TEST_P(AxisTable, MatchesTheStatementForAllLengthsUpToForty) {
  for (int source = Least(); source <= 40; ++source) {
    for (int target = Least(); target <= 40; ++target) {
      for (const int stride : {3, 4, 130}) {
        ExpectStatedAxis(target, source, stride, 0.0, static_cast<double>(source) / target,
                         GetParam());
        if (HasFatalFailure()) return;
      }
    }
  }
}

TEST_P(AxisTable, MatchesTheStatementForLongAxes) {
  const int lengths[] = {2, 3, 479, 480, 720, 1080, 1920, 2161, 4000};
  for (const int source : lengths) {
    for (const int target : lengths) {
      for (const int stride : {3, 4, 5760}) {
        ExpectStatedAxis(target, source, stride, 0.0, static_cast<double>(source) / target,
                         GetParam());
        if (HasFatalFailure()) return;
      }
    }
  }
}

TEST_P(AxisTable, MatchesTheStatementForStartsInFrontAndEndsBehind) {
  Noise noise(21);
  for (int round = 0; round < 3000; ++round) {
    const int source = noise.Range(2, 50);
    const int target = noise.Range(2, 50);
    const double step = noise.Range(1, 900) / 97.0;
    const double start = noise.Range(-400, 200) / 31.0;
    ExpectStatedAxis(target, source, noise.Range(3, 4), start, step, GetParam());
    if (HasFatalFailure()) return;
  }
}

INSTANTIATE_TEST_SUITE_P(All, AxisTable, testing::Range(0u, 7u),
                         [](const testing::TestParamInfo<ScaleMode>& info) {
                           return "Mode" + std::to_string(info.param);
                         });

// --- Tables worked out by hand ---------------------------------------------------------

TEST(AxisTableByHand, NearestTakesTheMiddleOfEachPosition) {
  // Positions 0.75, 2.25, 3.75, 5.25 of 6.
  const Axis axis = Build(4, 6, 10, SCALE_NEAREST);
  EXPECT_EQ((std::vector<std::int32_t>{0, 20, 30, 50}), axis.offsets);
  EXPECT_EQ(0, axis.edges.first);
  EXPECT_EQ(3, axis.edges.last);  // the last one reaches index 5
}

TEST(AxisTableByHand, DoublingInModeOneRepeatsSourcePixelZeroWithoutWeight) {
  // Positions -0.25, 0.25, 0.75, 1.25, ... : 0.25 x 255 + 0.5 = 64.25, 0.75 x 255 + 0.5 = 191.75.
  const Axis axis = Build(8, 4, 4, SCALE_BILINEAR);
  EXPECT_EQ((std::vector<std::uint32_t>{0, 0x40404040, 0xBFBFBFBF, 0x40404040, 0xBFBFBFBF,
                                        0x40404040, 0xBFBFBFBF, kOnes}),
            axis.words);
  EXPECT_EQ((std::vector<std::int32_t>{0, 0, 0, 4, 4, 8, 8, 12}), axis.offsets);
  EXPECT_EQ(0, axis.edges.first);
  EXPECT_EQ(7, axis.edges.last);
}

TEST(AxisTableByHand, DoublingInModeTwoLaysTheFirstPixelHalfOnThePicture) {
  const Axis axis = Build(8, 4, 4, SCALE_BILINEAR_FADE);
  // (-0.25 + 0.5) / 0.5 x 255 + 0.5 = 128; behind, 255 - (0.25 / 0.5 x 255 + 0.5) = 127.
  EXPECT_EQ(0x80808080u, axis.words.front());
  EXPECT_EQ(0x7F7F7F7Fu, axis.words.back());
  EXPECT_EQ(1, axis.edges.first);
  EXPECT_EQ(7, axis.edges.last);
}

TEST(AxisTableByHand, AThreeByteAxisInModeOneGivesItsLastInteriorPixelAway) {
  for (const int stride : {3, 4}) {
    const Axis axis = Build(5, 5, stride, SCALE_BILINEAR);
    const bool early = stride == 3;
    EXPECT_EQ(early ? 3 : 4, axis.edges.last);
    EXPECT_EQ((early ? 4 : 3) * stride, axis.offsets[3]);
    EXPECT_EQ(early ? kOnes : 0u, axis.words[3]);
    EXPECT_EQ(0u, axis.words[2]);
    EXPECT_EQ(kOnes, axis.words[4]);
  }
}

TEST(AxisTableByHand, RowPairsStartOnRowsOfTheirOwnParity) {
  // Four pairs of four: positions 0, 1, 2, 3 of rows 2 x position and the one below.
  const Axis axis = Build(8, 8, 100, SCALE_ROW_PAIRS);
  EXPECT_EQ((std::vector<std::int32_t>{0, 100, 200, 300, 400, 500, 600, 700}), axis.offsets);
  EXPECT_EQ(std::vector<std::uint32_t>(8, 0), axis.words);
  EXPECT_EQ(6, axis.edges.last);
}

TEST(AxisTableByHand, RowPairsGiveAnOddLastRowTheEntryOfTheRowBefore) {
  const Axis axis = Build(7, 14, 100, SCALE_ROW_PAIRS);
  EXPECT_EQ(axis.offsets[5], axis.offsets[6]);
  EXPECT_EQ(axis.words[5], axis.words[6]);
  EXPECT_NE(kUnset, axis.words[6]);
}

TEST(AxisTableByHand, BoxesAtTwoAndAHalfAlternateBetweenTwoAndThree) {
  const Axis axis = Build(4, 10, 4, SCALE_BOX);
  EXPECT_EQ((std::vector<std::uint32_t>{2, 3, 2, 3}), axis.words);
  EXPECT_EQ((std::vector<std::int32_t>{0, 8, 20, 28}), axis.offsets);
  EXPECT_EQ(0, axis.edges.first);
  EXPECT_EQ(3, axis.edges.last);
}

TEST(AxisTableByHand, FadingBoxesNoteTheBackgroundsShareAtBothEnds) {
  // Of 8 from -3 by 4: [-3, 1) has one pixel of four, [5, 9) three; [-7, -3) and [9, 13) have none.
  const Axis in = Build(4, 8, 4, -3.0, 4.0, SCALE_BOX_FADE);
  // 255 - trunc(1 x 255 / 4 + 0.5) = 191; 255 - (3 x 255 / 4 + 0.5) = 63.25.
  EXPECT_EQ((std::vector<std::uint32_t>{191u << 16 | 1, 4, 63u << 16 | 3, 0xFF0000}), in.words);
  EXPECT_EQ((std::vector<std::int32_t>{0, 4, 20, 28}), in.offsets);
  EXPECT_EQ(1, in.edges.first);
  EXPECT_EQ(2, in.edges.last);
  EXPECT_EQ(0xFF0000u, Build(1, 8, 4, -7.0, 4.0, SCALE_BOX_FADE).words[0]);
  EXPECT_EQ(0u, Build(1, 8, 4, -7.0, 4.0, SCALE_BOX).words[0]);
}

TEST(AxisTableByHand, BoxesOfLessThanOnePixelCountNothingWhereNoPixelStarts) {
  // Boxes [0, 0.5), [0.5, 1), [1, 1.5), [1.5, 2).
  const Axis axis = Build(4, 2, 4, SCALE_BOX);
  EXPECT_EQ((std::vector<std::uint32_t>{0, 1, 0, 1}), axis.words);
  EXPECT_EQ(1, axis.edges.first);
}

TEST(AxisTableByHand, ModeSixLeavesWordsOfUnlikeBytes) {
  // Step 2, so c = -0.5 and the divisor is 12: every word within is trunc(-0.5 x 255 / 12) = -10.
  // Positions 0, 2, 4, 6 of 8: the last one is at length - 2.
  const Axis axis = Build(4, 8, 4, SCALE_AREA);
  const auto minusTen = static_cast<std::uint32_t>(-10);
  EXPECT_EQ((std::vector<std::uint32_t>{minusTen, minusTen, minusTen, 2}), axis.words);
  EXPECT_EQ((std::vector<std::int32_t>{0, 8, 16, 24}), axis.offsets);
  EXPECT_EQ(3, axis.edges.last);
}

TEST(AxisTableByHand, AModeBeyondTheLastWritesNothing) {
  for (const ScaleMode mode : {7u, 0xFF00u, 0xFFFFFFFFu}) {
    const Axis axis = Build(5, 9, 4, mode);
    EXPECT_EQ(std::vector<std::uint32_t>(5, kUnset), axis.words);
    EXPECT_EQ(std::vector<std::int32_t>(5, -77), axis.offsets);
    EXPECT_EQ(0, axis.edges.first);
    EXPECT_EQ(5, axis.edges.last);
  }
}

}  // namespace
}  // namespace zor::test
