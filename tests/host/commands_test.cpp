// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

// Runs of `rotate`, `convert --via` and `gallery` from outside.
#include <array>

#include "host_run.h"
#include "picture_sink.h"
#include "quadrants.h"
#include "still.h"

namespace zorhost {
namespace {

using test::ExpectQuarters;
using test::JobOn;
using test::kBlue;
using test::kGreen;
using test::kQuarters;
using test::kRed;
using test::kWhite;
using test::PaintQuarters;
using test::Result;

class HostCommands : public test::HostRun {
 protected:
  std::string Art(const std::string& name, int width, int height) {
    WritePicture(PaintQuarters(Layout::kRgb24, width, height), File(name));
    return File(name);
  }
  std::string HashOf(const std::string& arguments) {
    const Result result = RunWell(arguments + " --hash -q");
    const std::size_t end = result.out.find_first_of("\r\n");
    return result.out.substr(end - 16, 16);
  }
};

TEST_F(HostCommands, RotatePaintsTheBackgroundAndGoesThroughFormats) {
  const std::string art = Art("in.png", 64, 32);
  Result result =
      RunWell("rotate " + art + " --by -90 -o " + File("o.png") + " --background 808080");
  ExpectQuarters(ReadStill(File("o.png")).picture, {kGreen, kWhite, kRed, kBlue}, "-90");
  EXPECT_EQ(result.err.find("unpainted"), std::string::npos) << result.err;
  result = RunWell("rotate " + art + " --by 90 --via yuv420 -o " + File("o.png"));
  EXPECT_EQ(result.err.find("unpainted"), std::string::npos) << result.err;
  ExpectQuarters(ReadStill(File("o.png")).picture, {kBlue, kRed, kWhite, kGreen}, "90");
  RunWell("rotate " + art + " --by 45 -o " + File("o.png") + " --background ff8000");
  const Picture turned = ReadStill(File("o.png")).picture;
  const std::uint8_t* corner = turned.row(0, 0);
  EXPECT_EQ((std::array{corner[2], corner[1], corner[0]}),
            (std::array<std::uint8_t, 3>{0xFF, 0x80, 0x00}));
  EXPECT_EQ(Run("rotate " + art + " --by 45 --background red -o " + File("o.png")).code, 2);
}

TEST_F(HostCommands, RotateTakesClipsAndBothWaysAgree) {
  const std::string clip = Clip("in.y4m", 48, 32, 2);
  for (const char* rest : {"--by 90", "--by 33 --background 204060", "--by 200 --to rgb24 --flip h",
                           "--by 271 --via rgb32 --to yuy2", "--by 180 --to rgb32 --bottom-up"}) {
    const Result result = RunWell("rotate " + clip + " " + rest + " --verify");
    EXPECT_SAYS(result, "deferred and eager agree");
  }
}

TEST_F(HostCommands, ConvertGoesThroughEveryFormatNamed) {
  const std::string art = Art("in.png", 64, 32);
  for (const char* via : {"rgb32", "yuv420", "yuy2", "yvu420", "yuy2,rgb32,yuv420,rgb24,yuy2"}) {
    for (const char* to : {"rgb24", "rgb32"}) {
      RunWell("convert " + art + " --via " + via + " --to " + to + " -o " + File("o.png"));
      ExpectQuarters(ReadStill(File("o.png")).picture, kQuarters, via);
    }
  }
  RunWell("convert " + art + " --to yuy2 -o " + File("o.raw"));
  RunWell("convert " + File("o.raw") + " --raw 64x32:yuy2 --to rgb24 -o " + File("o.png"));
  ExpectQuarters(ReadStill(File("o.png")).picture, kQuarters, "raw yuy2");
  EXPECT_EQ(Run("convert " + art + " --via gray --to rgb24 --hash").code, 5);
  EXPECT_EQ(Run("convert " + art + " --via rgb16 --to rgb24 --hash").code, 2);
}

TEST_F(HostCommands, EmptyColumnsOfPackedPicturesAreTold) {
  const Result told = RunWell("convert " + Art("in.png", 20, 16) + " --to yuy2 --hash");
  EXPECT_SAYS(told, "the right 4 columns stay 0");
}

std::size_t CountOf(const std::string& text, const std::string& word) {
  std::size_t count = 0;
  for (std::size_t at = 0; (at = text.find(word, at)) != std::string::npos; ++at) ++count;
  return count;
}

TEST_F(HostCommands, GalleryShowsModesTurnsAndConversions) {
  const std::string art = Art("art.png", 96, 80);
  RunWell("gallery " + art + " -o " + File("page/all.html"));
  const std::string page = folder_.Bytes("page/all.html");
  EXPECT_EQ(page.find("http"), std::string::npos);  // nothing from elsewhere
  std::size_t pictures = 0;
  for (const auto& entry : std::filesystem::directory_iterator(File("page/all"))) {
    ++pictures;
    const std::string name = entry.path().filename().string();
    EXPECT_EQ(CountOf(page, "<img src=\"all/" + name + "\""), 1u) << name;
    EXPECT_GE(ReadStill(entry.path().string()).info.width, 4);
  }
  // The source; 10 modes at 7 ratios; 9 angles of 3 formats; 13 pairs.
  EXPECT_EQ(pictures, 1u + 70 + 27 + 13);
  EXPECT_EQ(CountOf(page, "<img"), pictures);
  // Hashes are those of the commands, each of its own picture.
  std::set<std::string> hashes;
  for (const char* job :
       {"resize %s --scale 1/2 --mode box-fade", "resize %s --scale 7/5 --mode bilinear",
        "rotate %s --by 30 --to rgb32", "convert %s --to yuv420"}) {
    const std::string hash = HashOf(JobOn(job, art));
    EXPECT_NE(page.find(hash), std::string::npos) << job;
    hashes.insert(hash);
  }
  EXPECT_EQ(hashes.size(), 4u);
}

TEST_F(HostCommands, GalleryTakesAFolderAndRefusesOthers) {
  std::filesystem::create_directories(File("in"));
  Art("in/a.png", 64, 64);
  Clip("in/b.y4m", 80, 64, 2);
  folder_.Make("in/notes.txt", "none");
  const Result result =
      RunWell("gallery " + File("in") + " -o " + File("all.html") + " --longest 68");
  EXPECT_SAYS(result, "202 pictures");  // none at 1/17, where a side would be under 4
  EXPECT_TRUE(folder_.Has("all/a-source.png"));
  EXPECT_EQ(ReadStill(File("all/b-source.png")).info.width, 64);  // shrunk to whole sixteens
  EXPECT_EQ(Run("gallery " + File("in") + " -o " + File("all.png")).code, 2);
  std::filesystem::create_directories(File("none"));
  EXPECT_EQ(Run("gallery " + File("none") + " -o " + File("all.html")).code, 3);
  EXPECT_EQ(Run("gallery " + File("absent.png") + " -o " + File("all.html")).code, 3);
}

}  // namespace
}  // namespace zorhost
