// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

// What runs of the program tell: hashes, checks of one way against the other, warnings, facts.
#include <algorithm>

#include "host_run.h"
#include "picture_sink.h"
#include "text.h"

namespace zorhost {
namespace {

using test::HashesIn;
using test::HostRun;
using test::JobOn;
using test::MakeY4m;
using test::Result;

TEST_F(HostRun, TailColumnsOfRgb24AreTold) {
  const std::string job = " --to rgb24 --hash";
  const Result told = RunWell("convert " + Clip("in.y4m", 20, 16, 1) + job);
  EXPECT_SAYS(told, "the right 4 columns");
  const Result whole = Run("convert " + Clip("in.y4m", 32, 16, 1) + job);
  EXPECT_EQ(whole.err.find("columns"), std::string::npos) << whole.err;
}

TEST_F(HostRun, EagerAndDeferredGiveTheSameHashes) {
  const std::string clip = Clip("in.y4m", 48, 32, 3);
  for (const char* job :
       {"resize %s --size 32x32 --fit contain --to rgb32", "resize %s --size 24x16 --to rgb24",
        "resize %s --size 64x48 --fit contain --to yuv420", "convert %s --to rgb32",
        "convert %s --to rgb24 --bottom-up --pitch 160", "convert %s --to yvu420",
        "resize %s --scale 1/2 --fit contain --to yvu420 --bottom-up",
        "resize %s --size 20x30 --fit cover --to rgb24"}) {
    const std::string arguments = JobOn(job, clip);
    const Result deferred = RunWell(arguments + " --hash --quiet");
    EXPECT_EQ(deferred.out, RunWell(arguments + " --hash --quiet --eager").out) << job;
    EXPECT_EQ(HashesIn(deferred.out).size(), 3u) << job << "\n" << deferred.out;
    const Result both = RunWell(arguments + " --verify");
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
      RunWell("convert " + File("in.png") + " " + rest + order + " --verify");
    }
  }
  for (const char* rest :
       {"--size 33x21", "--scale 2 --mode bilinear-fade", "--scale 3/2 --mode area",
        "--size 40x40 --fit contain --bottom-up", "--size 30x30 --fit cover --to rgb32"}) {
    RunWell("resize " + File("in.png") + " " + rest + " --verify");
  }
}

TEST_F(HostRun, ExportedBitmapHoldsTheSamePicture) {
  const std::string clip = Clip("in.y4m", 48, 32, 1);
  for (const char* job :
       {"convert %s --to rgb24", "convert %s --to rgb32",
        "resize %s --size 30x20 --fit contain --to rgb24", "convert %s --to yuv420"}) {
    const Result result = RunWell(JobOn(job, clip) + " --dib --verify");
    EXPECT_SAYS(result, "export and eager agree");
  }
  EXPECT_EQ(Run("convert " + clip + " --to rgb24 --dib --eager --hash").code, 2);
}

TEST_F(HostRun, HashesDoNotSeePitchOrRowOrder) {
  const std::string clip = Clip("in.y4m", 48, 32, 2);
  const Result plain = RunWell("convert " + clip + " --to rgb24 --hash -q");
  EXPECT_EQ(HashesIn(plain.out).size(), 2u) << plain.out;
  EXPECT_EQ(Run("convert " + clip + " --to rgb24 --hash -q --bottom-up").out, plain.out);
  EXPECT_EQ(Run("convert " + clip + " --to rgb24 --hash -q --pitch 200").out, plain.out);
}

TEST_F(HostRun, FrameChoiceCountsFromZero) {
  const std::string clip = Clip("in.y4m", 16, 16, 9);
  RunWell("convert " + clip + " --to yuv420 --hash=" + File("h.txt") + " --frames 1-5 --every 2");
  const std::string lines = folder_.Bytes("h.txt");
  EXPECT_EQ(lines.substr(0, 2), "1 ");
  EXPECT_NE(lines.find("\n3 "), std::string::npos) << lines;
  EXPECT_NE(lines.find("\n5 "), std::string::npos) << lines;
  EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 3);
  EXPECT_EQ(Run("convert " + clip + " --to yuv420 --hash --frames 10-").code, 3);
}

TEST_F(HostRun, WriteEveryProcessesAllAndWritesSome) {
  const Result result =
      RunWell("convert " + Clip("in.y4m", 16, 16, 5) + " --to rgb24 --hash -q -o " +
              File("o%02d.png") + " --write-every 2");
  EXPECT_EQ(std::count(result.out.begin(), result.out.end(), '\n'), 5);
  EXPECT_TRUE(folder_.Has("o02.png"));
  EXPECT_FALSE(folder_.Has("o03.png"));
}

TEST_F(HostRun, ColourAssumptionsAreTold) {
  const std::string clip =
      folder_.Make("in.y4m", MakeY4m(16, 16, 1, " F25:1 C420jpeg XCOLORRANGE=FULL"));
  const Result result = RunWell("convert " + clip + " --to rgb24 --hash");
  EXPECT_SAYS(result, "matrix not stated: taken as BT.601");
  EXPECT_SAYS(result, "warning: the source is full range");
  EXPECT_EQ(Run("convert " + clip + " --to rgb24 --hash --quiet").err, "");
}

TEST_F(HostRun, SummaryAsJsonHasTheCounts) {
  const Result result =
      RunWell("convert " + Clip("in.y4m", 16, 16, 2) + " --to rgb24 --verify --json");
  EXPECT_NE(result.out.find("\"frames\":2,\"width\":16,\"height\":16,\"format\":\"rgb24\""),
            std::string::npos)
      << result.out;
}

TEST_F(HostRun, InfoTellsSizeFormatAndAssumptions) {
  const Result result = RunWell("info " + Clip("in.y4m", 16, 12, 1) + " --json");
  EXPECT_NE(result.out.find("\"width\": 16"), std::string::npos) << result.out;
  EXPECT_NE(result.out.find("\"readAs\": \"yvu420\""), std::string::npos) << result.out;
  EXPECT_NE(result.out.find("\"frameRate\": \"25/1\""), std::string::npos) << result.out;
}

TEST_F(HostRun, InfoPrintsTheMatrixWithoutAFile) {
  const Result result = RunWell("info --matrix");
  EXPECT_NE(result.out.find("from \\ to"), std::string::npos) << result.out;
  EXPECT_EQ(Run("info").code, 2);
}

/// A summary tells of these formats in their order; one that stands already takes no step.
void ExpectSteps(const std::string& summary, const std::string& names) {
  std::string stands = "yuv420";  // what a clip is handed in as
  std::size_t at = summary.find("\"operations\"");
  for (const std::string& name : SplitWords(names, ',')) {
    if (name == stands) continue;
    at = summary.find(" -> " + name, at);
    ASSERT_NE(at, std::string::npos) << names << ": " << summary;
    stands = name;
  }
}

TEST_F(HostRun, EveryFormatIsReachedByTheWayNamed) {
  const std::string clip = Clip("in.y4m", 32, 16, 2);
  for (const char* to : {"rgb24", "rgb32", "yuv420", "yuy2", "yvu420"}) {
    for (const char* via :
         {"rgb24", "rgb32", "yuv420", "yuy2", "rgb32,yuy2", "yuy2,rgb24,yuv420"}) {
      const Result result =
          RunWell("convert " + clip + " --hash --verify --json --to " + to + " --via " + via);
      EXPECT_NE(result.out.find(std::string("32x16 ") + to + " "), std::string::npos) << result.out;
      ExpectSteps(result.out, std::string(via) + "," + to);
    }
  }
  EXPECT_EQ(Run("convert " + clip + " --hash --to rgb24 --via rgb48").code, 2);
}

}  // namespace
}  // namespace zorhost
