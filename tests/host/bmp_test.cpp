// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "bmp.h"

#include <gtest/gtest.h>

#include "exit_code.h"
#include "frame_hash.h"

namespace zorhost {
namespace {

Picture Counting(Layout layout, int width, int height, bool bottomUp) {
  Picture picture(layout, width, height);
  picture.bottomUp = bottomUp;
  std::uint8_t next = 1;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < picture.plane(0).rowBytes; ++x) picture.row(0, y)[x] = next++;
  }
  return picture;
}

std::int32_t HeightWord(const std::vector<std::uint8_t>& file) {
  return static_cast<std::int32_t>(file[22] | file[23] << 8 | file[24] << 16 |
                                   static_cast<std::uint32_t>(file[25]) << 24);
}

TEST(BmpEncode, BottomUpHasAPositiveHeightAndItsBottomRowFirst) {
  const std::vector<std::uint8_t> file = EncodeBmp(Counting(Layout::kRgb24, 3, 2, true));
  EXPECT_EQ(HeightWord(file), 2);
  ASSERT_EQ(file.size(), 54u + 2 * 12);  // 9 bytes a row, rounded up to 12
  EXPECT_EQ(file[54], 10);               // the lower row begins with the tenth byte
  EXPECT_EQ(file[66], 1);
  EXPECT_EQ(file[63], 0);  // padding
}

TEST(BmpEncode, TopDownHasANegativeHeightAndItsTopRowFirst) {
  const std::vector<std::uint8_t> file = EncodeBmp(Counting(Layout::kRgb24, 3, 2, false));
  EXPECT_EQ(HeightWord(file), -2);
  EXPECT_EQ(file[54], 1);
  EXPECT_EQ(file[66], 10);
}

TEST(BmpEncode, HeaderIsTheLibrarysBitmapHeader) {
  const std::vector<std::uint8_t> file = EncodeBmp(Counting(Layout::kRgb32, 5, 2, true));
  EXPECT_EQ(file[0], 'B');
  EXPECT_EQ(file[1], 'M');
  EXPECT_EQ(file[2], 94);   // 54 + 2 rows of 20 bytes
  EXPECT_EQ(file[10], 54);  // pixels
  EXPECT_EQ(file[14], 40);  // biSize
  EXPECT_EQ(file[18], 5);
  EXPECT_EQ(file[26], 1);  // planes
  EXPECT_EQ(file[28], 32);
  EXPECT_EQ(file[34], 40);  // biSizeImage
}

TEST(BmpRoundTrip, KeepsPixelsAndRowOrder) {
  for (const Layout layout : {Layout::kRgb24, Layout::kRgb32, Layout::kGray8}) {
    for (const bool bottomUp : {false, true}) {
      for (int width = 1; width <= 9; ++width) {
        const Picture in = Counting(layout, width, 3, bottomUp);
        const Picture out = DecodeBmp(EncodeBmp(in), "test");
        EXPECT_EQ(out.layout(), layout);
        EXPECT_EQ(out.bottomUp, bottomUp);
        EXPECT_EQ(HashPicture(out), HashPicture(in)) << Traits(layout).name << " " << width;
      }
    }
  }
}

TEST(BmpDecode, ColouredPaletteBecomesRgb) {
  std::vector<std::uint8_t> file = EncodeBmp(Counting(Layout::kGray8, 2, 1, true));
  file[54 + 4 * 2 + 2] = 99;  // entry 2 gets another red
  const Picture picture = DecodeBmp(file, "test");
  ASSERT_EQ(picture.layout(), Layout::kRgb24);
  EXPECT_EQ(picture.row(0, 0)[0], 1);
  EXPECT_EQ(picture.row(0, 0)[3], 2);
  EXPECT_EQ(picture.row(0, 0)[5], 99);
}

void ExpectRefused(std::vector<std::uint8_t> file, const char* why) {
  try {
    DecodeBmp(file, "test");
    ADD_FAILURE() << "took a bitmap with " << why;
  } catch (const HostError& error) {
    EXPECT_EQ(error.code(), ExitCode::kInput);
  }
}

TEST(BmpDecode, RefusesWhatItCantRead) {
  const std::vector<std::uint8_t> good = EncodeBmp(Counting(Layout::kRgb24, 3, 2, true));
  const auto with = [&](std::size_t at, std::uint8_t value) {
    std::vector<std::uint8_t> file = good;
    file[at] = value;
    return file;
  };
  ExpectRefused({}, "no bytes");
  ExpectRefused(with(0, 'X'), "another magic");
  ExpectRefused(with(14, 12), "the old short header");
  ExpectRefused(with(28, 16), "16 bits a pixel");
  ExpectRefused(with(30, 1), "run lengths");
  ExpectRefused(with(18, 0), "no width");
  ExpectRefused(with(21, 0x80), "a negative width");
  ExpectRefused(with(25, 0x80), "the lowest height");
  ExpectRefused(with(13, 0x7F), "pixels far behind the end");
  std::vector<std::uint8_t> cut = good;
  cut.pop_back();
  ExpectRefused(cut, "its last byte missing");
}

}  // namespace
}  // namespace zorhost
