// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include <algorithm>

#include "drivers/driver_cases.h"
#include "platform/memory.h"
#include "platform/pixel_block.h"

namespace zor::test {
namespace {

constexpr std::int32_t kFormats[] = {FORMAT_RGB24, FORMAT_RGB32, FORMAT_GRAY8, FORMAT_YUV420,
                                     FORMAT_YUY2};

bool HasAspect(const HeldSurface& surface) {
  std::int32_t width = 0, height = 0;
  surface->GetAspectRatio(&width, &height);
  return width != 0 || height != 0;
}

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

TEST(ResizeNow, TheMaskFollowsWithoutFitAndByTheNearestPixel) {
  const HeldSurface alone = MakeNoisy(Describe(8, 8, FORMAT_GRAY8), 5);
  ASSERT_EQ(alone->ResizeNow(32, 16, 0, SCALE_NEAREST), VED_OK);
  const Bytes expected = BlockOf(alone.get(), 32 * 16);
  for (std::int32_t format : kFormats) {
    const HeldSurface surface = MakeEven(Describe(8, 8, format), 200);
    const HeldSurface mask = MakeNoisy(Describe(8, 8, FORMAT_GRAY8), 5);
    surface->SetMask(mask.get());
    ASSERT_EQ(surface->ResizeNow(32, 16, 1, SCALE_BILINEAR), VED_OK);
    const SurfaceDescription d = DescriptionOf(mask.get());
    EXPECT_EQ(d.width, 32);
    EXPECT_EQ(d.height, 16);
    EXPECT_EQ(BlockOf(mask.get(), 32 * 16), expected) << format;
  }
}

TEST(ResizeNow, ASurfaceThatIsItsOwnMaskIsResizedOnce) {
  const HeldSurface surface = MakeEven(Describe(8, 8, FORMAT_GRAY8), 200);
  const HeldSurface other = MakeEven(Describe(8, 8, FORMAT_GRAY8), 100);
  surface->SetMask(other.get());
  other->SetMask(surface.get());
  EXPECT_EQ(surface->ResizeNow(16, 16, 0, SCALE_NEAREST), VED_OK);
  EXPECT_EQ(DescriptionOf(surface.get()).width, 16);
  EXPECT_EQ(DescriptionOf(other.get()).width, 16);
  EXPECT_EQ(BlockOf(surface.get(), 256), Bytes(256, 200));
  surface->SetMask(surface.get());
  EXPECT_EQ(surface->ResizeNow(32, 8, 0, SCALE_NEAREST), VED_OK);
  EXPECT_EQ(BlockOf(surface.get(), 256), Bytes(256, 200));
  // Let go of the circles.
  surface->SetMask(MakeBlank(Describe(4, 4, FORMAT_GRAY8)).get());
  other->SetMask(MakeBlank(Describe(4, 4, FORMAT_GRAY8)).get());
}

TEST(ResizeNow, InACircleOfMasksTheRestOfTheQueueRunsOnTheFinishedPicture) {
  const HeldSurface surface = MakeNoisy(Describe(58, 22, FORMAT_RGB32), 8);
  const HeldSurface expected = MakeNoisy(Describe(58, 22, FORMAT_RGB32), 8);
  const HeldSurface mask = MakeNoisy(Describe(58, 22, FORMAT_GRAY8), 9);
  surface->SetMask(mask.get());
  mask->SetMask(surface.get());
  for (const HeldSurface* s : {&surface, &expected}) {
    (*s)->QueueResize(40, 20, 0, 1);
    (*s)->QueueConvert(FORMAT_YUV420);
    EXPECT_EQ((*s)->Flush(), VED_OK);
  }
  const SurfaceDescription d = DescriptionOf(surface.get()), e = DescriptionOf(expected.get());
  EXPECT_EQ(0, std::memcmp(&d, &e, sizeof d));
  EXPECT_EQ(BlockOf(surface.get(), PictureBytes(d)), BlockOf(expected.get(), PictureBytes(e)));
  EXPECT_EQ(DescriptionOf(mask.get()).width, 40);
  const HeldSurface plug = MakeBlank(Describe(8, 8, FORMAT_GRAY8));
  surface->SetMask(plug.get());
}

TEST(ConvertNow, InACircleOfMasksAFormatThatChangesDuringTheTrimIsLookedAtAgain) {
  const HeldSurface surface = MakeNoisy(Describe(59, 23, FORMAT_RGB32), 8);
  const HeldSurface mask = MakeNoisy(Describe(59, 23, FORMAT_GRAY8), 9);
  surface->SetMask(mask.get());
  mask->SetMask(surface.get());
  const HeldSurface expected = MakeNoisy(Describe(59, 23, FORMAT_RGB32), 8);
  surface->QueueConvert(FORMAT_YUV420);  // trims, and the next one runs meanwhile
  surface->QueueConvert(FORMAT_YUY2);
  surface->Flush();
  expected->ResizeNow(58, 22, 1, 1);
  // The mask's wish for the size that the picture has already takes a packed one through planes.
  for (const std::int32_t format : {FORMAT_YUY2, FORMAT_YUV420, FORMAT_YUY2, FORMAT_YUV420}) {
    expected->ConvertNow(format);
  }
  const SurfaceDescription d = DescriptionOf(surface.get());
  EXPECT_EQ(d.format, FORMAT_YUV420);
  EXPECT_EQ(d.stride, 58);
  EXPECT_EQ(BlockOf(surface.get(), PictureBytes(d)), BlockOf(expected.get(), PictureBytes(d)));
  const HeldSurface plug = MakeBlank(Describe(8, 8, FORMAT_GRAY8));
  surface->SetMask(plug.get());
}

TEST(RotateNow, ASurfaceThatIsItsOwnMaskIsTurnedOnce) {
  const HeldSurface surface = MakeEven(Describe(8, 4, FORMAT_GRAY8), 200);
  surface->SetMask(surface.get());
  EXPECT_EQ(surface->RotateNow(90), VED_OK);
  EXPECT_EQ(DescriptionOf(surface.get()).width, 4);
  EXPECT_EQ(DescriptionOf(surface.get()).height, 8);
  surface->SetMask(MakeBlank(Describe(4, 4, FORMAT_GRAY8)).get());
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

/// The host's memory behind a resize: exactly what it is defined to clear.
struct HostPicture {
  HostPicture(std::int32_t stride, std::int32_t height)
      : memory(static_cast<std::size_t>(stride) * static_cast<std::size_t>(height) * 3 / 2,
               GuardedMemory::Edge::kEnd, 0xD1) {
    std::memset(memory.data(), 0xD1, memory.size());
  }
  GuardedMemory memory;
};

TEST(DirectResize, ClearsOneAndAHalfTimesThePictureWhateverTheFormat) {
  for (std::int32_t format : {FORMAT_RGB24, FORMAT_RGB32, FORMAT_GRAY8, FORMAT_YUV420}) {
    const HeldSurface surface = MakeEven(Describe(8, 8, format), 200);
    const std::int32_t stride = 16 * 4 + 8;
    HostPicture host(stride, 12);
    surface->QueueResize(16, 12, 0, SCALE_NEAREST);
    ASSERT_EQ(surface->ReadPixels(host.memory.data(), stride, 1), VED_OK);
    const Bytes bytes = host.memory.Copy();
    const std::size_t row = format == FORMAT_RGB32 ? 64 : format == FORMAT_RGB24 ? 48 : 16;
    const std::size_t plane = static_cast<std::size_t>(stride) * 12;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      const bool luma = i < plane && i % static_cast<std::size_t>(stride) < row;
      const bool chroma = format == FORMAT_YUV420 && i >= plane && (i - plane) % 36 < 8;
      ASSERT_EQ(bytes[i], luma || chroma ? 200 : i < plane ? 16 : 128) << format << " at " << i;
    }
    EXPECT_TRUE(host.memory.GuardsIntact());
  }
}

TEST(DirectResize, LeavesTheSurfaceButForItsDirtyRect) {
  for (std::int32_t format : {FORMAT_RGB24, FORMAT_RGB32, FORMAT_GRAY8, FORMAT_YUV420}) {
    const HeldSurface surface = MakeNoisy(Describe(8, 8, format), 7);
    const HeldSurface mask = MakeEven(Describe(8, 8, FORMAT_GRAY8), 1);
    surface->SetMask(mask.get());
    surface->SetAspectRatio(1, 1);
    std::uint8_t* const pixels = PixelsOf(surface);
    SurfaceDescription before = DescriptionOf(surface.get());
    HostPicture host(80, 8);
    surface->QueueResize(20, 8, 1, SCALE_BILINEAR);
    ASSERT_EQ(surface->ReadPixels(host.memory.data(), 80, 1), VED_OK);
    const SurfaceDescription after = DescriptionOf(surface.get());
    EXPECT_EQ(after.DirtyRect, (RECT{6, 0, 14, 8}));
    before.DirtyRect = after.DirtyRect;
    EXPECT_EQ(std::memcmp(&before, &after, sizeof before), 0);
    EXPECT_EQ(PixelsOf(surface), pixels);
    EXPECT_TRUE(HasAspect(surface));
    EXPECT_EQ(DescriptionOf(mask.get()).width, 8);
  }
}

TEST(DirectResize, ToTheSameSizeCopiesTheRows) {
  const HeldSurface surface = MakeNoisy(Describe(8, 6, FORMAT_RGB32), 8);
  const Bytes pixels = BlockOf(surface.get(), 32 * 6);
  Bytes memory(32 * 6, 0);
  surface->QueueResize(8, 6, 1, SCALE_BILINEAR);
  ASSERT_EQ(surface->ReadPixels(memory.data(), 32, 1), VED_OK);
  EXPECT_EQ(memory, pixels);
}

TEST(DirectResize, TheOtherRowOrderTurnsRgbOver) {
  const HeldSurface surface = MakeNoisy(DescribeOriented(8, 8, FORMAT_RGB32, 0), 9);
  const Bytes pixels = BlockOf(surface.get(), 32 * 8);
  HostPicture host(64, 16);
  surface->QueueResize(16, 16, 0, SCALE_NEAREST);
  ASSERT_EQ(surface->ReadPixels(host.memory.data(), 64, 1), VED_OK);
  for (std::size_t y = 0; y < 16; ++y) {
    for (std::size_t i = 0; i < 64; ++i) {
      ASSERT_EQ(host.memory.data()[64 * y + i], pixels[(15 - y) / 2 * 32 + i / 8 * 4 + i % 4]);
    }
  }
}

TEST(DirectResize, BandsOfTheOtherRowOrderWalkUpFromTheStartSoThatOnlyOneRowIsPainted) {
  const HeldSurface surface = MakeEven(DescribeOriented(8, 8, FORMAT_RGB32, 0), 200);
  HostPicture host(80, 8);
  surface->QueueResize(20, 8, 1, SCALE_NEAREST);
  ASSERT_EQ(surface->ReadPixels(host.memory.data(), 80, 1), VED_OK);
  const Bytes bytes = host.memory.Copy();
  for (std::size_t y = 0; y < 8; ++y) {
    for (std::size_t x = 0; x < 20; ++x) {
      // Other rows show the planar black from before.
      const std::uint8_t band = y == 0 ? 0 : 16;
      ASSERT_EQ(bytes[80 * y + 4 * x], x >= 6 && x < 14 ? 200 : band) << x << "," << y;
    }
  }
  EXPECT_TRUE(host.memory.GuardsIntact());
}

TEST(DirectResize, NeverLeavesTheHostsMemoryAtAnyStride) {
  for (std::int32_t format : {FORMAT_RGB24, FORMAT_RGB32, FORMAT_GRAY8, FORMAT_YUV420}) {
    const HeldSurface surface = MakeNoisy(Describe(16, 8, format), 10);
    for (const auto& [width, height] : {std::pair{20, 40}, {40, 20}, {7, 9}, {9, 5}, {4, 4}}) {
      for (std::int32_t stride : {1, 2, 3, 4, 5, 7, 16, 19, 20, 21, 80, 161}) {
        for (std::uint32_t orientation : {0u, 1u}) {
          for (std::int32_t fit : {0, 1}) {
            for (auto edge : {GuardedMemory::Edge::kStart, GuardedMemory::Edge::kEnd}) {
              GuardedMemory memory(static_cast<std::size_t>(stride * height * 3 / 2), edge);
              surface->QueueResize(width, height, fit, SCALE_BILINEAR);
              ASSERT_EQ(surface->ReadPixels(memory.data(), stride, orientation), VED_OK);
              ASSERT_TRUE(memory.GuardsIntact())
                  << "format " << format << ", " << width << "x" << height << ", stride " << stride
                  << ", orientation " << orientation << ", fit " << fit;
            }
          }
        }
      }
    }
  }
}

TEST(DirectResize, WithoutMemoryForAScratchBlockTheHostsMemoryStays) {
  const HeldSurface surface = MakeNoisy(Describe(8, 8, FORMAT_RGB32), 10);
  Bytes memory(4 * 16 * 3 / 2, 0xD1);
  surface->QueueResize(16, 16, 0, SCALE_NEAREST);
  RefuseAllocation(1);
  const std::int32_t result = surface->ReadPixels(memory.data(), 4, 1);
  RefuseAllocation(0);
  EXPECT_EQ(result, VED_E_OUTOFMEMORY);
  EXPECT_EQ(memory, Bytes(memory.size(), 0xD1));
}

}  // namespace
}  // namespace zor::test
