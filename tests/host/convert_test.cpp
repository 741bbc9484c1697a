// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

// Chains of conversions through the library, as the command `convert --via` runs them.
#include "exit_code.h"
#include "quadrants.h"

namespace zorhost {
namespace {

using test::ExpectQuarters;
using test::kQuarters;
using test::PaintQuarters;
using test::PlanOf;
using test::RunPlan;

constexpr Layout kColour[] = {Layout::kRgb24, Layout::kRgb32, Layout::kYuv420, Layout::kYuy2,
                              Layout::kYvu420};
constexpr int kWidth = 64;
constexpr int kHeight = 32;

TEST(Convert, EveryChainOfThreeGivesAnUprightPictureInItsColours) {
  for (const Layout from : kColour) {
    const Picture in = PaintQuarters(from, kWidth, kHeight);
    for (const Layout first : kColour) {
      for (const Layout second : kColour) {
        for (const Layout to : kColour) {
          const std::string name = std::string(Traits(from).name) + " " + Traits(first).name + " " +
                                   Traits(second).name + " " + Traits(to).name;
          Plan plan = PlanOf(in, first);
          for (const Layout layout : {first, second, to}) plan.Convert(layout);
          for (const Way way : {Way::kDeferred, Way::kEager}) {
            for (const bool bottomUp : {false, true}) {
              const Picture out = RunPlan(plan, in, way, bottomUp);
              ASSERT_EQ(out.layout(), to) << name;
              ExpectQuarters(out, kQuarters, name);
              if (HasFailure()) return;
            }
          }
        }
      }
    }
  }
}

TEST(Convert, ExportedBitmapsAreUprightAfterEveryPair) {
  for (const Layout from : kColour) {
    const Picture in = PaintQuarters(from, kWidth, kHeight);
    for (const Layout to : kColour) {
      if (to == Layout::kYvu420) continue;
      Plan plan = PlanOf(in, to);
      plan.Convert(to);
      ExpectQuarters(RunPlan(plan, in, Way::kExport), kQuarters,
                     std::string(Traits(from).name) + " " + Traits(to).name);
    }
  }
}

TEST(Convert, ResizeBehindPackedPixelsStaysUpright) {
  const Picture in = PaintQuarters(Layout::kYuy2, kWidth, kHeight);
  for (const bool fit : {false, true}) {
    Plan plan = PlanOf(in, Layout::kRgb24);
    plan.Convert(Layout::kRgb24);
    plan.Resize(48, 24, fit, 1);
    for (const Way way : {Way::kDeferred, Way::kEager, Way::kExport}) {
      ExpectQuarters(RunPlan(plan, in, way), kQuarters, "yuy2, rgb24, 48x24");
    }
  }
}

TEST(Convert, PackedTwiceToRgbIsTurnedBack) {
  Plan plan = PlanOf(PaintQuarters(Layout::kYuy2, kWidth, kHeight), Layout::kRgb32);
  plan.Convert(Layout::kRgb32);
  EXPECT_TRUE(plan.result().turnedOver);
  plan.Convert(Layout::kYuy2);
  EXPECT_TRUE(plan.result().turnedOver);
  plan.Convert(Layout::kRgb24);
  EXPECT_FALSE(plan.result().turnedOver);
}

TEST(Convert, Rgb24ReachesYuy2ByWayOfRgb32) {
  Plan plan = PlanOf(PaintQuarters(Layout::kRgb24, kWidth, kHeight), Layout::kYuy2);
  plan.Convert(Layout::kYuy2);
  ASSERT_EQ(plan.operations().size(), 2u);
  EXPECT_EQ(plan.operations()[0].format, FORMAT_RGB32);
  EXPECT_EQ(plan.operations()[1].format, FORMAT_YUY2);
}

TEST(Convert, ColumnsThatStayEmptyInYuy2AreCounted) {
  const auto columns = [](int width) {
    Plan plan = PlanOf(PaintQuarters(Layout::kRgb32, width, 16), Layout::kYuy2);
    plan.Convert(Layout::kYuy2);
    return plan.unwrittenColumns();
  };
  EXPECT_EQ(columns(64), 0);
  EXPECT_EQ(columns(20), 4);
}

TEST(Convert, GrayStaysGrayOrGetsNeutralChromaButIsNeverReached) {
  const Picture gray = PaintQuarters(Layout::kGray8, kWidth, kHeight);
  ExpectQuarters(RunPlan(PlanOf(gray, Layout::kGray8), gray), kQuarters, "gray");
  for (const Layout to : kColour) {
    Plan plan = PlanOf(gray, to);
    plan.Convert(to);
    const Picture out = RunPlan(plan, gray);
    EXPECT_EQ(out.layout(), to);
    if (Traits(to).rgb) {
      const std::uint8_t* pixel = out.row(0, 8) + 16 * (Traits(to).bitsPerPixel / 8);
      EXPECT_EQ(pixel[0], pixel[2]);
      EXPECT_NEAR(pixel[1], 75, 3);  // (81 - 16) x 255 / 219
    }
    Plan back = PlanOf(PaintQuarters(to, kWidth, kHeight), to);
    back.Convert(Layout::kGray8);
    EXPECT_THROW(RunPlan(back, PaintQuarters(to, kWidth, kHeight)), HostError);
  }
}

}  // namespace
}  // namespace zorhost
