// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "still.h"

#include "exif_jpeg.h"
#include "exif_orientation.h"
#include "exit_code.h"
#include "frame_hash.h"
#include "picture_sink.h"
#include "scratch_folder.h"

namespace zorhost {
namespace {

using test::JpegStart;
using test::ScratchFolder;

Picture Colours(Layout layout) {
  Picture picture(layout, 4, 4);
  const int step = Traits(layout).bitsPerPixel / 8;
  for (int i = 0; i < 16 * step; ++i) {
    picture.data()[i] = static_cast<std::uint8_t>(i * 11 + 3);
  }
  return picture;
}

TEST(Still, EveryKindGivesItsPixelsBack) {
  const ScratchFolder folder;
  for (const char* name : {"a.png", "a.bmp", "a.ppm"}) {
    const Picture in = Colours(Layout::kRgb24);
    WritePicture(in, folder.File(name));
    const Still still = ReadStill(folder.File(name));
    EXPECT_EQ(still.info.layout, Layout::kRgb24) << name;
    EXPECT_EQ(HashPicture(still.picture), HashPicture(in)) << name;
  }
  const Picture gray = Colours(Layout::kGray8);
  for (const char* name : {"g.png", "g.bmp", "g.pgm"}) {
    WritePicture(gray, folder.File(name));
    EXPECT_EQ(HashPicture(ReadStill(folder.File(name)).picture), HashPicture(gray)) << name;
  }
}

TEST(Still, TheFourthByteIsWrittenToPngOnlyWhereItIsAlpha) {
  const ScratchFolder folder;
  Picture picture = Colours(Layout::kRgb32);
  WritePicture(picture, folder.File("plain.png"));
  EXPECT_EQ(ReadStill(folder.File("plain.png")).info.layout, Layout::kRgb24);
  picture.hasAlpha = true;
  WritePicture(picture, folder.File("alpha.png"));
  const Still still = ReadStill(folder.File("alpha.png"));
  EXPECT_TRUE(still.info.hasAlpha);
  EXPECT_EQ(HashPicture(still.picture), HashPicture(picture));
}

TEST(Still, PngHoldsRedGreenBlueFromTheTop) {
  const ScratchFolder folder;
  Picture picture(Layout::kRgb24, 1, 2);
  picture.bottomUp = true;
  picture.row(0, 0)[2] = 200;  // red above
  picture.row(0, 1)[0] = 100;  // blue below
  const std::vector<std::uint8_t> ppm = EncodePicture(picture, SinkKind::kPpm);
  const std::vector<std::uint8_t> pixels(ppm.end() - 6, ppm.end());
  EXPECT_EQ(pixels, (std::vector<std::uint8_t>{200, 0, 0, 0, 0, 100}));
}

TEST(Still, DamagedAndForeignFilesAreInputErrors) {
  const ScratchFolder folder;
  EXPECT_THROW(ReadStill(folder.File("absent.png")), InputError);
  EXPECT_THROW(ReadStill(folder.Make("text.png", "no picture")), InputError);
  EXPECT_THROW(ReadStill(folder.Make("empty.png", "")), InputError);
  WritePicture(Colours(Layout::kRgb24), folder.File("a.png"));
  const std::string whole = folder.Bytes("a.png");
  EXPECT_THROW(ReadStill(folder.Make("cut.png", whole.substr(0, whole.size() / 2))), InputError);
}

TEST(Sequence, BeginsAtTheLowestNumberAndEndsBeforeTheGap) {
  const ScratchFolder folder;
  for (const int number : {2, 3, 5}) {
    WritePicture(Colours(Layout::kRgb24), folder.File("i000" + std::to_string(number) + ".png"));
  }
  const std::string path = folder.File("i%04d.png");
  const auto source = OpenSequence(*NumberedName::Parse(path), path);
  EXPECT_EQ(source->info().frameCount, 2);
  Frame frame;
  EXPECT_TRUE(source->Read(frame));
  EXPECT_TRUE(source->Read(frame));
  EXPECT_FALSE(source->Read(frame));
}

TEST(Sequence, AnotherSizeOrNoFileIsAnInputError) {
  const ScratchFolder folder;
  const std::string path = folder.File("i%d.png");
  EXPECT_THROW(OpenSequence(*NumberedName::Parse(path), path), InputError);
  WritePicture(Colours(Layout::kRgb24), folder.File("i0.png"));
  WritePicture(Picture(Layout::kRgb24, 5, 4), folder.File("i1.png"));
  const auto source = OpenSequence(*NumberedName::Parse(path), path);
  Frame frame;
  EXPECT_TRUE(source->Read(frame));
  EXPECT_THROW(source->Read(frame), InputError);
}

TEST(ExifOrientation, IsReadInBothByteOrders) {
  EXPECT_EQ(ExifOrientation(JpegStart(true, 3)), 3);
  EXPECT_EQ(ExifOrientation(JpegStart(false, 6)), 6);
}

TEST(ExifOrientation, IsUprightWhereNothingSensibleIsStated) {
  EXPECT_EQ(ExifOrientation({}), 1);
  EXPECT_EQ(ExifOrientation({0xFF, 0xD8}), 1);
  EXPECT_EQ(ExifOrientation(JpegStart(true, 0)), 1);
  EXPECT_EQ(ExifOrientation(JpegStart(true, 9)), 1);
  std::vector<std::uint8_t> cut = JpegStart(false, 6);
  cut.resize(cut.size() - 10);
  EXPECT_EQ(ExifOrientation(cut), 1);
}

}  // namespace
}  // namespace zorhost
