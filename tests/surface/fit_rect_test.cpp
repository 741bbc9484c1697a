// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <limits>

#include "support/probe_surface.h"
#include "surface/attribute_cases.h"

namespace zor::test {
namespace {

struct Fit {
  std::int32_t width, height, aspectWidth, aspectHeight;
};

/// Marks every word, so that those that aren't written show.
constexpr std::int32_t kMark = -999;

Words FitInto(const Fit& picture, std::int32_t width, std::int32_t height) {
  ProbeSurface probe(Describe(picture.width, picture.height, FORMAT_RGB24));
  probe.SetAspectRatio(picture.aspectWidth, picture.aspectHeight);
  RECT rect = {kMark, kMark, kMark, kMark};
  EXPECT_EQ(probe.ComputeFitRect(width, height, &rect), VED_OK);
  return WordsOf(rect);
}

TEST(FitRect, ANarrowerPictureStandsBetweenLeftAndRight) {
  EXPECT_EQ(FitInto({640, 480, 0, 0}, 640, 360), (Words{80, kMark, 560, 360}));
}

TEST(FitRect, AWiderPictureStandsBetweenTopAndBottom) {
  EXPECT_EQ(FitInto({640, 480, 0, 0}, 320, 480), (Words{kMark, 120, 320, 360}));
}

TEST(FitRect, AnEqualShapeFillsTheTargetByItsHeight) {
  EXPECT_EQ(FitInto({640, 480, 0, 0}, 320, 240), (Words{kMark, 0, 320, 240}));
}

TEST(FitRect, OddRoomsAreHalvedTowardsZero) {
  // r = 4 / 3; 10 x 4: w' = 5 of 10, left = 5 / 2 = 2.
  EXPECT_EQ(FitInto({8, 6, 0, 0}, 10, 4), (Words{2, kMark, 7, 4}));
  // r = 4 / 3; 5 x 10: h' = 3 of 10, top = 7 / 2 = 3.
  EXPECT_EQ(FitInto({8, 6, 0, 0}, 5, 10), (Words{kMark, 3, 5, 6}));
}

TEST(FitRect, AnAspectRatioNarrowerThanThePictureShortensTheWidth) {
  // 720 x 576 at 1:1: w / a = 720 is above h / b = 576, so w = 576.
  EXPECT_EQ(FitInto({720, 576, 1, 1}, 1000, 500), (Words{250, kMark, 750, 500}));
}

TEST(FitRect, AnAspectRatioWiderThanThePictureShortensTheHeight) {
  // 720 x 576 at 16:9: w / a = 45 is at most h / b = 64, so h = 9 x 720 / 16 = 405.
  // r = 1.777...; 1000 x 1000: h' = 562, top = 219.
  EXPECT_EQ(FitInto({720, 576, 16, 9}, 1000, 1000), (Words{kMark, 219, 1000, 781}));
}

TEST(FitRect, OneZeroWordMeansNoAspectRatio) {
  const Words plain = FitInto({640, 480, 0, 0}, 640, 360);
  EXPECT_EQ(FitInto({640, 480, 16, 0}, 640, 360), plain);
  EXPECT_EQ(FitInto({640, 480, 0, 9}, 640, 360), plain);
}

TEST(FitRect, ADifferenceWithinAMillionthDoesNotCount) {
  // 2000001 : 2000000 differs from 1 by 5e-7: the picture keeps its 1000 rows. Counted, it would
  // have 2000000 x 1000 / 2000001 = 999.
  EXPECT_EQ(FitInto({1000, 1000, 2000001, 2000000}, 1000, 1000), (Words{kMark, 0, 1000, 1000}));
  // 500001 : 500000 differs by 2e-6: 999 rows. r = 1000 / 999; h' = 1000 / r is just below 999.
  EXPECT_EQ(FitInto({1000, 1000, 500001, 500000}, 1000, 1000), (Words{kMark, 1, 1000, 999}));
}

TEST(FitRect, ProductsOfTheAspectRatioWrapIn32Bits) {
  // 70000 x 70000 at 70000 : 60000: 60000 x 70000 = 4200000000, wrapped -94967296;
  // / 70000 = -1356. r = 70000 / -1356 is negative: t = 1 is above it.
  // w' = -51.62... x 100 = -5162; left = 5262 / 2 = 2631; right = -2531.
  EXPECT_EQ(FitInto({70000, 70000, 70000, 60000}, 100, 100), (Words{2631, kMark, -2531, 100}));
}

TEST(FitRect, WithoutAQuotientTheBarsStandLeftAndRight) {
  // 0 / 0 is no number. w' = r x 0 = 0.
  EXPECT_EQ(FitInto({640, 480, 0, 0}, 0, 0), (Words{0, kMark, 0, 0}));
}

TEST(FitRect, AnInfiniteTargetShapeIsAboveEveryPicture) {
  EXPECT_EQ(FitInto({640, 480, 0, 0}, 100, 0), (Words{50, kMark, 50, 0}));
}

TEST(FitRect, ValuesBeyond32BitsAreHeldToTheNearest) {
  constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
  // 4 x 4 at kMax : 1 makes h = 1 x 4 / kMax = 0 and r infinite; t = 1 is below it.
  // h' = 100 / infinity = 0.
  EXPECT_EQ(FitInto({4, 4, kMax, 1}, 100, 100), (Words{kMark, 50, 100, 50}));
  // 4 x 4 at 1 : kMax makes w = 0 and r = 0: t = 1 is above it, w' = 0.
  EXPECT_EQ(FitInto({4, 4, 1, kMax}, 100, 100), (Words{50, kMark, 50, 100}));
  // r = 0 and t = -1: h' = -100 / 0 is minus infinity; top = (100 + 2^31) / 2, bottom = top + h'.
  EXPECT_EQ(FitInto({4, 4, 1, kMax}, -100, 100), (Words{kMark, 1073741874, -100, -1073741774}));
  // r = 70000 / -1356 as above; w' = -51.62... x kMax is held to -2^31, left = (100 + 2^31) / 2.
  EXPECT_EQ(FitInto({70000, 70000, 70000, 60000}, 100, kMax),
            (Words{1073741874, kMark, -1073741774, kMax}));
}

}  // namespace
}  // namespace zor::test
