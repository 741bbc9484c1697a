// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "y4m.h"

#include "exit_code.h"
#include "scratch_folder.h"

namespace zorhost {
namespace {

using test::MakeY4m;
using test::ScratchFolder;

TEST(Y4mHeader, TakesSizeRateAspectSitingAndRange) {
  const StreamInfo info = ParseY4mHeader(
      "YUV4MPEG2 W1920 H1080 F30000:1001 Ip A4:3 C420mpeg2 XCOLORRANGE=FULL", "clip");
  EXPECT_EQ(info.width, 1920);
  EXPECT_EQ(info.height, 1080);
  EXPECT_EQ(info.frameRate.num, 30000);
  EXPECT_EQ(info.frameRate.den, 1001);
  EXPECT_EQ(info.sampleAspect.num, 4);
  EXPECT_EQ(info.chromaSiting, "left");
  EXPECT_EQ(info.range, Range::kFull);
  EXPECT_EQ(info.layout, Layout::kYvu420);
}

TEST(Y4mHeader, WithoutChromaWordIs420) {
  EXPECT_EQ(ParseY4mHeader("YUV4MPEG2 W4 H4", "clip").layout, Layout::kYvu420);
}

TEST(Y4mHeader, MonoIsGray) {
  EXPECT_EQ(ParseY4mHeader("YUV4MPEG2 W4 H4 Cmono", "clip").layout, Layout::kGray8);
}

TEST(Y4mHeader, EveryKnownSitingIsRead) {
  EXPECT_EQ(ParseY4mHeader("YUV4MPEG2 W4 H4 C420jpeg", "clip").chromaSiting, "centre");
  EXPECT_EQ(ParseY4mHeader("YUV4MPEG2 W4 H4 C420mpeg2", "clip").chromaSiting, "left");
  EXPECT_EQ(ParseY4mHeader("YUV4MPEG2 W4 H4 C420paldv", "clip").chromaSiting, "top left");
}

TEST(Y4mHeader, RefusesOtherMagicMissingSizeAndOtherChroma) {
  for (const char* line : {"YUV4MPEG W4 H4", "YUV4MPEG2 H4", "YUV4MPEG2 W4", "YUV4MPEG2 W0 H4",
                           "YUV4MPEG2 W-4 H4", "YUV4MPEG2 W4x H4", "YUV4MPEG2 W4 H70000",
                           "YUV4MPEG2 W4 H4 C422", "YUV4MPEG2 W4 H4 C420p10", ""}) {
    try {
      ParseY4mHeader(line, "clip");
      ADD_FAILURE() << "took: " << line;
    } catch (const HostError& error) {
      EXPECT_EQ(error.code(), ExitCode::kInput) << line;
    }
  }
}

TEST(Y4mReader, ReadsPlanesInFileOrderAndEndsAfterTheLastFrame) {
  const ScratchFolder folder;
  const std::string bytes = MakeY4m(6, 4, 2);
  const auto source = OpenY4m(folder.Make("in.y4m", bytes));
  Frame frame;
  ASSERT_TRUE(source->Read(frame));
  const std::size_t first = bytes.find("FRAME\n") + 6;
  EXPECT_EQ(frame.picture.row(0, 1)[2], static_cast<std::uint8_t>(bytes[first + 6 + 2]));
  EXPECT_EQ(frame.picture.row(1, 1)[0], static_cast<std::uint8_t>(bytes[first + 24 + 3]));
  EXPECT_EQ(frame.picture.row(2, 0)[1], static_cast<std::uint8_t>(bytes[first + 24 + 6 + 1]));
  EXPECT_TRUE(source->Read(frame));
  EXPECT_FALSE(source->Read(frame));
}

TEST(Y4mReader, OddSizesHaveChromaRoundedUp) {
  const ScratchFolder folder;
  const auto source = OpenY4m(folder.Make("in.y4m", MakeY4m(5, 3, 2)));
  Frame frame;
  ASSERT_TRUE(source->Read(frame));
  EXPECT_EQ(frame.picture.plane(1).rowBytes, 3);
  EXPECT_EQ(frame.picture.plane(2).rows, 2);
  EXPECT_TRUE(source->Read(frame));
  EXPECT_FALSE(source->Read(frame));
}

TEST(Y4mReader, TruncationNamesTheFrameAndTheBytes) {
  const ScratchFolder folder;
  const std::string bytes = MakeY4m(6, 4, 2);
  const auto source = OpenY4m(folder.Make("in.y4m", bytes.substr(0, bytes.size() - 5)));
  Frame frame;
  ASSERT_TRUE(source->Read(frame));
  try {
    source->Read(frame);
    FAIL() << "a truncated frame was taken";
  } catch (const HostError& error) {
    EXPECT_EQ(error.code(), ExitCode::kInput);
    EXPECT_NE(std::string(error.what()).find("truncated in frame 1 (31 of 36 bytes)"),
              std::string::npos)
        << error.what();
  }
}

TEST(Y4mReader, DamageBetweenFramesIsFound) {
  const ScratchFolder folder;
  std::string bytes = MakeY4m(6, 4, 2);
  bytes[bytes.rfind("FRAME")] = 'G';
  const auto source = OpenY4m(folder.Make("in.y4m", bytes));
  Frame frame;
  ASSERT_TRUE(source->Read(frame));
  EXPECT_THROW(source->Read(frame), InputError);
}

TEST(Y4mReader, EmptyFileAndEndlessLineAreRefused) {
  const ScratchFolder folder;
  EXPECT_THROW(OpenY4m(folder.Make("empty.y4m", "")), InputError);
  try {
    OpenY4m(folder.Make("line.y4m", std::string(10000, 'W')));
    FAIL();
  } catch (const HostError& error) {
    EXPECT_EQ(error.code(), ExitCode::kInput);
    EXPECT_NE(std::string(error.what()).find("line without an end"), std::string::npos)
        << error.what();
  }
}

TEST(Y4mRoundTrip, GivesTheSameBytes) {
  const ScratchFolder folder;
  const std::string bytes = MakeY4m(6, 4, 3, " F25:1 Ip A1:1 C420mpeg2 XCOLORRANGE=LIMITED");
  const auto source = OpenY4m(folder.Make("in.y4m", bytes));
  const auto sink = MakeY4mSink(folder.File("out.y4m"));
  Frame frame;
  while (source->Read(frame)) sink->Write(frame, source->info());
  sink->Finish();
  EXPECT_EQ(folder.Bytes("out.y4m"), bytes);
}

TEST(Y4mRoundTrip, TimesOfAVariableRateComeBack) {
  const ScratchFolder folder;
  const auto source = OpenY4m(folder.Make("in.y4m", MakeY4m(4, 4, 2)));
  const auto sink = MakeY4mSink(folder.File("out.y4m"));
  StreamInfo info = source->info();
  info.variableRate = true;
  Frame frame;
  for (const int time : {6, 3003}) {
    ASSERT_TRUE(source->Read(frame));
    frame.time = time;
    frame.timeBase = {1, 90000};
    sink->Write(frame, info);
  }
  sink->Finish();
  const auto again = OpenY4m(folder.File("out.y4m"));
  ASSERT_TRUE(again->Read(frame));
  EXPECT_EQ(frame.time, 6);
  ASSERT_TRUE(again->Read(frame));
  EXPECT_EQ(frame.time, 3003);
  EXPECT_EQ(frame.timeBase.den, 90000);
}

TEST(Y4mSink, WritesTheLibrarysPlaneOrderAsUThenV) {
  const ScratchFolder folder;
  Frame frame;
  frame.picture = Picture(Layout::kYuv420, 4, 4);  // planes Y, V, U
  std::fill_n(frame.picture.row(0, 0), 16, 'y');
  std::fill_n(frame.picture.row(1, 0), 4, 'v');
  std::fill_n(frame.picture.row(2, 0), 4, 'u');
  const auto sink = MakeY4mSink(folder.File("out.y4m"));
  sink->Write(frame, StreamInfo{});
  sink->Finish();
  const std::string bytes = folder.Bytes("out.y4m");
  EXPECT_EQ(bytes.substr(bytes.size() - 24), std::string(16, 'y') + "uuuuvvvv");
}

TEST(Y4mSink, LeavesNoFileWithoutFinish) {
  const ScratchFolder folder;
  {
    Frame frame;
    frame.picture = Picture(Layout::kYvu420, 4, 4);
    MakeY4mSink(folder.File("out.y4m"))->Write(frame, StreamInfo{});
  }
  EXPECT_FALSE(folder.Has("out.y4m"));
  EXPECT_FALSE(folder.Has("out.y4m.part"));
}

}  // namespace
}  // namespace zorhost
