// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include "drivers/driver_cases.h"
#include "platform/memory.h"
#include "platform/pixel_block.h"

namespace zor::test {
namespace {

TEST(ResizeNow, ToTheSameSizeWithoutAspectRatioKeepsTheBlock) {
  for (std::int32_t format : kFormats) {
    const HeldSurface surface = MakeNoisy(Describe(8, 6, format), 1);
    std::uint8_t* const pixels = PixelsOf(surface);
    const Bytes before = BlockOf(surface.get(), PictureBytes(Describe(8, 6, format)));
    EXPECT_EQ(surface->ResizeNow(8, 6, 1, SCALE_BILINEAR), VED_OK);
    EXPECT_EQ(PixelsOf(surface), pixels);
    EXPECT_EQ(BlockOf(surface.get(), before.size()), before);
  }
}

TEST(ResizeNow, ToTheSameSizeWithAnAspectRatioMakesANewBlockAndClearsTheRatio) {
  for (std::int32_t format : kFormats) {
    for (std::int32_t fit : {0, 1}) {
      const HeldSurface surface = MakeNoisy(Describe(8, 8, format), 1);
      std::uint8_t* const pixels = PixelsOf(surface);
      surface->SetAspectRatio(2, 1);
      EXPECT_EQ(surface->ResizeNow(8, 8, fit, SCALE_NEAREST), VED_OK);
      EXPECT_NE(PixelsOf(surface), pixels) << format;
      EXPECT_FALSE(HasAspect(surface));
    }
  }
}

TEST(ResizeNow, OneAspectWordAloneIsEnoughToGoTheWholeWay) {
  const HeldSurface surface = MakeNoisy(Describe(8, 8, FORMAT_RGB32), 1);
  std::uint8_t* const pixels = PixelsOf(surface);
  surface->SetAspectRatio(0, 1);
  EXPECT_EQ(surface->ResizeNow(8, 8, 0, SCALE_NEAREST), VED_OK);
  EXPECT_NE(PixelsOf(surface), pixels);
}

TEST(ResizeNow, TakesTheStridesOfItsFormats) {
  struct {
    std::int32_t format, width, stride;
  } const cases[] = {{FORMAT_RGB24, 10, 32}, {FORMAT_RGB24, 5, 16}, {FORMAT_RGB32, 5, 20},
                     {FORMAT_GRAY8, 5, 8},   {FORMAT_YUV420, 6, 6}, {FORMAT_YUV420, 7, 7},
                     {FORMAT_YUY2, 6, 12},   {FORMAT_YUY2, 5, 10}};
  for (const auto& c : cases) {
    for (std::uint32_t orientation : {0u, 1u}) {
      const HeldSurface surface = MakeNoisy(DescribeOriented(8, 6, c.format, orientation), 2);
      ASSERT_EQ(surface->ResizeNow(c.width, 9, 0, SCALE_NEAREST), VED_OK);
      const SurfaceDescription d = DescriptionOf(surface.get());
      EXPECT_EQ(d.stride, c.stride) << c.format;
      EXPECT_EQ(d.width, c.width);
      EXPECT_EQ(d.height, 9);
      EXPECT_EQ(d.Orientation, orientation);
      EXPECT_EQ(d.format, c.format);
      EXPECT_EQ(d.DirtyRect, (RECT{0, 0, c.width, 9}));
    }
  }
}

TEST(ResizeNow, NearestTakesEachPixelTwiceInBothRowOrders) {
  for (std::uint32_t orientation : {0u, 1u}) {
    const SurfaceDescription from = DescribeOriented(8, 6, FORMAT_RGB32, orientation);
    const HeldSurface surface = MakeNoisy(from, 3);
    const Bytes before = BlockOf(surface.get(), PictureBytes(from));
    ASSERT_EQ(surface->ResizeNow(16, 12, 0, SCALE_NEAREST), VED_OK);
    const Bytes after = BlockOf(surface.get(), 16 * 12 * 4);
    for (std::size_t y = 0; y < 12; ++y) {
      for (std::size_t i = 0; i < 64; ++i) {
        ASSERT_EQ(after[64 * y + i], before[32 * (y / 2) + i / 8 * 4 + i % 4]) << y << ", " << i;
      }
    }
  }
}

TEST(ResizeNow, WithFitRgbHasBlackBands) {
  for (std::int32_t format : {FORMAT_RGB24, FORMAT_RGB32}) {
    for (std::uint32_t orientation : {0u, 1u}) {
      const std::size_t pixel = format == FORMAT_RGB24 ? 3 : 4;
      const HeldSurface surface = MakeEven(DescribeOriented(8, 8, format, orientation), 200);
      ASSERT_EQ(surface->ResizeNow(20, 8, 1, SCALE_NEAREST), VED_OK);
      EXPECT_EQ(DirtyRectOf(surface), (RECT{6, 0, 14, 8}));
      const Bytes bytes = BlockOf(surface.get(), 20 * pixel * 8);
      for (std::size_t y = 0; y < 8; ++y) {
        for (std::size_t x = 0; x < 20; ++x) {
          EXPECT_EQ(bytes[(20 * y + x) * pixel + 1], x >= 6 && x < 14 ? 200 : 0) << x << "," << y;
        }
      }
    }
  }
}

TEST(ResizeNow, WithFitPlanesHaveVideoBlackBands) {
  const HeldSurface surface = MakeEven(Describe(8, 8, FORMAT_YUV420), 200);
  ASSERT_EQ(surface->ResizeNow(8, 20, 1, SCALE_BILINEAR), VED_OK);
  EXPECT_EQ(DirtyRectOf(surface), (RECT{0, 6, 8, 14}));
  const Bytes bytes = BlockOf(surface.get(), 8 * 20 * 3 / 2);
  for (std::size_t i = 0; i < 160; ++i) {
    EXPECT_EQ(bytes[i], i / 8 >= 6 && i / 8 < 14 ? 200 : 16) << i;
  }
  for (std::size_t i = 0; i < 80; ++i) {
    const std::size_t row = i % 40 / 4;
    EXPECT_EQ(bytes[160 + i], row >= 3 && row < 7 ? 200 : 128) << i;
  }
}

TEST(ResizeNow, WithFitGrayHasBandsThatNothingHasWritten) {
  // What nothing has written is 0, whatever stood in the memory before.
  void* const dirty = AllocateBytes(4096);
  std::memset(dirty, 0xEE, 4096);
  FreeBytes(dirty);
  const HeldSurface surface = MakeEven(Describe(8, 8, FORMAT_GRAY8), 200);
  ASSERT_EQ(surface->ResizeNow(20, 8, 1, SCALE_BILINEAR), VED_OK);
  const Bytes bytes = BlockOf(surface.get(), 20 * 8);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    EXPECT_EQ(bytes[i], i % 20 >= 6 && i % 20 < 14 ? 200 : 0) << i;
  }
}

TEST(ResizeNow, TheColumnThatAnOddPackedWidthLeavesKeepsTheFirstFill) {
  const HeldSurface surface = MakeEven(Describe(8, 8, FORMAT_YUY2), 200);
  ASSERT_EQ(surface->ResizeNow(5, 8, 0, SCALE_BILINEAR), VED_OK);
  const Bytes bytes = BlockOf(surface.get(), 80);
  for (std::size_t i = 0; i < 80; ++i) {
    // The first 80 / 4 bytes of the block are 0x80 before anything is drawn.
    EXPECT_EQ(bytes[i], i % 10 < 8 ? 200 : i < 20 ? 0x80 : 0) << i;
  }
}

TEST(ResizeNow, TheAspectRatioShapesTheFit) {
  const HeldSurface surface = MakeEven(Describe(8, 8, FORMAT_GRAY8), 200);
  surface->SetAspectRatio(2, 1);
  ASSERT_EQ(surface->ResizeNow(16, 16, 1, SCALE_NEAREST), VED_OK);
  EXPECT_EQ(DirtyRectOf(surface), (RECT{0, 4, 16, 12}));
  EXPECT_FALSE(HasAspect(surface));
}

TEST(ResizeNow, AnAspectRatioWhoseProductsWrapDrawsNothingOutsideOfTheBlock) {
  for (std::int32_t format : kFormats) {
    const HeldSurface surface = MakeEven(Describe(100, 100, format), 200);
    surface->SetAspectRatio(1 << 26, (1 << 26) - 500);
    EXPECT_EQ(surface->ResizeNow(40, 40, 1, SCALE_BILINEAR), VED_OK);
    EXPECT_EQ(DescriptionOf(surface.get()).width, 40);
  }
}

TEST(ResizeNow, SourceAndDestRectAreNotAdapted) {
  const HeldSurface surface = MakeEven(Describe(16, 16, FORMAT_RGB32), 1);
  surface->SetSourceRect(1, 2, 15, 16);
  surface->SetDestRect(3, 4, 50, 60);
  ASSERT_EQ(surface->ResizeNow(4, 4, 0, SCALE_NEAREST), VED_OK);
  RECT rect;
  surface->GetSourceRect(&rect);
  EXPECT_EQ(rect, (RECT{1, 2, 15, 16}));
  surface->GetDestRect(&rect);
  EXPECT_EQ(rect, (RECT{3, 4, 50, 60}));
}

TEST(ResizeNow, WithoutPixelsOrWithoutASizeIsInvalidAndChangesNothing) {
  const HeldSurface empty = MakeRaw(Describe(8, 8, FORMAT_RGB24), 0);
  EXPECT_EQ(empty->ResizeNow(8, 8, 0, 0), VED_E_INVALIDARG);
  const HeldSurface surface = MakeEven(Describe(8, 8, FORMAT_RGB24), 1);
  surface->SetAspectRatio(1, 2);
  const SurfaceDescription before = DescriptionOf(surface.get());
  for (const auto& [width, height] : {std::pair{0, 8}, {8, 0}, {-1, 8}, {8, INT32_MIN}}) {
    EXPECT_EQ(surface->ResizeNow(width, height, 1, 0), VED_E_INVALIDARG);
  }
  const SurfaceDescription after = DescriptionOf(surface.get());
  EXPECT_EQ(std::memcmp(&before, &after, sizeof before), 0);
  EXPECT_TRUE(HasAspect(surface));
}

TEST(ResizeNow, WithoutMemoryThePixelsStayAndTheDirtyRectDoesNot) {
  for (std::int32_t format : kFormats) {
    const HeldSurface surface = MakeNoisy(Describe(8, 8, format), 6);
    surface->SetAspectRatio(1, 1);
    const Bytes pixels = BlockOf(surface.get(), PictureBytes(Describe(8, 8, format)));
    SurfaceDescription before = DescriptionOf(surface.get());
    RefuseAllocation(1);
    const std::int32_t result = surface->ResizeNow(20, 8, 1, SCALE_BILINEAR);
    RefuseAllocation(0);
    EXPECT_EQ(result, format <= FORMAT_GRAY8 ? std::int32_t{E_FAIL} : VED_E_OUTOFMEMORY) << format;
    const SurfaceDescription after = DescriptionOf(surface.get());
    EXPECT_EQ(after.DirtyRect, (RECT{6, 0, 14, 8}));
    before.DirtyRect = after.DirtyRect;
    EXPECT_EQ(std::memcmp(&before, &after, sizeof before), 0);
    EXPECT_EQ(BlockOf(surface.get(), pixels.size()), pixels);
    EXPECT_TRUE(HasAspect(surface));
  }
}

TEST(ResizeNow, SizesThatNoBlockHoldsAreRefusedAsMemoryIs) {
  for (std::int32_t format : kFormats) {
    const HeldSurface surface = MakeNoisy(Describe(8, 8, format), 6);
    for (const auto& [width, height] :
         {std::pair{INT32_MAX, INT32_MAX}, {INT32_MAX, 1}, {1 << 16, 1 << 16}, {1 << 30, 4}}) {
      if (std::int64_t{width} * height <= 0x7FFFFFFF) continue;
      EXPECT_EQ(surface->ResizeNow(width, height, 0, 0),
                format <= FORMAT_GRAY8 ? std::int32_t{E_FAIL} : VED_E_OUTOFMEMORY)
          << format << ": " << width << "x" << height;
    }
    EXPECT_EQ(DescriptionOf(surface.get()).width, 8);
  }
}

TEST(ResizeNow, AnUnknownFormatIsUnsupportedAndLeavesNothing) {
  SurfaceDescription d = Describe(8, 8, FORMAT_GRAY8);
  d.format = 9;
  const HeldSurface surface = MakeRaw(d, 64);
  surface->SetAspectRatio(1, 1);
  const std::int64_t live = LiveAllocations();
  EXPECT_EQ(surface->ResizeNow(16, 16, 0, 0), VED_E_UNSUPPORTED);
  EXPECT_EQ(LiveAllocations(), live);
  EXPECT_EQ(DescriptionOf(surface.get()).width, 8);
  EXPECT_EQ(DirtyRectOf(surface), (RECT{0, 0, 16, 16}));
  EXPECT_FALSE(HasAspect(surface));
}

TEST(ResizeNow, FreesTheOldBlockOnlyIfItIsOwnedAndOwnsTheNewOne) {
  for (std::uint32_t flags : {0u, 1u, 2u, 4u, 5u}) {
    const std::int64_t live = LiveAllocations();
    std::uint8_t* old = nullptr;
    const bool owned = (flags & 5) != 0;
    {
      const HeldSurface surface = MakeEven(Describe(8, 8, FORMAT_RGB32), 1);
      old = PixelsOf(surface);
      surface->SetStorageFlags(flags);
      const std::int64_t before = LiveAllocations();
      ASSERT_EQ(surface->ResizeNow(16, 16, 0, 0), VED_OK);
      EXPECT_EQ(LiveAllocations(), before + (owned ? 0 : 1)) << flags;
    }
    EXPECT_EQ(LiveAllocations(), live + (owned ? 0 : 1)) << flags;
    if (!owned) FreePixelBlock(old);
  }
}

}  // namespace
}  // namespace zor::test
