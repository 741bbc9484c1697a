// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

// The pictures that runs of the program write.
#include <algorithm>

#include "host_run.h"
#include "picture_sink.h"
#include "still.h"

namespace zorhost {
namespace {

using test::Even;
using test::HostRun;
using test::MakeY4m;
using test::Result;
using test::Y4mOf;

TEST_F(HostRun, PlanarClipComesBackByteForByteThroughAPipe) {
  const std::string bytes = MakeY4m(16, 8, 3, " F25:1 Ip A1:1 C420jpeg");
  folder_.Make("in.y4m", bytes);
  const Result result = RunWell("convert - -o - --to yuv420 <" +
                                std::filesystem::path(File("in.y4m")).make_preferred().string());
  EXPECT_EQ(result.out, bytes);
}

TEST_F(HostRun, OddClipIsCutAndSaysSo) {
  const Result result =
      RunWell("convert " + Clip("in.y4m", 17, 9, 1) + " -o " + File("o.png") + " --to rgb24");
  EXPECT_SAYS(result, "odd size: of 17x9 the left upper 16x8 is used");
  EXPECT_EQ(ReadStill(File("o.png")).info.width, 16);
}

TEST_F(HostRun, ColoursComeOutAsTheyWentIn) {
  // BT.601 video range: luma 81, U 90, V 240 is pure red, 41 240 110 pure blue.
  const auto uniform = [&](int y, int u, int v) {
    folder_.Make("in.y4m", Y4mOf(16, 16, {Even(256, y) + Even(64, u) + Even(64, v)}));
  };
  const auto middle = [&](const std::string& to) {
    RunWell("convert " + File("in.y4m") + " -o " + File("o.ppm") + " --to " + to);
    const Still still = ReadStill(File("o.ppm"));
    const std::uint8_t* pixel = still.picture.row(0, 4) + 4 * 3;
    return std::vector<int>{pixel[2], pixel[1], pixel[0]};
  };
  for (const char* to : {"rgb24", "rgb32"}) {
    uniform(81, 90, 240);
    const std::vector<int> red = middle(to);
    EXPECT_GT(red[0], 250);
    EXPECT_LT(red[1], 5);
    EXPECT_LT(red[2], 5);
    uniform(41, 240, 110);
    const std::vector<int> blue = middle(to);
    EXPECT_LT(blue[0], 5);
    EXPECT_LT(blue[1], 5);
    EXPECT_GT(blue[2], 250);
  }
}

TEST_F(HostRun, ResultIsUpright) {
  folder_.Make("in.y4m", Y4mOf(8, 8, {Even(32, 235) + Even(32, 16) + Even(32, 128)}));
  for (const char* flags : {"", " --bottom-up", " --eager", " --eager --bottom-up"}) {
    RunWell("convert " + File("in.y4m") + " -o " + File("o.bmp") + " --to rgb24" + flags);
    const Still still = ReadStill(File("o.bmp"));
    EXPECT_GT(still.picture.row(0, 0)[0], 250) << flags;
    EXPECT_LT(still.picture.row(0, 7)[0], 5) << flags;
    EXPECT_EQ(still.info.bottomUp, std::string(flags).find("bottom") != std::string::npos);
  }
}

TEST_F(HostRun, FitKeepsTheAspectBetweenBlackBands) {
  folder_.Make("in.y4m", Y4mOf(32, 16, {Even(512, 235) + Even(256, 128)}));
  RunWell("resize " + File("in.y4m") + " -o " + File("o.png") +
          " --size 16x16 --fit contain --to rgb32");
  const Still still = ReadStill(File("o.png"));
  ASSERT_EQ(still.info.width, 16);
  ASSERT_EQ(still.info.height, 16);
  EXPECT_LT(still.picture.row(0, 0)[8 * 3], 5);
  EXPECT_GT(still.picture.row(0, 8)[8 * 3], 250);
  EXPECT_LT(still.picture.row(0, 15)[8 * 3], 5);
}

TEST_F(HostRun, CoverFillsTheTargetFromTheMiddle) {
  std::string frame;
  for (int y = 0; y < 16; ++y) frame += Even(8, 16) + Even(16, 235) + Even(8, 16);
  folder_.Make("in.y4m", Y4mOf(32, 16, {frame + Even(256, 128)}));
  RunWell("resize " + File("in.y4m") + " -o " + File("o.png") +
          " --size 8x8 --fit cover --to rgb24");
  const Still still = ReadStill(File("o.png"));
  for (int x = 0; x < 8; ++x) EXPECT_GT(still.picture.row(0, 4)[3 * x], 250) << x;
}

TEST_F(HostRun, MonoStaysGrayOrGetsNeutralChroma) {
  const std::string clip = folder_.Make("in.y4m", MakeY4m(16, 16, 1, " F25:1 Cmono"));
  RunWell("resize " + clip + " --size 8x8 --to gray -o " + File("o.pgm"));
  EXPECT_EQ(ReadStill(File("o.pgm")).info.layout, Layout::kGray8);
  const Result colour = RunWell("convert " + clip + " --to rgb24 -o " + File("o.png"));
  EXPECT_SAYS(colour, "handed in as yuv420 with neutral chroma");
  const Still still = ReadStill(File("o.png"));
  EXPECT_EQ(still.picture.row(0, 8)[3 * 8], still.picture.row(0, 8)[3 * 8 + 2]);
}

TEST_F(HostRun, SheetPutsPicturesOnGrayPaper) {
  Picture white(Layout::kRgb24, 16, 8);
  std::fill(white.data(), white.data() + white.size(), 255);
  WritePicture(white, File("a.png"));
  RunWell("sheet " + File("a.png") + " " + File("a.png") + " -o " + File("s.png") +
          " --cell 8x8 --columns 2");
  const Still sheet = ReadStill(File("s.png"));
  EXPECT_EQ(sheet.info.width, 2 * 12 + 4);
  EXPECT_EQ(sheet.info.height, 16);
  EXPECT_EQ(sheet.picture.row(0, 4 + 1)[3 * 5], 0x80);  // above the picture of 8 x 4
  EXPECT_EQ(sheet.picture.row(0, 4 + 3)[3 * 5], 255);
}

}  // namespace
}  // namespace zorhost
