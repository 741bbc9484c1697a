// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

// Compositions as a user runs them. Clips of one luma and neutral chroma make every sample a sum:
// child c over base d with visibility v gives (v x c + (256 - v) x d) >> 8.
#include <algorithm>

#include "host_run.h"
#include "picture_sink.h"

namespace zorhost {
namespace {

using test::Even;
using test::HashesIn;
using test::HostRun;
using test::Result;
using test::Y4mOf;

constexpr int kBase = 100;

class ComposeRun : public HostRun {
 protected:
  /// Frames of the given lumas.
  std::string Flat(const std::string& name, int width, int height, const std::vector<int>& lumas) {
    std::vector<std::string> frames;
    for (const int luma : lumas) {
      frames.push_back(Even(width * height, luma) + Even(width * height / 2, 128));
    }
    return folder_.Make(name, Y4mOf(width, height, frames));
  }
  /// Composes over a base of 32 x 16 and keeps the bytes of the result.
  void Compose(const std::vector<std::string>& children, int frames = 1) {
    std::string line =
        "compose --base " + Flat("base.y4m", 32, 16, std::vector<int>(frames, kBase)) + " --verify";
    for (const std::string& child : children) line += " --child " + child;
    RunWell(line + " -o " + File("o.raw"));
    out_ = folder_.Bytes("o.raw");
    ASSERT_EQ(out_.size(), frames * 32u * 16 * 3 / 2);
  }
  int Luma(int x, int y, int frame = 0) const {
    return static_cast<unsigned char>(out_[frame * 768u + y * 32u + x]);
  }
  /// A clip of 8 x 8: its left half has a luma of 200, the right one of 40.
  std::string LightBesideDark() {
    std::string luma;
    for (int y = 0; y < 8; ++y) luma += Even(4, 200) + Even(4, 40);
    return folder_.Make("edge.y4m", Y4mOf(8, 8, {luma + Even(32, 128)}));
  }
  /// An 8 x 8 picture of white; its upper half is opaque, the lower one transparent.
  std::string HalfOpaque() {
    Picture picture(Layout::kRgb32, 8, 8);
    picture.hasAlpha = true;
    std::fill(picture.data(), picture.data() + picture.size(), 255);
    for (int y = 4; y < 8; ++y) {
      for (int x = 0; x < 8; ++x) picture.row(0, y)[4 * x + 3] = 0;
    }
    WritePicture(picture, File("half.png"));
    return File("half.png");
  }
  std::string out_;
};

TEST_F(ComposeRun, ChildCoversItsRectangleOnly) {
  Compose({"file=" + Flat("c.y4m", 8, 8, {200}) + ",x=4,y=2"});
  for (int y = 0; y < 16; ++y) {
    for (int x = 0; x < 32; ++x) {
      const bool inside = x >= 4 && x < 12 && y >= 2 && y < 10;
      ASSERT_EQ(Luma(x, y), inside ? 200 : kBase) << x << "," << y;
    }
  }
}

TEST_F(ComposeRun, OpacityIsTheWeightOfTheChild) {
  const std::string child = "file=" + Flat("c.y4m", 8, 8, {200});
  Compose({child + ",opacity=64", child + ",x=8,opacity=192", child + ",x=16,opacity=0"});
  EXPECT_EQ(Luma(2, 2), (64 * 200 + 192 * kBase) >> 8);
  EXPECT_EQ(Luma(10, 2), (192 * 200 + 64 * kBase) >> 8);
  EXPECT_EQ(Luma(18, 2), kBase);
}

TEST_F(ComposeRun, LastChildLiesOnTop) {
  Compose({"file=" + Flat("c.y4m", 8, 8, {200}), "file=" + Flat("d.y4m", 8, 8, {40}) + ",x=4"});
  EXPECT_EQ(Luma(2, 2), 200);
  EXPECT_EQ(Luma(6, 2), 40);
}

TEST_F(ComposeRun, ClipChildAdvancesFrameByFrameFromItsFirstAndEnds) {
  Compose({"file=" + Flat("c.y4m", 8, 8, {50, 60, 70}) + ",from=1"}, 5);
  const int wanted[] = {kBase, 50, 60, 70, kBase};
  for (int f = 0; f < 5; ++f) EXPECT_EQ(Luma(2, 2, f), wanted[f]) << f;
}

TEST_F(ComposeRun, ChosenFramesShowWhatTheyShowInTheWholeClip) {
  const std::string base = Flat("base.y4m", 32, 16, std::vector<int>(6, kBase));
  const std::string job = "compose --base " + base +
                          " --child file=" + Flat("c.y4m", 8, 8, {50, 60, 70, 80, 90, 95}) +
                          " --hash --quiet";
  const Result whole = Run(job);
  const Result some = RunWell(job + " --frames 3-5 --every 2");
  ASSERT_EQ(HashesIn(whole.out).size(), 6u) << whole.out;
  for (const std::string number : {"3 ", "5 "}) {
    const std::size_t at = some.out.find(number + "32x16 yuv420 ");
    ASSERT_NE(at, std::string::npos) << some.out;
    EXPECT_NE(whole.out.find(some.out.substr(at, some.out.find('\n', at) - at)), std::string::npos);
  }
}

TEST_F(ComposeRun, StillShowsFromItsFirstToItsLastFrameAndFades) {
  Picture gray(Layout::kGray8, 8, 8);
  std::fill(gray.data(), gray.data() + gray.size(), 200);
  WritePicture(gray, File("c.pgm"));
  Compose({"file=" + File("c.pgm") + ",from=2,to=5,fade-in=1,fade-out=1"}, 8);
  const int half = (128 * 200 + 128 * kBase) >> 8;
  const int wanted[] = {kBase, kBase, half, 200, 200, half, kBase, kBase};
  for (int f = 0; f < 8; ++f) EXPECT_EQ(Luma(2, 2, f), wanted[f]) << f;
}

TEST_F(ComposeRun, MaskFileShowsTheChildWhereItIsWhite) {
  Picture mask(Layout::kGray8, 8, 8);
  for (int y = 0; y < 8; ++y) {
    for (int x = 0; x < 8; ++x) mask.row(0, y)[x] = x < 4 ? 255 : y < 4 ? 155 : 0;
  }
  WritePicture(mask, File("m.pgm"));
  const std::string child = "file=" + Flat("c.y4m", 8, 8, {200}) + ",mask=" + File("m.pgm");
  Compose({child, child + ",x=8,opacity=128"});
  EXPECT_EQ(Luma(1, 1), 200);
  EXPECT_EQ(Luma(5, 1), (156 * 200 + 100 * kBase) >> 8);
  EXPECT_EQ(Luma(5, 5), (200 + 255 * kBase) >> 8);
  // Half of 255 is 127, which leaves 128 for the base.
  EXPECT_EQ(Luma(9, 1), (128 * 200 + 128 * kBase) >> 8);
}

TEST_F(ComposeRun, MaskFileInColourCountsByItsBrightness) {
  Picture mask(Layout::kRgb24, 12, 8);
  for (int y = 0; y < 8; ++y) {
    for (int x = 0; x < 12; ++x) mask.row(0, y)[3 * x + x / 4] = 255;  // blue, green, red
  }
  WritePicture(mask, File("m.png"));
  Compose({"file=" + Flat("c.y4m", 12, 8, {200}) + ",mask=" + File("m.png")});
  const int shown[] = {29 * 255 / 256, 150 * 255 / 256, 77 * 255 / 256};
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(Luma(4 * i + 1, 3), ((shown[i] + 1) * 200 + (255 - shown[i]) * kBase) >> 8) << i;
  }
}

TEST_F(ComposeRun, AlphaMaskLiesUpright) {
  Compose({"file=" + HalfOpaque() + ",mask=alpha"});
  EXPECT_GE(Luma(4, 1), 234);
  EXPECT_LE(std::abs(Luma(4, 6) - kBase), 1);
}

TEST_F(ComposeRun, AlphaIsWeighedByTheOpacity) {
  Compose({"file=" + HalfOpaque() + ",mask=alpha,opacity=128"});
  EXPECT_EQ(Luma(4, 1), (128 * 235 + 128 * kBase) >> 8);  // 127 of 255, as with a mask file
  EXPECT_EQ(Luma(4, 6), (235 + 255 * kBase) >> 8);
}

TEST_F(ComposeRun, RotateTurnsTheChildClockwise) {
  const std::string child = "file=" + LightBesideDark() + ",rotate=";
  Compose({child + "90", child + "180,x=8", child + "270,x=16"});
  EXPECT_EQ(Luma(4, 1), 200);  // its left side is the upper one
  EXPECT_EQ(Luma(4, 6), 40);
  EXPECT_EQ(Luma(8 + 1, 4), 40);
  EXPECT_EQ(Luma(8 + 6, 4), 200);
  EXPECT_EQ(Luma(16 + 4, 1), 40);
  EXPECT_EQ(Luma(16 + 4, 6), 200);
}

TEST_F(ComposeRun, AlphaTurnsWithThePicture) {
  Compose({"file=" + HalfOpaque() + ",mask=alpha,rotate=90"});
  EXPECT_GE(Luma(6, 4), 234);
  EXPECT_LE(std::abs(Luma(1, 4) - kBase), 1);
}

TEST_F(ComposeRun, AlphaWithoutMaskIsLeftOut) {
  Compose({"file=" + HalfOpaque()});
  EXPECT_GE(Luma(4, 1), 234);
  EXPECT_GE(Luma(4, 6), 234);
}

TEST_F(ComposeRun, KeyLeavesExactlyItsColourOut) {
  Picture picture(Layout::kRgb24, 16, 16);
  for (const int key : {0xFF, 0x80, 0x00}) {
    for (std::size_t i = 0; i < picture.size(); ++i) {
      const bool left = i % 48 < 24;
      picture.data()[i] = static_cast<std::uint8_t>(left ? key : 0x60);
    }
    WritePicture(picture, File("k.ppm"));
    Compose({"file=" + File("k.ppm") + ",key=" +
             (key == 0xFF ? "ffffff"
              : key       ? "808080"
                          : "000000")});
    EXPECT_EQ(Luma(3, 5), kBase) << key;
    EXPECT_NE(Luma(12, 5), kBase) << key;
  }
}

TEST_F(ComposeRun, StretchesTheChildToItsRectangle) {
  Compose({"file=" + Flat("c.y4m", 8, 8, {200}) + ",x=4,y=0,w=20,h=12",
           "file=" + HalfOpaque() + ",mask=alpha,x=4,y=0,w=16,h=16"});
  EXPECT_EQ(Luma(23, 11), 200);
  EXPECT_EQ(Luma(24, 11), kBase);
  EXPECT_GE(Luma(19, 1), 234);
}

TEST_F(ComposeRun, ScaleModeOfAChildIsTheOneNamed) {
  const std::string child = "file=" + LightBesideDark() + ",w=16,h=16";
  const auto blended = [this] {
    int count = 0;
    for (int x = 0; x < 16; ++x) count += Luma(x, 8) != 200 && Luma(x, 8) != 40;
    return count;
  };
  Compose({child});
  EXPECT_EQ(blended(), 0);
  Compose({child + ",scale=bilinear"});
  EXPECT_GT(blended(), 0);
}

TEST_F(ComposeRun, SceneFileGivesTheSamePictures) {
  const std::string base = Flat("base.y4m", 32, 16, {kBase, kBase});
  const Result direct =
      RunWell("compose --base " + base + " --child file=" + Flat("c.y4m", 8, 8, {200, 210}) +
              ",x=6,opacity=99 --hash --quiet --write-scene " + File("s.json"));
  ASSERT_EQ(HashesIn(direct.out).size(), 2u) << direct.out;
  EXPECT_EQ(Run("compose --project " + File("s.json") + " --hash --quiet").out, direct.out);
}

TEST_F(ComposeRun, BadScenesEndWithTwoOrThree) {
  const std::string base = "compose --base " + Flat("base.y4m", 32, 16, {kBase}) + " --hash ";
  const std::string child = "--child file=" + Flat("c.y4m", 8, 8, {200});
  const struct {
    std::string arguments;
    int code;
    const char* says;
  } cases[] = {
      {"compose --hash", 2, "give --base IN"},
      {base + child + ",x=26", 2, "8x8 at 26,0 leaves the base of 32x16"},
      {base + child + ",y=10", 2, "leaves the base of 32x16"},
      {base + child + ",size=3", 2, "unknown word 'size'"},
      {base + child + ",w=2,h=2", 2, "w and h are at least 4"},
      {base + "--child file=" + File("absent.png"), 3, "absent.png"},
      {base + child + ",mask=" + File("absent.png"), 3, "absent.png"},
      {base + child + ",mask=alpha", 3, "has no alpha to make a mask of"},
      {base + child + ",mask=" + HalfOpaque() + " -o " + File("o.y4m"), 0, ""},
      {base + "--child file=" + Flat("d.y4m", 16, 8, {9}) + ",mask=" + File("half.png"), 3,
       "8x8, but a mask has the size of its child, 16x8"},
      {base + child + ",key=0000ff", 2, "no back colour of the library meets"},
      {base + child + ",fade-out=2", 2, "fade-out needs to="},
  };
  for (const auto& c : cases) {
    const Result result = Run(c.arguments);
    EXPECT_EQ(result.code, c.code) << c.arguments << "\n" << result.err;
    EXPECT_SAYS(result, c.says);
  }
}

TEST_F(ComposeRun, CompressedClipHoldsEveryFrame) {
  const Result result =
      Run("compose --base " + Flat("b.y4m", 64, 32, {60, 120, 180}) + " -o " + File("o.mkv"));
  if (result.code == 2 && result.err.find("the ending decides") != std::string::npos) {
    GTEST_SKIP() << "built without FFmpeg";
  }
  ASSERT_EQ(result.code, 0) << result.err;
  EXPECT_FALSE(folder_.Has("o.mkv.part"));
  ASSERT_EQ(Run("convert " + File("o.mkv") + " --to yuv420 -o " + File("o.raw")).code, 0);
  out_ = folder_.Bytes("o.raw");
  ASSERT_EQ(out_.size(), 3u * 64 * 32 * 3 / 2);
  for (int f = 0; f < 3; ++f) {
    const int luma = static_cast<unsigned char>(out_[f * 3072u + 700]);
    EXPECT_LE(std::abs(luma - 60 * (f + 1)), 3);
  }
}

}  // namespace
}  // namespace zorhost
