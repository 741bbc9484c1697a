// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "scene.h"

#include "exit_code.h"
#include "key_colour.h"
#include "scratch_folder.h"

namespace zorhost {
namespace {

TEST(Scene, ChildSpecHasEveryWord) {
  const ChildSpec child = ParseChild(
      "file=a.png,x=2,y=4,w=8,h=6,opacity=200,mask=alpha,rotate=90,from=10,to=40,fade-in=3,"
      "fade-out=5");
  EXPECT_EQ(child.file, "a.png");
  EXPECT_EQ(child.x, 2);
  EXPECT_EQ(child.y, 4);
  EXPECT_EQ(child.w, 8);
  EXPECT_EQ(child.h, 6);
  EXPECT_EQ(child.opacity, 200);
  EXPECT_EQ(child.mask, "alpha");
  EXPECT_EQ(child.rotate, 90);
  EXPECT_EQ(child.from, 10);
  EXPECT_EQ(child.to, 40);
  EXPECT_EQ(child.fadeIn, 3);
  EXPECT_EQ(child.fadeOut, 5);
  EXPECT_EQ(ParseChild("file=a,key=Ff8001").key, 0xFF8001u);
}

TEST(Scene, BadChildSpecsAreUsageErrorsThatNameTheWord) {
  const struct {
    const char* spec;
    const char* says;
  } cases[] = {
      {"x=2", "file= is missing"},
      {"file=a,colour=1", "unknown word 'colour'; known: file"},
      {"file=a,x", "'x' isn't a word of the form name=value"},
      {"file=a,x=", "a value is missing"},
      {"file=a,x=ten", "x=ten: a whole number"},
      {"file=a,x=-2", "x=-2: a whole number"},
      {"file=a,x=3", "x, y, w and h are even"},
      {"file=a,opacity=257", "from 0 to 256"},
      {"file=a,w=70000", "from 0 to 65535"},
      {"file=a,key=fffff", "write RRGGBB"},
      {"file=a,key=0x1234", "write RRGGBB"},
      {"file=a,rotate=45", "rotate is 0, 90, 180 or 270"},
      {"file=a,from=4,to=3", "to=3 lies before from=4"},
      {"file=a,mask=alpha,key=ffffff", "mask and key exclude each other"},
      {"file=a,mask=alpha,w=6,h=8", "w is a multiple of 4"},
      {"file=a,scale=best,w=8,h=8", "--mode best: known are"},
      {"file=a,scale=box", "scale needs w and h"},
  };
  for (const auto& c : cases) {
    try {
      ParseChild(c.spec);
      ADD_FAILURE() << c.spec << " was taken";
    } catch (const UsageError& error) {
      EXPECT_NE(std::string(error.what()).find(c.says), std::string::npos) << error.what();
    }
  }
}

TEST(Scene, FileGivesBackWhatWasWritten) {
  const test::ScratchFolder folder;
  Scene scene;
  scene.base = "base.y4m";
  scene.children.push_back(ParseChild("file=a.png,x=2,mask=m.pgm,opacity=0,fade-in=7"));
  scene.children.push_back(ParseChild("file=b.png,key=00ff0a,to=0,scale=box,w=8,h=8"));
  WriteScene(scene, folder.File("s.json"));
  const Scene back = ReadScene(folder.File("s.json"));
  EXPECT_EQ(back.base, "base.y4m");
  ASSERT_EQ(back.children.size(), 2u);
  EXPECT_EQ(back.children[0].mask, "m.pgm");
  EXPECT_EQ(back.children[0].x, 2);
  EXPECT_EQ(back.children[0].opacity, 0);
  EXPECT_EQ(back.children[0].fadeIn, 7);
  EXPECT_EQ(back.children[0].to, -1);
  EXPECT_EQ(back.children[1].key, 0x00FF0Au);
  EXPECT_EQ(back.children[1].to, 0);
  EXPECT_EQ(back.children[1].scale, "box");
}

TEST(Scene, WhatIsNoSceneIsAnInputError) {
  const test::ScratchFolder folder;
  for (const char* text : {"", "[1]", "{\"base\":1}", "{\"colour\":\"x\"}", "{\"children\":[3]}",
                           "{\"children\":[{\"file\":\"a\",\"x\":1.5}]}"}) {
    EXPECT_THROW(ReadScene(folder.Make("s.json", text)), InputError) << text;
  }
  EXPECT_THROW(ReadScene(folder.File("absent.json")), InputError);
}

TEST(Scene, FadesRiseAndFallInEqualSteps) {
  const ChildSpec child = ParseChild("file=a,from=10,to=19,fade-in=3,fade-out=1");
  EXPECT_EQ(Visibility(child, 9, 19), 0);
  EXPECT_EQ(Visibility(child, 10, 19), 64);
  EXPECT_EQ(Visibility(child, 12, 19), 192);
  EXPECT_EQ(Visibility(child, 13, 19), 256);
  EXPECT_EQ(Visibility(child, 18, 19), 256);
  EXPECT_EQ(Visibility(child, 19, 19), 128);
  EXPECT_EQ(Visibility(child, 20, 19), 0);
  const ChildSpec half = ParseChild("file=a,opacity=128,fade-in=1");
  EXPECT_EQ(Visibility(half, 0, -1), 64);
  EXPECT_EQ(Visibility(half, 1, -1), 128);
}

TEST(KeyColour, WhiteAsItStandsMeetsNoSample) {
  EXPECT_EQ(KeySample(0xFFFFFF), (YuvSample{271, 128, 128}));
  EXPECT_EQ(KeySample(0), (YuvSample{16, 128, 128}));
}

TEST(KeyColour, EveryGrayHasABackColourOfItsSamples) {
  for (int luma = 16; luma <= 235; ++luma) {
    const auto colour = BackColourFor({luma, 128, 128});
    ASSERT_TRUE(colour) << luma;
    EXPECT_EQ(KeySample(*colour), (YuvSample{luma, 128, 128}));
  }
  EXPECT_FALSE(BackColourFor({16, 240, 128}));
}

}  // namespace
}  // namespace zorhost
