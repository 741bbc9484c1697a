// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include <gtest/gtest.h>
#include <zorsurface/scale_mode.h>

#include <CLI/CLI.hpp>

#include "exit_code.h"
#include "frame_sink.h"
#include "progress.h"
#include "raw.h"
#include "run_flags.h"
#include "scale_options.h"
#include "text.h"

namespace zorhost {
namespace {

TEST(Options, SizesAreTwoWholeNumbers) {
  EXPECT_EQ(ParseSize("640x360", "--size").width, 640);
  EXPECT_EQ(ParseSize("640x360", "--size").height, 360);
  for (const char* bad : {"", "640", "640x", "x360", "640X360", "0x4", "-4x4", "4x4x4", "4 x4",
                          "65536x4", "4294967300x4"}) {
    EXPECT_THROW(ParseSize(bad, "--size"), UsageError) << bad;
  }
}

TEST(Options, ScaleIsARatioOrAWholeNumber) {
  EXPECT_EQ(ParseScale("1/2").den, 2);
  EXPECT_EQ(ParseScale("3").num, 3);
  for (const char* bad : {"", "1/0", "0/2", "/2", "1/", "-1/2", "1.5", "1/2/3"}) {
    EXPECT_THROW(ParseScale(bad), UsageError) << bad;
  }
}

TEST(Options, ScaledSizesRoundToWholeOrEvenPixels) {
  EXPECT_EQ(ScaledSize(15, 10, {1, 2}, false).width, 8);  // 7.5 rounds up
  EXPECT_EQ(ScaledSize(14, 10, {1, 2}, true).width, 8);   // 7 is as near to 6 as to 8
  EXPECT_EQ(ScaledSize(1920, 1080, {1, 3}, true).height, 360);
  EXPECT_THROW(ScaledSize(8, 8, {1, 3}, false), UsageError);  // 3 is under 4
  EXPECT_THROW(ScaledSize(65535, 8, {2, 1}, false), UsageError);
}

TEST(Options, EveryScaleModeHasItsName) {
  EXPECT_EQ(ModeFromName("nearest"), SCALE_NEAREST);
  EXPECT_EQ(ModeFromName("bilinear"), SCALE_BILINEAR);
  EXPECT_EQ(ModeFromName("bilinear-fade"), SCALE_BILINEAR_FADE);
  EXPECT_EQ(ModeFromName("box"), SCALE_BOX);
  EXPECT_EQ(ModeFromName("box-fade"), SCALE_BOX_FADE);
  EXPECT_EQ(ModeFromName("row-pairs"), SCALE_ROW_PAIRS);
  EXPECT_EQ(ModeFromName("area"), SCALE_AREA);
  EXPECT_EQ(ModeFromName("planar-nearest"), SCALE_PLANAR_NEAREST);
  EXPECT_EQ(ModeFromName("planar-sharpen"), SCALE_PLANAR_SHARPEN);
  EXPECT_EQ(ModeFromName("planar-area"), SCALE_PLANAR_AREA);
  EXPECT_THROW(ModeFromName("bicubic"), UsageError);
}

TEST(Options, UnknownFormatNamesTheKnownOnes) {
  try {
    LayoutFromName("rgb48");
    FAIL();
  } catch (const HostError& error) {
    EXPECT_EQ(error.code(), ExitCode::kUsage);
    EXPECT_NE(std::string(error.what()).find("rgb24, rgb32, gray, yuv420, yuy2, yvu420"),
              std::string::npos)
        << error.what();
  }
}

TEST(Options, FrameRangesHaveTwoEndsOfWhichTheLastMayBeOpen) {
  EXPECT_EQ(ParseFrames("").last, -1);
  EXPECT_EQ(ParseFrames("7").first, 7);
  EXPECT_EQ(ParseFrames("7").last, 7);
  EXPECT_EQ(ParseFrames("3-9").last, 9);
  EXPECT_EQ(ParseFrames("3-").first, 3);
  EXPECT_EQ(ParseFrames("3-").last, -1);
  for (const char* bad : {"-", "-3", "9-3", "a", "1-b"}) {
    EXPECT_THROW(ParseFrames(bad), UsageError) << bad;
  }
}

TEST(Options, RawShapesHaveASizeAndAFormat) {
  const RawShape shape = ParseRawShape("8x6:yuy2");
  EXPECT_EQ(shape.width, 8);
  EXPECT_EQ(shape.height, 6);
  EXPECT_EQ(shape.layout, Layout::kYuy2);
  EXPECT_THROW(ParseRawShape("8x6"), UsageError);
  EXPECT_THROW(ParseRawShape("8x6:argb"), UsageError);
}

TEST(Options, NumberedNamesTakeTheirDigitsFromThePattern) {
  const auto name = NumberedName::Parse("a/img%04d.png");
  ASSERT_TRUE(name);
  EXPECT_EQ(name->At(7), "a/img0007.png");
  EXPECT_EQ(name->At(12345), "a/img12345.png");
  EXPECT_EQ(NumberedName::Parse("i%d.png")->At(12), "i12.png");
  EXPECT_FALSE(NumberedName::Parse("img.png"));
  EXPECT_FALSE(NumberedName::Parse("100%.png"));
  EXPECT_FALSE(NumberedName::Parse("img%s.png"));
}

TEST(Options, TheEndingDecidesTheKindOfOutput) {
  EXPECT_EQ(SinkKindOf("-"), SinkKind::kY4m);
  EXPECT_EQ(SinkKindOf("A.PNG"), SinkKind::kPng);
  EXPECT_EQ(SinkKindOf("out%04d.bmp"), SinkKind::kBmp);
  EXPECT_THROW(SinkKindOf("clip.mov"), UsageError);
  EXPECT_THROW(SinkKindOf("folder.d/clip"), UsageError);
}

TEST(Options, ResultSuitsTheOutputUnlessNamed) {
  EXPECT_EQ(ResultLayout("", "o.png", Layout::kYvu420), Layout::kRgb24);
  EXPECT_EQ(ResultLayout("", "o.y4m", Layout::kYvu420), Layout::kYuv420);
  EXPECT_EQ(ResultLayout("", "o.y4m", Layout::kRgb24), Layout::kYuv420);
  EXPECT_EQ(ResultLayout("", "o.bmp", Layout::kRgb32), Layout::kRgb32);
  EXPECT_EQ(ResultLayout("rgb32", "o.png", Layout::kYvu420), Layout::kRgb32);
}

RunOptions ParseRun(std::vector<std::string> words) {
  RunOptions options;
  CLI::App app;
  AddRunFlags(app, options);
  std::reverse(words.begin(), words.end());
  app.parse(words);
  return options;
}

TEST(Options, HashTakesAFileOnlyBehindAnEqualsSign) {
  EXPECT_EQ(ParseRun({"in.y4m"}).hash, "");
  const RunOptions plain = ParseRun({"--hash", "in.y4m"});
  EXPECT_EQ(plain.hash, "-");
  EXPECT_EQ(plain.input, "in.y4m");
  EXPECT_EQ(ParseRun({"in.y4m", "--hash=h.txt"}).hash, "h.txt");
}

TEST(Options, ADashIsStandardInputAndOutput) {
  const RunOptions options = ParseRun({"-", "-o", "-"});
  EXPECT_EQ(options.input, "-");
  EXPECT_EQ(options.output, "-");
}

TEST(ProgressText, ShowsShareRateAndTimeLeft) {
  EXPECT_EQ(ProgressLine("convert", 20, 40, 2.0),
            "convert  [############............]  20/40   50 %  10.0 fps  0:02 left");
  EXPECT_EQ(ProgressLine("convert", 20, -1, 2.0), "convert  20 frames  10.0 fps");
  EXPECT_EQ(ProgressLine("resize", 50, 40, 2.0).find("[########################]"), 8u);
}

TEST(ProgressText, UnknownModeIsRefused) {
  EXPECT_EQ(ProgressModeFromName("json"), ProgressMode::kJson);
  EXPECT_THROW(ProgressModeFromName("html"), UsageError);
}

}  // namespace
}  // namespace zorhost
