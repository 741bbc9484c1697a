// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <array>

#include "exit_code.h"
#include "quadrants.h"
#include "text.h"

namespace zorhost {
namespace {

using test::ExpectQuarters;
using test::kBlue;
using test::kGreen;
using test::kRed;
using test::kWhite;
using test::PaintQuarters;
using test::PlanOf;
using test::Quarters;
using test::RunPlan;

constexpr Layout kTurned[] = {Layout::kRgb24, Layout::kRgb32, Layout::kGray8, Layout::kYuv420,
                              Layout::kYuy2};
using Background = std::optional<std::uint32_t>;

void Turn(Plan& plan, int degrees, Background background = {}) {
  plan.Rotate(degrees, background);
}

/// What stands in the quarters after a turn clockwise by a right angle.
Quarters Clockwise(int degrees) {
  switch (degrees) {
    case 90:
      return {kBlue, kRed, kWhite, kGreen};
    case 180:
      return {kWhite, kBlue, kGreen, kRed};
    default:
      return {kGreen, kWhite, kRed, kBlue};
  }
}

TEST(Turn, EveryFormatTurnsClockwiseAsItIsSeen) {
  for (const Layout layout : kTurned) {
    const Picture in = PaintQuarters(layout, 64, 32);
    for (const int degrees : {90, 180, 270}) {
      Plan plan = PlanOf(in, layout);
      Turn(plan, degrees);
      const std::string name = std::string(Traits(layout).name) + " " + std::to_string(degrees);
      for (const Way way : {Way::kDeferred, Way::kEager}) {
        const Picture out = RunPlan(plan, in, way);
        EXPECT_EQ(out.width(), degrees == 180 ? 64 : 32) << name;
        EXPECT_EQ(out.height(), degrees == 180 ? 32 : 64) << name;
        ExpectQuarters(out, Clockwise(degrees), name);
      }
    }
  }
}

TEST(Turn, RowsThatLieTheOtherWayRoundTurnClockwiseToo) {
  const Picture in = PaintQuarters(Layout::kYuy2, 64, 32);
  for (const Layout layout : {Layout::kRgb24, Layout::kYuv420}) {
    Plan plan = PlanOf(in, Layout::kRgb32);
    plan.Convert(Layout::kRgb32);
    plan.Convert(layout);
    ASSERT_TRUE(plan.result().turnedOver);
    Turn(plan, 90);
    ExpectQuarters(RunPlan(plan, in), Clockwise(90), Traits(layout).name);
  }
}

TEST(Turn, ResizesAndConversionsGoOnBehindATurn) {
  const Picture in = PaintQuarters(Layout::kYvu420, 64, 32);
  Plan plan = PlanOf(in, Layout::kRgb32);
  plan.Resize(96, 48, false, 1);
  Turn(plan, 90);
  plan.Convert(Layout::kRgb32);
  plan.Resize(32, 64, false, 1);
  for (const Way way : {Way::kDeferred, Way::kEager, Way::kExport}) {
    for (const bool bottomUp : {false, true}) {
      ExpectQuarters(RunPlan(plan, in, way, bottomUp), Clockwise(90), "resized");
    }
  }
}

Picture WhitePicture(Layout layout, int width, int height) {
  Picture picture(layout, width, height);
  std::fill(picture.data(), picture.data() + picture.size(), 255);
  return picture;
}

int CountOf(const Picture& picture, int r, int g, int b) {
  const int step = Traits(picture.layout()).bitsPerPixel / 8;
  int count = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const std::uint8_t* p = picture.row(0, y) + x * step;
      count += p[0] == b && p[1] == g && p[2] == r;
    }
  }
  return count;
}

TEST(Turn, RightAnglesLeaveAnEdgeOfPackedPicturesBlackOrInTheBackground) {
  for (const Layout layout : {Layout::kRgb24, Layout::kRgb32}) {
    const Picture in = WhitePicture(layout, 64, 32);
    for (const int degrees : {90, 180, 270}) {
      Plan plan = PlanOf(in, layout);
      Turn(plan, degrees);
      const Picture bare = RunPlan(plan, in);
      const int black = CountOf(bare, 0, 0, 0);
      EXPECT_GE(black, 32) << degrees;
      EXPECT_EQ(CountOf(bare, 255, 255, 255), 64 * 32 - black) << degrees;
      const int step = Traits(layout).bitsPerPixel / 8;
      for (int y = 2; y < bare.height() - 2; ++y) {
        for (int x = 2; x < bare.width() - 2; ++x) EXPECT_EQ(bare.row(0, y)[x * step], 255);
      }
      Plan painted = PlanOf(in, layout);
      Turn(painted, degrees, 0xFF8040);
      const Picture out = RunPlan(painted, in);
      EXPECT_EQ(CountOf(out, 0xFF, 0x80, 0x40), black) << degrees;
      EXPECT_EQ(CountOf(out, 255, 255, 255), 64 * 32 - black) << degrees;
    }
  }
}

TEST(Turn, RightAnglesOfPlanarPicturesAreWhole) {
  const Picture in = WhitePicture(Layout::kYvu420, 64, 32);
  for (const int degrees : {90, 180, 270}) {
    Plan plan = PlanOf(in, Layout::kYuv420);
    Turn(plan, degrees);
    const Picture out = RunPlan(plan, in);
    EXPECT_TRUE(std::all_of(out.data(), out.data() + 64 * 32 * 3 / 2, [](std::uint8_t sample) {
      return sample == 255;
    })) << degrees;
  }
}

TEST(Turn, TheBackgroundStandsInTheCornersInEveryFormat) {
  for (const Layout layout : kTurned) {
    const Picture in = PaintQuarters(layout, 64, 64);
    Plan plan = PlanOf(in, layout);
    Turn(plan, 45, 0xFF0000);
    const Picture out = RunPlan(plan, in);
    const std::string name = Traits(layout).name;
    for (const int y : {1, out.height() - 2}) {
      for (const int x : {0, out.width() - 2}) {
        if (Traits(layout).rgb) {
          const std::uint8_t* pixel = out.row(0, y) + x * (Traits(layout).bitsPerPixel / 8);
          EXPECT_EQ(pixel[0], 0) << name;
          EXPECT_EQ(pixel[1], 0) << name;
          EXPECT_EQ(pixel[2], 255) << name;
          continue;
        }
        EXPECT_NEAR(out.row(0, y)[x], kRed.y, 1) << name;
        if (layout == Layout::kGray8) continue;
        EXPECT_NEAR(out.row(1, y / 2)[x / 2], kRed.v, 1) << name;
        EXPECT_NEAR(out.row(2, y / 2)[x / 2], kRed.u, 1) << name;
      }
    }
    // The middle is the picture's.
    EXPECT_EQ(out.width() % 2, 0);
  }
}

TEST(Turn, TheBackgroundOfAPictureWithAlphaIsOpaque) {
  Picture in = WhitePicture(Layout::kRgb32, 32, 32);
  in.hasAlpha = true;
  for (const Background background : {Background(), Background(0x102030)}) {
    Plan plan = PlanOf(in, Layout::kRgb32);
    Turn(plan, 45, background);
    const Picture out = RunPlan(plan, in);
    EXPECT_TRUE(out.hasAlpha);
    EXPECT_EQ(out.row(0, 0)[3], background ? 255 : 0);
    EXPECT_EQ(out.row(0, out.height() / 2)[4 * (out.width() / 2) + 3], 255);
  }
}

TEST(Turn, ColoursAreReadFromSixDigits) {
  EXPECT_EQ(ParseColour("ff8001", "--background"), 0xFF8001u);
  for (const char* wrong : {"", "ff800", "ff80011", "gg0000", "-12345", "0x1234"}) {
    EXPECT_THROW(ParseColour(wrong, "--background"), UsageError) << wrong;
  }
}

}  // namespace
}  // namespace zorhost
