// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "picture.h"

#include <gtest/gtest.h>

#include <cstring>

#include "frame_hash.h"

namespace zorhost {
namespace {

TEST(FrameHash, IsTheKnownFnv1a) {
  Picture picture(Layout::kGray8, 6, 1);
  std::memcpy(picture.data(), "foobar", 6);
  EXPECT_EQ(HashText(HashPicture(picture)), "85944171f73967e8");  // published test value
}

TEST(FrameHash, DoesNotSeePitchOrRowOrder) {
  Picture tight(Layout::kRgb24, 5, 3);
  Picture loose(Layout::kRgb24, 5, 3, 32);
  loose.bottomUp = true;
  std::memset(loose.data(), 0xEE, loose.size());
  for (int y = 0; y < 3; ++y) {
    for (int x = 0; x < 15; ++x) {
      tight.row(0, y)[x] = loose.row(0, y)[x] = static_cast<std::uint8_t>(16 * y + x);
    }
  }
  EXPECT_EQ(HashPicture(tight), HashPicture(loose));
}

TEST(FrameHash, SeesEverySampleOfEveryPlane) {
  Picture picture(Layout::kYvu420, 4, 4);
  const std::uint64_t before = HashPicture(picture);
  for (std::size_t i = 0; i < picture.size(); ++i) {
    picture.data()[i] = 1;
    EXPECT_NE(HashPicture(picture), before) << i;
    picture.data()[i] = 0;
  }
}

TEST(Picture, PlanarPitchHalvesForChroma) {
  const Picture picture(Layout::kYuv420, 6, 4, 16);
  EXPECT_EQ(picture.plane(1).offset, 64u);
  EXPECT_EQ(picture.plane(1).stride, 8);
  EXPECT_EQ(picture.plane(2).offset, 64u + 16);
  EXPECT_EQ(picture.size(), 96u);
}

TEST(Picture, CroppedKeepsTheLeftUpperPartInTheOrderAskedFor) {
  Picture picture(Layout::kGray8, 3, 3);
  std::memcpy(picture.data(), "abcdefghi", 9);
  const Picture part = picture.Cropped(2, 2, true);
  EXPECT_EQ(std::memcmp(part.data(), "deab", 4), 0);
  EXPECT_EQ(part.row(0, 0)[1], 'b');
}

TEST(Layouts, NaturalStrideIsTheBitmapsRounding) {
  EXPECT_EQ(NaturalStride(Layout::kRgb24, 5), 16);
  EXPECT_EQ(NaturalStride(Layout::kRgb24, 4), 12);
  EXPECT_EQ(NaturalStride(Layout::kRgb32, 5), 20);
  EXPECT_EQ(NaturalStride(Layout::kGray8, 5), 8);
  EXPECT_EQ(NaturalStride(Layout::kYuv420, 6), 6);
  EXPECT_EQ(NaturalStride(Layout::kYuy2, 6), 12);
}

}  // namespace
}  // namespace zorhost
