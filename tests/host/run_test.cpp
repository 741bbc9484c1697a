// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

// Whole runs of the program as a user starts it, looked at from outside: exit codes, messages,
// files. The program stands in the working folder.
#include <algorithm>
#include <cstdlib>

#include "host_run.h"
#include "picture_sink.h"
#include "still.h"
#ifndef _WIN32
#include <fcntl.h>
#include <signal.h>
#include <unistd.h>
#endif

namespace zorhost {
namespace {

using test::HostRun;
using test::MakeY4m;
using test::Result;

TEST_F(HostRun, HelpAndVersionEndWell) {
  EXPECT_EQ(Run("--help").code, 0);
  EXPECT_EQ(Run("resize --help").code, 0);
  EXPECT_EQ(Run("--version").code, 0);
}

TEST_F(HostRun, UsageErrorsEndWithTwo) {
  EXPECT_EQ(Run("").code, 2);
  EXPECT_EQ(Run("nonsense").code, 2);
  EXPECT_EQ(Run("convert").code, 2);
  const std::string clip = Clip("in.y4m", 16, 16, 1);
  Result result = Run("convert " + clip + " -o " + File("o.png") + " --to rgb48");
  EXPECT_EQ(result.code, 2);
  EXPECT_SAYS(result, "unknown format 'rgb48'; known: rgb24");
  result = Run("convert " + clip + " -o " + File("o.mov") + " --to rgb24");
  EXPECT_EQ(result.code, 2);
  EXPECT_SAYS(result, "the ending decides the kind of output");
  result = Run("convert " + clip + " -o " + File("o.png") + " --to yuv420");
  EXPECT_EQ(result.code, 2);
  EXPECT_SAYS(result, "can't hold yuv420; add --to rgb24");
  result = Run("convert " + clip + " --to rgb24");
  EXPECT_EQ(result.code, 2);
  EXPECT_SAYS(result, "nothing to do");
  result = Run("resize " + clip + " -o " + File("o.y4m") + " --size 9x8");
  EXPECT_EQ(result.code, 2);
  EXPECT_SAYS(result, "even width and height");
  result = Run("resize " + clip + " -o " + File("o.y4m"));
  EXPECT_EQ(result.code, 2);
  EXPECT_SAYS(result, "either --size WxH or --scale N/M");
}

TEST_F(HostRun, MissingInputEndsWithThreeAndLeavesNothing) {
  const Result result =
      Run("convert " + File("absent.y4m") + " -o " + File("o.png") + " --to rgb24");
  EXPECT_EQ(result.code, 3);
  EXPECT_SAYS(result, "absent.y4m: No such file");
  EXPECT_FALSE(folder_.Has("o.png"));
}

TEST_F(HostRun, TinyInputEndsWithThree) {
  const Result result =
      Run("convert " + Clip("in.y4m", 2, 2, 1) + " -o " + File("o.png") + " --to rgb24");
  EXPECT_EQ(result.code, 3);
  EXPECT_SAYS(result, "2x2 is too small");
}

TEST_F(HostRun, ForeignChromaEndsWithThree) {
  const Result result = Run("info " + folder_.Make("in.y4m", "YUV4MPEG2 W16 H16 C444\nFRAME\n"));
  EXPECT_EQ(result.code, 3);
  EXPECT_SAYS(result, "Y4M chroma form C444 is not one the host reads");
}

TEST_F(HostRun, UnwritableOutputEndsWithFour) {
  const Result result = Run("convert " + Clip("in.y4m", 16, 16, 1) + " -o " +
                            File("no/such/folder/o.y4m") + " --to yuv420");
  EXPECT_EQ(result.code, 4);
}

TEST_F(HostRun, SecondFrameIntoOnePictureEndsWithFour) {
  const Result result =
      Run("convert " + Clip("in.y4m", 16, 16, 2) + " -o " + File("o.png") + " --to rgb24");
  EXPECT_EQ(result.code, 4);
  EXPECT_SAYS(result, "holds one picture; write a run of them as out%04d.png");
}

TEST_F(HostRun, LibraryErrorsEndWithFiveCodeAndText) {
  const Result result =
      Run("convert " + Clip("in.y4m", 16, 16, 1) + " -o " + File("o.png") + " --to gray");
  EXPECT_EQ(result.code, 5);
  EXPECT_SAYS(result, "yuv420 to gray: VED_E_UNSUPPORTED (0x81000001)");
  EXPECT_FALSE(folder_.Has("o.png"));
}

TEST_F(HostRun, TruncatedClipEndsWithThreeAndKeepsWholeFrames) {
  const std::string whole = MakeY4m(16, 16, 3);
  folder_.Make("in.y4m", whole.substr(0, whole.size() - 1));
  const Result result = Run("convert " + File("in.y4m") + " -o " + File("o.y4m") + " --to yuv420");
  EXPECT_EQ(result.code, 3);
  EXPECT_SAYS(result, "truncated in frame 2 (383 of 384 bytes)");
  EXPECT_SAYS(result, "the 2 whole frames before it were kept");
  const Result check = Run("info --frames " + File("o.y4m"));
  EXPECT_EQ(check.code, 0);
  EXPECT_NE(check.out.find("frames         2"), std::string::npos) << check.out;
}

TEST_F(HostRun, PlanarClipComesBackByteForByteThroughAPipe) {
  const std::string bytes = MakeY4m(16, 8, 3, " F25:1 Ip A1:1 C420jpeg");
  folder_.Make("in.y4m", bytes);
  const Result result = Run("convert - -o - --to yuv420 <" +
                            std::filesystem::path(File("in.y4m")).make_preferred().string());
  EXPECT_EQ(result.code, 0) << result.err;
  EXPECT_EQ(result.out, bytes);
}

TEST_F(HostRun, OddClipIsCutAndSaysSo) {
  const Result result =
      Run("convert " + Clip("in.y4m", 17, 9, 1) + " -o " + File("o.png") + " --to rgb24");
  EXPECT_EQ(result.code, 0) << result.err;
  EXPECT_SAYS(result, "odd size: of 17x9 the left upper 16x8 is used");
  EXPECT_EQ(ReadStill(File("o.png")).info.width, 16);
}

TEST_F(HostRun, ColoursComeOutAsTheyWentIn) {
  // BT.601 video range: luma 81, U 90, V 240 is pure red, 41 240 110 pure blue.
  const auto uniform = [&](int y, int u, int v) {
    std::string bytes = "YUV4MPEG2 W16 H16 F25:1 C420jpeg\nFRAME\n";
    bytes += std::string(256, static_cast<char>(y)) + std::string(64, static_cast<char>(u)) +
             std::string(64, static_cast<char>(v));
    return folder_.Make("in.y4m", bytes);
  };
  const auto middle = [&](const std::string& to) {
    const Result result = Run("convert " + File("in.y4m") + " -o " + File("o.ppm") + " --to " + to);
    EXPECT_EQ(result.code, 0) << result.err;
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

TEST_F(HostRun, TailColumnsOfRgb24AreTold) {
  const std::string job = " --to rgb24 --hash";
  const Result told = Run("convert " + Clip("in.y4m", 20, 16, 1) + job);
  EXPECT_EQ(told.code, 0) << told.err;
  EXPECT_SAYS(told, "the right 4 columns");
  const Result whole = Run("convert " + Clip("in.y4m", 32, 16, 1) + job);
  EXPECT_EQ(whole.err.find("columns"), std::string::npos) << whole.err;
}

TEST_F(HostRun, ResultIsUpright) {
  std::string bytes = "YUV4MPEG2 W8 H8 F25:1 C420jpeg\nFRAME\n";
  bytes += std::string(32, static_cast<char>(235)) + std::string(32, static_cast<char>(16)) +
           std::string(32, static_cast<char>(128));
  folder_.Make("in.y4m", bytes);
  for (const char* flags : {"", " --bottom-up", " --eager", " --eager --bottom-up"}) {
    const Result result =
        Run("convert " + File("in.y4m") + " -o " + File("o.bmp") + " --to rgb24" + flags);
    ASSERT_EQ(result.code, 0) << result.err;
    const Still still = ReadStill(File("o.bmp"));
    EXPECT_GT(still.picture.row(0, 0)[0], 250) << flags;
    EXPECT_LT(still.picture.row(0, 7)[0], 5) << flags;
    EXPECT_EQ(still.info.bottomUp, std::string(flags).find("bottom") != std::string::npos);
  }
}

TEST_F(HostRun, FitKeepsTheAspectBetweenBlackBands) {
  std::string bytes = "YUV4MPEG2 W32 H16 F25:1 C420jpeg\nFRAME\n";
  bytes += std::string(512, static_cast<char>(235)) + std::string(256, static_cast<char>(128));
  folder_.Make("in.y4m", bytes);
  const Result result = Run("resize " + File("in.y4m") + " -o " + File("o.png") +
                            " --size 16x16 --fit contain --to rgb32");
  ASSERT_EQ(result.code, 0) << result.err;
  const Still still = ReadStill(File("o.png"));
  ASSERT_EQ(still.info.width, 16);
  ASSERT_EQ(still.info.height, 16);
  EXPECT_LT(still.picture.row(0, 0)[8 * 3], 5);
  EXPECT_GT(still.picture.row(0, 8)[8 * 3], 250);
  EXPECT_LT(still.picture.row(0, 15)[8 * 3], 5);
}

TEST_F(HostRun, CoverFillsTheTargetFromTheMiddle) {
  std::string bytes = "YUV4MPEG2 W32 H16 F25:1 C420jpeg\nFRAME\n";
  for (int y = 0; y < 16; ++y) {
    bytes += std::string(8, 16) + std::string(16, static_cast<char>(235)) + std::string(8, 16);
  }
  bytes += std::string(256, static_cast<char>(128));
  folder_.Make("in.y4m", bytes);
  const Result result = Run("resize " + File("in.y4m") + " -o " + File("o.png") +
                            " --size 8x8 --fit cover --to rgb24");
  ASSERT_EQ(result.code, 0) << result.err;
  const Still still = ReadStill(File("o.png"));
  for (int x = 0; x < 8; ++x) EXPECT_GT(still.picture.row(0, 4)[3 * x], 250) << x;
}

TEST_F(HostRun, EagerAndDeferredGiveTheSameHashes) {
  const std::string clip = Clip("in.y4m", 48, 32, 3);
  for (const char* job :
       {"resize %s --size 32x32 --fit contain --to rgb32", "resize %s --size 24x16 --to rgb24",
        "resize %s --size 64x48 --fit contain --to yuv420", "convert %s --to rgb32",
        "convert %s --to rgb24 --bottom-up --pitch 160", "convert %s --to yvu420",
        "resize %s --scale 1/2 --fit contain --to yvu420 --bottom-up",
        "resize %s --size 20x30 --fit cover --to rgb24"}) {
    std::string arguments = job;
    arguments.replace(arguments.find("%s"), 2, clip);
    const Result deferred = Run(arguments + " --hash --quiet");
    const Result eager = Run(arguments + " --hash --quiet --eager");
    EXPECT_EQ(deferred.code, 0) << job << deferred.err;
    EXPECT_EQ(deferred.out, eager.out) << job;
    EXPECT_NE(deferred.out.find("2 "), std::string::npos) << job;
    const Result both = Run(arguments + " --verify");
    EXPECT_EQ(both.code, 0) << job;
    EXPECT_SAYS(both, "deferred and eager agree");
  }
}

TEST_F(HostRun, EagerAndDeferredAgreeForPicturesToo) {
  Picture art(Layout::kRgb24, 48, 32);
  for (std::size_t i = 0; i < art.size(); ++i) {
    art.data()[i] = static_cast<std::uint8_t>(i * i / 97 + i);
  }
  WritePicture(art, File("in.png"));
  for (const char* rest :
       {"--to rgb32", "--to yuv420", "--to yuy2", "--to yvu420", "--via yuv420 --to rgb24",
        "--via yuy2 --to rgb32", "--via yuy2 --to yuv420", "--via yuv420,yuy2 --to rgb24"}) {
    for (const char* order : {"", " --bottom-up"}) {
      const Result result = Run("convert " + File("in.png") + " " + rest + order + " --verify");
      EXPECT_EQ(result.code, 0) << rest << order << result.err;
    }
  }
  for (const char* rest :
       {"--size 33x21", "--scale 2 --mode bilinear-fade", "--scale 3/2 --mode area",
        "--size 40x40 --fit contain --bottom-up", "--size 30x30 --fit cover --to rgb32"}) {
    const Result result = Run("resize " + File("in.png") + " " + rest + " --verify");
    EXPECT_EQ(result.code, 0) << rest << result.err;
  }
}

TEST_F(HostRun, ExportedBitmapHoldsTheSamePicture) {
  const std::string clip = Clip("in.y4m", 48, 32, 1);
  for (const char* job :
       {"convert %s --to rgb24", "convert %s --to rgb32",
        "resize %s --size 30x20 --fit contain --to rgb24", "convert %s --to yuv420"}) {
    std::string arguments = job;
    arguments.replace(arguments.find("%s"), 2, clip);
    const Result result = Run(arguments + " --dib --verify");
    EXPECT_EQ(result.code, 0) << job << result.err;
    EXPECT_SAYS(result, "export and eager agree");
  }
  EXPECT_EQ(Run("convert " + clip + " --to rgb24 --dib --eager --hash").code, 2);
}

TEST_F(HostRun, HashesDoNotSeePitchOrRowOrder) {
  const std::string clip = Clip("in.y4m", 48, 32, 1);
  const Result plain = Run("convert " + clip + " --to rgb24 --hash -q");
  EXPECT_EQ(plain.code, 0) << plain.err;
  EXPECT_EQ(Run("convert " + clip + " --to rgb24 --hash -q --bottom-up").out, plain.out);
  EXPECT_EQ(Run("convert " + clip + " --to rgb24 --hash -q --pitch 200").out, plain.out);
}

TEST_F(HostRun, FrameChoiceCountsFromZero) {
  const std::string clip = Clip("in.y4m", 16, 16, 7);
  const Result result =
      Run("convert " + clip + " --to yuv420 --hash=" + File("h.txt") + " --frames 1-5 --every 2");
  EXPECT_EQ(result.code, 0) << result.err;
  const std::string lines = folder_.Bytes("h.txt");
  EXPECT_EQ(lines.substr(0, 2), "1 ");
  EXPECT_NE(lines.find("\n3 "), std::string::npos) << lines;
  EXPECT_NE(lines.find("\n5 "), std::string::npos) << lines;
  EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 3);
  EXPECT_EQ(Run("convert " + clip + " --to yuv420 --hash --frames 9-").code, 3);
}

TEST_F(HostRun, WriteEveryProcessesAllAndWritesSome) {
  const Result result = Run("convert " + Clip("in.y4m", 16, 16, 5) + " --to rgb24 --hash -q -o " +
                            File("o%02d.png") + " --write-every 2");
  EXPECT_EQ(result.code, 0) << result.err;
  EXPECT_EQ(std::count(result.out.begin(), result.out.end(), '\n'), 5);
  EXPECT_TRUE(folder_.Has("o02.png"));
  EXPECT_FALSE(folder_.Has("o03.png"));
}

TEST_F(HostRun, MonoStaysGrayOrGetsNeutralChroma) {
  const std::string clip = folder_.Make("in.y4m", MakeY4m(16, 16, 1, " F25:1 Cmono"));
  const Result gray = Run("resize " + clip + " --size 8x8 --to gray -o " + File("o.pgm"));
  EXPECT_EQ(gray.code, 0) << gray.err;
  EXPECT_EQ(ReadStill(File("o.pgm")).info.layout, Layout::kGray8);
  const Result colour = Run("convert " + clip + " --to rgb24 -o " + File("o.png"));
  EXPECT_EQ(colour.code, 0) << colour.err;
  EXPECT_SAYS(colour, "handed in as yuv420 with neutral chroma");
  const Still still = ReadStill(File("o.png"));
  EXPECT_EQ(still.picture.row(0, 8)[3 * 8], still.picture.row(0, 8)[3 * 8 + 2]);
}

TEST_F(HostRun, ColourAssumptionsAreTold) {
  const std::string clip =
      folder_.Make("in.y4m", MakeY4m(16, 16, 1, " F25:1 C420jpeg XCOLORRANGE=FULL"));
  const Result result = Run("convert " + clip + " --to rgb24 --hash");
  EXPECT_EQ(result.code, 0) << result.err;
  EXPECT_SAYS(result, "matrix not stated: taken as BT.601");
  EXPECT_SAYS(result, "warning: the source is full range");
  EXPECT_EQ(Run("convert " + clip + " --to rgb24 --hash --quiet").err, "");
}

TEST_F(HostRun, SummaryAsJsonHasTheCounts) {
  const Result result = Run("convert " + Clip("in.y4m", 16, 16, 2) + " --to rgb24 --verify --json");
  EXPECT_EQ(result.code, 0) << result.err;
  EXPECT_NE(result.out.find("\"frames\":2,\"width\":16,\"height\":16,\"format\":\"rgb24\""),
            std::string::npos)
      << result.out;
}

TEST_F(HostRun, InfoTellsSizeFormatAndAssumptions) {
  const Result result = Run("info " + Clip("in.y4m", 16, 12, 1) + " --json");
  EXPECT_EQ(result.code, 0);
  EXPECT_NE(result.out.find("\"width\": 16"), std::string::npos) << result.out;
  EXPECT_NE(result.out.find("\"readAs\": \"yvu420\""), std::string::npos) << result.out;
  EXPECT_NE(result.out.find("\"frameRate\": \"25/1\""), std::string::npos) << result.out;
}

TEST_F(HostRun, InfoPrintsTheMatrixWithoutAFile) {
  const Result result = Run("info --matrix");
  EXPECT_EQ(result.code, 0);
  EXPECT_NE(result.out.find("from \\ to"), std::string::npos) << result.out;
  EXPECT_EQ(Run("info").code, 2);
}

TEST_F(HostRun, EveryFormatIsReachedByTheWayNamed) {
  const std::string clip = Clip("in.y4m", 32, 16, 2);
  for (const char* to : {"rgb24", "rgb32", "yuv420", "yuy2", "yvu420"}) {
    for (const char* via :
         {"rgb24", "rgb32", "yuv420", "yuy2", "rgb32,yuy2", "yuy2,rgb24,yuv420"}) {
      const Result result =
          Run("convert " + clip + " --hash --verify --to " + to + " --via " + via);
      EXPECT_EQ(result.code, 0) << via << " " << to << result.err;
      EXPECT_NE(result.out.find(std::string("32x16 ") + to + " "), std::string::npos) << result.out;
    }
  }
  EXPECT_EQ(Run("convert " + clip + " --hash --to rgb24 --via rgb48").code, 2);
}

TEST_F(HostRun, InterruptEndsAfterTheFrameWithAWholeFile) {
#ifdef _WIN32
  GTEST_SKIP() << "a console's Ctrl-C can't be sent to one program";
#else
  int in[2];
  int err[2];
  ASSERT_EQ(pipe(in), 0);
  ASSERT_EQ(pipe(err), 0);
  const std::string output = File("o.y4m");
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    dup2(in[0], 0);
    dup2(err[1], 2);
    for (const int end : {in[0], in[1], err[0], err[1]}) close(end);
    execl("./zorhost", "zorhost", "convert", "-", "-o", output.c_str(), "--to", "yuv420",
          "--progress", "json", static_cast<char*>(nullptr));
    _exit(99);
  }
  close(in[0]);
  close(err[1]);
  // One frame and a half; the program then waits for the rest.
  const std::string clip = MakeY4m(16, 16, 2);
  const std::string part = clip.substr(0, clip.size() - 100);
  ASSERT_EQ(write(in[1], part.data(), part.size()), static_cast<ssize_t>(part.size()));
  std::string told;
  char c = 0;
  while (told.find("\"done\":1,") == std::string::npos && read(err[0], &c, 1) == 1) told += c;
  usleep(20000);
  EXPECT_EQ(kill(child, SIGINT), 0);
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  close(in[1]);
  while (read(err[0], &c, 1) == 1) told += c;
  close(err[0]);
  ASSERT_TRUE(WIFEXITED(status)) << told;
  EXPECT_EQ(WEXITSTATUS(status), 130) << told;
  EXPECT_NE(told.find("ended by interrupt"), std::string::npos) << told;
  EXPECT_FALSE(folder_.Has("o.y4m.part"));
  EXPECT_NE(Run("info --frames " + output).out.find("frames         1\n"), std::string::npos);
#endif
}

TEST_F(HostRun, SheetPutsPicturesOnGrayPaper) {
  Picture white(Layout::kRgb24, 16, 8);
  std::fill(white.data(), white.data() + white.size(), 255);
  WritePicture(white, File("a.png"));
  const Result result = Run("sheet " + File("a.png") + " " + File("a.png") + " -o " +
                            File("s.png") + " --cell 8x8 --columns 2");
  EXPECT_EQ(result.code, 0) << result.err;
  const Still sheet = ReadStill(File("s.png"));
  EXPECT_EQ(sheet.info.width, 2 * 12 + 4);
  EXPECT_EQ(sheet.info.height, 16);
  EXPECT_EQ(sheet.picture.row(0, 4 + 1)[3 * 5], 0x80);  // above the picture of 8 x 4
  EXPECT_EQ(sheet.picture.row(0, 4 + 3)[3 * 5], 255);
}

}  // namespace
}  // namespace zorhost
