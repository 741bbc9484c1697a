// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "plan.h"

#include <gtest/gtest.h>
#include <zorsurface/scale_mode.h>
#include <zorsurface/surface_description.h>

#include <cstring>

#include "exit_code.h"

namespace zorhost {
namespace {

StreamInfo Source(Layout layout, int width, int height) {
  StreamInfo info;
  info.path = "source";
  info.layout = layout;
  info.width = width;
  info.height = height;
  return info;
}

Plan MakePlan(Layout layout, int width, int height, Layout target = Layout::kRgb24) {
  std::vector<std::string> notes;
  return Plan(Source(layout, width, height), target, notes);
}

TEST(Plan, PlanarSizesAreCutToEvenOnesAndToldSo) {
  std::vector<std::string> notes;
  const Plan plan(Source(Layout::kYvu420, 957, 541), Layout::kRgb24, notes);
  EXPECT_EQ(plan.input().width, 956);
  EXPECT_EQ(plan.input().height, 540);
  ASSERT_EQ(notes.size(), 1u);
  EXPECT_NE(notes[0].find("956x540"), std::string::npos) << notes[0];
}

TEST(Plan, RgbSizesAreThoseOfTheBuilder) {
  const Plan plan = MakePlan(Layout::kRgb24, 959, 541);
  EXPECT_EQ(plan.input().width, 956);
  EXPECT_EQ(plan.input().height, 540);
  EXPECT_TRUE(plan.input().bottomUp);
}

TEST(Plan, TinySourcesAreInputErrors) {
  EXPECT_THROW(MakePlan(Layout::kRgb24, 161, 1), InputError);
  EXPECT_THROW(MakePlan(Layout::kYvu420, 3, 100), InputError);
  EXPECT_NO_THROW(MakePlan(Layout::kYvu420, 4, 4));
}

TEST(Plan, DecodedPlanesAreASurfacesPlanesOnceHandedIn) {
  EXPECT_EQ(MakePlan(Layout::kYvu420, 8, 8).input().layout, Layout::kYuv420);
}

TEST(Plan, MonoGetsNeutralChromaUnlessItStaysGray) {
  const Plan colour = MakePlan(Layout::kGray8, 4, 4);
  EXPECT_EQ(colour.input().layout, Layout::kYuv420);
  Picture mono(Layout::kGray8, 4, 4);
  std::memset(mono.data(), 77, 16);
  Picture scratch;
  const Picture& ready = colour.Prepare(mono, scratch);
  EXPECT_EQ(ready.layout(), Layout::kYvu420);
  EXPECT_EQ(ready.row(0, 3)[3], 77);
  EXPECT_EQ(ready.row(1, 0)[0], 128);
  EXPECT_EQ(ready.row(2, 1)[1], 128);
  EXPECT_EQ(MakePlan(Layout::kGray8, 4, 4, Layout::kGray8).input().layout, Layout::kGray8);
}

TEST(Plan, RgbIsTurnedOverAndKeepsItsUpperRows) {
  const Plan plan = MakePlan(Layout::kRgb24, 4, 5);
  Picture in(Layout::kRgb24, 4, 5);
  for (int y = 0; y < 5; ++y) in.row(0, y)[0] = static_cast<std::uint8_t>(y + 1);
  Picture scratch;
  const Picture& ready = plan.Prepare(in, scratch);
  EXPECT_EQ(ready.height(), 4);
  EXPECT_EQ(ready.data()[0], 4);  // the last of the four rows that stay comes first
  EXPECT_EQ(ready.row(0, 0)[0], 1);
}

TEST(Plan, AFrameThatFitsIsNotCopied) {
  const Plan plan = MakePlan(Layout::kYvu420, 4, 4);
  const Picture in(Layout::kYvu420, 4, 4);
  Picture scratch;
  EXPECT_EQ(&plan.Prepare(in, scratch), &in);
}

TEST(Plan, OddPlanarAndPackedSizesAreUsageErrors) {
  Plan plan = MakePlan(Layout::kYvu420, 16, 16);
  EXPECT_THROW(plan.Resize(9, 8, false, SCALE_BILINEAR), UsageError);
  EXPECT_THROW(plan.Resize(8, 3, false, SCALE_BILINEAR), UsageError);
  Plan rgb = MakePlan(Layout::kRgb24, 16, 16);
  rgb.Resize(9, 8, false, SCALE_BILINEAR);
  EXPECT_THROW(rgb.Convert(Layout::kYuv420), UsageError);
  EXPECT_THROW(rgb.Convert(Layout::kYuy2), UsageError);
  EXPECT_THROW(rgb.Resize(8, 8, false, SCALE_PLANAR_AREA), UsageError);
}

TEST(Plan, ExchangedPlanesAreExchangedBackBeforeColoursAreRead) {
  Plan plan = MakePlan(Layout::kYvu420, 8, 8);
  plan.Convert(Layout::kYvu420);
  plan.Convert(Layout::kRgb24);
  ASSERT_EQ(plan.operations().size(), 3u);
  EXPECT_EQ(plan.operations()[0].format, FORMAT_YVU420);
  EXPECT_EQ(plan.operations()[1].format, FORMAT_YVU420);
  EXPECT_EQ(plan.operations()[2].format, FORMAT_RGB24);
}

TEST(Plan, RgbReachesExchangedPlanesByWayOfThePlanarFormat) {
  Plan plan = MakePlan(Layout::kRgb24, 8, 8);
  plan.Convert(Layout::kYvu420);
  ASSERT_EQ(plan.operations().size(), 2u);
  EXPECT_EQ(plan.operations()[0].format, FORMAT_YUV420);
  EXPECT_EQ(plan.result().layout, Layout::kYvu420);
}

bool CopyAtEnd(Plan plan, bool bottomUp, int pitch = 0) {
  plan.ReadAs(bottomUp, pitch);
  return plan.NeedsCopyAtEnd();
}

TEST(Plan, DirectOutputIsTakenWhereItIsRight) {
  Plan road = MakePlan(Layout::kYvu420, 16, 16);
  road.Resize(8, 8, true, SCALE_BILINEAR);
  EXPECT_FALSE(CopyAtEnd(road, false));
  EXPECT_TRUE(CopyAtEnd(road, true));  // a planar resize keeps the surface's row order
  road.Convert(Layout::kRgb32);
  EXPECT_FALSE(CopyAtEnd(road, false));
  EXPECT_FALSE(CopyAtEnd(road, true));
}

TEST(Plan, CopyFollowsWhereDirectOutputIgnoresTheRowOrderOrTheSize) {
  Plan packed = MakePlan(Layout::kYuy2, 16, 16, Layout::kYuy2);
  packed.Resize(8, 8, false, SCALE_BILINEAR);
  EXPECT_TRUE(CopyAtEnd(packed, false));  // direct output would give the old size
  Plan repacked = MakePlan(Layout::kRgb24, 16, 16);
  repacked.Convert(Layout::kRgb32);
  EXPECT_TRUE(CopyAtEnd(repacked, false));
  EXPECT_FALSE(CopyAtEnd(repacked, true));
  Plan fitted = MakePlan(Layout::kRgb24, 16, 16);
  fitted.Resize(8, 12, true, SCALE_BILINEAR);
  EXPECT_TRUE(CopyAtEnd(fitted, false));  // the bands would be painted upward from the start
  EXPECT_FALSE(CopyAtEnd(fitted, true));
  Plan planar = MakePlan(Layout::kRgb24, 16, 16);
  planar.Convert(Layout::kYuv420);
  EXPECT_TRUE(CopyAtEnd(planar, false));  // the rows would come the other way round
  EXPECT_TRUE(CopyAtEnd(planar, true));
  Plan exchanged = MakePlan(Layout::kYvu420, 16, 16);
  exchanged.Convert(Layout::kYvu420);
  EXPECT_FALSE(CopyAtEnd(exchanged, false));
  EXPECT_TRUE(CopyAtEnd(exchanged, false, 32));  // blocks are copied whole, rows would shift
}

TEST(Plan, PitchIsAtLeastARowAndEvenForPlanes) {
  Plan plan = MakePlan(Layout::kYvu420, 8, 8);
  EXPECT_THROW(plan.ReadAs(false, 6), UsageError);
  EXPECT_THROW(plan.ReadAs(false, 9), UsageError);
  plan.ReadAs(false, 10);
  EXPECT_EQ(plan.pitch(), 10);
}

TEST(Plan, PackedCoverGoesThroughThePlanarFormat) {
  Plan plan = MakePlan(Layout::kYuy2, 16, 16, Layout::kYuy2);
  plan.Cover(8, 6, SCALE_BILINEAR);
  ASSERT_EQ(plan.operations().size(), 2u);
  EXPECT_EQ(plan.operations()[0].format, FORMAT_YUV420);
  EXPECT_EQ(plan.operations()[1].kind, Operation::Kind::kCover);
}

}  // namespace
}  // namespace zorhost
