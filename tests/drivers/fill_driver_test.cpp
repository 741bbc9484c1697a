// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include <algorithm>

#include "drivers/driver_cases.h"

namespace zor::test {
namespace {

TEST(FillNow, WithoutPixelsIsInvalid) {
  const HeldSurface surface = MakeRaw(Describe(8, 8, FORMAT_RGB24), 0);
  EXPECT_EQ(surface->FillNow(nullptr, 0), VED_E_INVALIDARG);
}

TEST(FillNow, ARectangleOutsideOfTheSurfaceIsInvalidAndChangesNothing) {
  for (std::int32_t format : {FORMAT_RGB24, FORMAT_YUV420, FORMAT_GRAY8}) {
    const HeldSurface surface = MakeEven(DescribeOriented(8, 6, format, 0), 0x55);
    const Bytes before = BlockOf(surface.get(), PictureBytes(Describe(8, 6, format)));
    const RECT dirty = DirtyRectOf(surface);
    for (const RECT& outside : {RECT{-1, 0, 4, 4}, RECT{0, -1, 4, 4}, RECT{0, 0, 9, 4},
                                RECT{0, 0, 4, 7}, RECT{-1, 0, 0, 4}}) {
      RECT rect = outside;
      EXPECT_EQ(surface->FillNow(&rect, 0xFFFFFF), VED_E_INVALIDARG) << outside;
      EXPECT_EQ(rect, outside);
    }
    EXPECT_EQ(BlockOf(surface.get(), before.size()), before);
    EXPECT_EQ(DirtyRectOf(surface), dirty);
  }
}

TEST(FillNow, ARectangleNarrowerOrLowerThanTwoIsOkAndPaintsNothing) {
  for (std::int32_t format : {FORMAT_RGB32, FORMAT_YUV420, FORMAT_GRAY8, FORMAT_YUY2}) {
    const HeldSurface surface = MakeEven(DescribeOriented(8, 100, format, 0), 0x55);
    const Bytes before = BlockOf(surface.get(), PictureBytes(Describe(8, 100, format)));
    for (const RECT& small : {RECT{2, 0, 3, 100}, RECT{0, 4, 8, 5}, RECT{3, 3, 3, 3},
                              RECT{6, 6, 2, 2}, RECT{0, 0, INT32_MIN, 8}}) {
      RECT rect = small;
      EXPECT_EQ(surface->FillNow(&rect, 0xFFFFFF), VED_OK) << small;
      EXPECT_EQ(rect, small);
    }
    EXPECT_EQ(BlockOf(surface.get(), before.size()), before);
  }
}

TEST(FillNow, OnABottomUpRgbSurfaceTheCallersRectangleIsTurnedOver) {
  for (std::int32_t format : {FORMAT_RGB24, FORMAT_RGB32}) {
    const HeldSurface surface = MakeEven(DescribeOriented(8, 100, format, 0), 0);
    RECT rect = {0, 0, 8, 8};
    ASSERT_EQ(surface->FillNow(&rect, 0xFFFFFF), VED_OK);
    EXPECT_EQ(rect, (RECT{0, 92, 8, 100}));
    const std::int32_t stride = DescriptionOf(surface.get()).stride;
    const Bytes bytes = BlockOf(surface.get(), static_cast<std::size_t>(stride) * 100);
    for (std::size_t y = 0; y < 100; ++y) {
      EXPECT_EQ(bytes[y * static_cast<std::size_t>(stride)], y >= 92 ? 255 : 0) << y;
    }
  }
}

TEST(FillNow, OnOtherSurfacesTheRectangleStays) {
  for (const auto& [format, orientation] : {std::pair{FORMAT_RGB24, 1u},
                                            {FORMAT_RGB32, 1u},
                                            {FORMAT_YUV420, 0u},
                                            {FORMAT_YUV420, 1u}}) {
    const HeldSurface surface = MakeEven(DescribeOriented(8, 20, format, orientation), 0);
    RECT rect = {0, 0, 8, 4};
    ASSERT_EQ(surface->FillNow(&rect, 0xFFFFFF), VED_OK);
    EXPECT_EQ(rect, (RECT{0, 0, 8, 4}));
    EXPECT_NE(PixelsOf(surface)[0], 0);
  }
}

TEST(FillNow, PureByteZeroIsRedOnRgbAndBlueOnPlanes) {
  const HeldSurface rgb = MakeEven(Describe(4, 4, FORMAT_RGB24), 0x55);
  ASSERT_EQ(rgb->FillNow(nullptr, 0x0000FF), VED_OK);
  EXPECT_EQ(BlockOf(rgb.get(), 3), (Bytes{0, 0, 255}));

  const HeldSurface planar = MakeEven(Describe(4, 4, FORMAT_YUV420), 0x55);
  ASSERT_EQ(planar->FillNow(nullptr, 0x0000FF), VED_OK);
  Bytes expected(24, 41);
  std::fill(expected.begin() + 16, expected.begin() + 20, std::uint8_t{240});
  std::fill(expected.begin() + 20, expected.end(), std::uint8_t{110});
  EXPECT_EQ(BlockOf(planar.get(), 24), expected);
}

TEST(FillNow, TheFourthByteOfRgb32IsZero) {
  const HeldSurface surface = MakeEven(Describe(4, 4, FORMAT_RGB32), 0x55);
  ASSERT_EQ(surface->FillNow(nullptr, 0xFF102030), VED_OK);
  EXPECT_EQ(BlockOf(surface.get(), 8), (Bytes{0x10, 0x20, 0x30, 0, 0x10, 0x20, 0x30, 0}));
}

TEST(FillNow, AnOddPlanarRectangleRoundsItsChromaDown) {
  const HeldSurface surface = MakeEven(Describe(16, 16, FORMAT_YUV420), 0x55);
  RECT rect = {5, 3, 10, 8};
  ASSERT_EQ(surface->FillNow(&rect, 0x0000FF), VED_OK);
  Bytes expected(16 * 24, 0x55);
  for (std::size_t y = 3; y < 8; ++y) {
    for (std::size_t x = 5; x < 10; ++x) expected[16 * y + x] = 41;
  }
  for (std::size_t y = 1; y < 3; ++y) {
    for (std::size_t x = 2; x < 4; ++x) {
      expected[256 + 8 * y + x] = 240;
      expected[256 + 64 + 8 * y + x] = 110;
    }
  }
  EXPECT_EQ(BlockOf(surface.get(), expected.size()), expected);
}

TEST(FillNow, GrayPackedAndUnknownSurfacesAreUnsupportedAfterTheirRectanglesWereSeenTo) {
  for (std::int32_t format : {FORMAT_GRAY8, FORMAT_YUY2}) {
    const HeldSurface surface = MakeEven(Describe(8, 8, format), 0x55);
    const Bytes before = BlockOf(surface.get(), PictureBytes(Describe(8, 8, format)));
    EXPECT_EQ(surface->FillNow(nullptr, 0), VED_E_UNSUPPORTED);
    RECT rect = {0, 0, 4, 4};
    EXPECT_EQ(surface->FillNow(&rect, 0), VED_E_UNSUPPORTED);
    EXPECT_EQ(BlockOf(surface.get(), before.size()), before);
  }
  SurfaceDescription d = Describe(8, 8, FORMAT_GRAY8);
  d.format = 9;
  d.DirtyRect = {1, 1, 2, 2};
  const HeldSurface unknown = MakeRaw(d, 64);
  EXPECT_EQ(unknown->FillNow(nullptr, 0), VED_E_UNSUPPORTED);
  EXPECT_EQ(DirtyRectOf(unknown), (RECT{0, 0, 8, 8}));
}

TEST(FillNow, WithoutARectangleTheWholeSurfaceIsDirty) {
  for (std::int32_t format : {FORMAT_RGB24, FORMAT_GRAY8, FORMAT_YUV420, FORMAT_YUY2}) {
    SurfaceDescription d = Describe(8, 6, format);
    d.DirtyRect = {1, 1, 2, 2};
    const HeldSurface surface = MakeBlank(d);
    ASSERT_EQ(DirtyRectOf(surface), (RECT{1, 1, 2, 2}));
    surface->FillNow(nullptr, 0);
    EXPECT_EQ(DirtyRectOf(surface), (RECT{0, 0, 8, 6})) << format;
  }
}

TEST(FillNow, WithARectangleTheDirtyRectStaysAsItIs) {
  for (std::int32_t format : {FORMAT_RGB24, FORMAT_GRAY8, FORMAT_YUV420}) {
    SurfaceDescription d = Describe(8, 6, format);
    d.DirtyRect = {1, 1, 2, 2};
    const HeldSurface surface = MakeBlank(d);
    RECT rect = {2, 2, 8, 6};
    surface->FillNow(&rect, 0x00FF00);
    EXPECT_EQ(DirtyRectOf(surface), (RECT{1, 1, 2, 2})) << format;
  }
}

TEST(FillNow, PlanesThatAreSaidToRunAwayFromTheirBlockArePaintedNot) {
  // The builder takes a planar picture's stride word as it comes.
  SurfaceDescription d = Describe(8, 8, FORMAT_YUV420);
  d.stride = -8;
  const HeldSurface surface = MakeBlank(d);
  const Bytes before = BlockOf(surface.get(), 96);
  RECT rect = {0, 0, 8, 8};
  EXPECT_EQ(surface->FillNow(&rect, 0xFFFFFF), VED_OK);
  EXPECT_EQ(surface->FillNow(nullptr, 0xFFFFFF), VED_OK);
  EXPECT_EQ(BlockOf(surface.get(), 96), before);
}

TEST(Fill, FlushesFirst) {
  const HeldSurface surface = MakeEven(Describe(8, 8, FORMAT_RGB32), 0);
  surface->QueueResize(16, 12, 0, SCALE_NEAREST);
  RECT rect = {12, 8, 16, 12};
  ASSERT_EQ(surface->Fill(&rect, 0xFFFFFF), VED_OK);
  EXPECT_EQ(DescriptionOf(surface.get()).width, 16);
  const Bytes bytes = BlockOf(surface.get(), 16 * 12 * 4);
  EXPECT_EQ(bytes[(11 * 16 + 15) * 4], 255);
  EXPECT_EQ(bytes[(7 * 16 + 15) * 4], 0);
}

}  // namespace
}  // namespace zor::test
