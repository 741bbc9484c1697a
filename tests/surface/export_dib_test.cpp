// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gmock/gmock.h>

#include <limits>
#include <tuple>

#include "surface/export_cases.h"

namespace zor::test {
namespace {

using testing::Each;

void CheckHeader(const ExportedDib& dib, std::int32_t width, std::int32_t height, std::int32_t bits,
                 std::int32_t imageBytes) {
  EXPECT_EQ(dib.At<std::uint32_t>(0), 40u);
  EXPECT_EQ(dib.At<std::int32_t>(4), width);
  EXPECT_EQ(dib.At<std::int32_t>(8), height);
  EXPECT_EQ(dib.At<std::uint16_t>(12), 1);
  EXPECT_EQ(dib.At<std::uint16_t>(14), bits);
  EXPECT_EQ(dib.At<std::uint32_t>(16), 0u);
  EXPECT_EQ(dib.At<std::int32_t>(20), imageBytes);
  for (std::size_t at = 24; at < 40; ++at) EXPECT_EQ(dib.all[at], 0);
}

TEST(ExportDib, RgbLeavesBottomUpInRowsOfWholeWords) {
  for (const std::int32_t format : {FORMAT_RGB24, FORMAT_RGB32}) {
    for (const std::uint32_t orientation : {0u, 1u}) {
      SurfaceDescription description = Describe(7, 5, format);
      description.stride += 8;
      description.Orientation = orientation;
      const HeldSurface surface = Noisy(description);
      const Bytes block = BlockOf(surface.get(), PictureBytes(description));
      const ExportedDib dib(surface.get());
      const std::int32_t bits = description.bitsPerPixel;
      const std::int32_t stride = (bits * 7 + 31) / 32 * 4;
      CheckHeader(dib, 7, 5, bits, stride * 5);
      const Bytes pixels = dib.Pixels(static_cast<std::size_t>(stride * 5));
      for (std::int32_t y = 0; y < 5; ++y) {
        const std::int32_t from = (orientation == 0 ? y : 4 - y) * description.stride;
        EXPECT_EQ(Part(pixels, y * stride, stride), Part(block, from, stride));
      }
      EXPECT_EQ(DescriptionOf(surface.get()).Orientation, orientation);
    }
  }
}

TEST(ExportDib, PlanarLeavesAsItsThreePlanes) {
  const SurfaceDescription description = Describe(10, 6, FORMAT_YUV420);
  const HeldSurface surface = Noisy(description);
  const ExportedDib dib(surface.get());
  CheckHeader(dib, 10, 6, 12, 90);
  EXPECT_EQ(dib.Pixels(90), BlockOf(surface.get(), 90));
}

TEST(ExportDib, PackedLeavesUnturnedAndTheSurfaceSaysBottomUp) {
  const HeldSurface surface = Noisy(Describe(6, 5, FORMAT_YUY2));
  EXPECT_EQ(DescriptionOf(surface.get()).Orientation, 1u);
  const ExportedDib dib(surface.get());
  CheckHeader(dib, 6, 5, 16, 60);
  EXPECT_EQ(dib.Pixels(60), BlockOf(surface.get(), 60));
  EXPECT_EQ(DescriptionOf(surface.get()).Orientation, 0u);
}

TEST(ExportDib, GrayLeavesAsZeros) {
  const HeldSurface surface = Noisy(Describe(6, 5, FORMAT_GRAY8));
  const ExportedDib dib(surface.get());
  CheckHeader(dib, 6, 5, 8, 40);
  EXPECT_THAT(dib.Pixels(40), Each(0));
}

TEST(ExportDib, EveryLockEnds) {
  const HeldSurface surface = Noisy(Describe(8, 8, FORMAT_RGB24));
  SystemCallWatch watch;
  GlobalFree(Export(surface.get(), kDib));
  EXPECT_EQ(watch.Count(SystemCall::kGlobalLock), 2);  // for the header and for the rows
  EXPECT_EQ(watch.Count(SystemCall::kGlobalUnlock), 2);
}

TEST(ExportDib, PixelsOfNoBitsMakeABitmapOfAHeaderAlone) {
  SurfaceDescription description = Describe(8, 8, FORMAT_GRAY8);
  description.bitsPerPixel = 0;
  const HeldSurface surface = Noisy(description);
  const ExportedDib dib(surface.get());
  CheckHeader(dib, 8, 8, 0, 0);
}

TEST(ExportDib, BitsThatMakeTheHeaderSmallMakeNoSmallBlock) {
  // 8 bits per pixel in a planar picture: the header says 8 x 8, the planes need 96.
  SurfaceDescription description = Describe(8, 8, FORMAT_YUV420);
  description.bitsPerPixel = 8;
  const HeldSurface planar = Noisy(description);
  const ExportedDib dib(planar.get());
  CheckHeader(dib, 8, 8, 8, 64);
  EXPECT_EQ(dib.Pixels(96), BlockOf(planar.get(), 96));

  // 12 in an RGB one: rows of 12 bytes for 8 pixels, where planes of 7 x 8 are counted as 84.
  description = Describe(7, 8, FORMAT_RGB24);
  description.bitsPerPixel = 12;
  const HeldSurface rgb = Noisy(description);
  const ExportedDib narrow(rgb.get());
  CheckHeader(narrow, 7, 8, 12, 84);
  EXPECT_GE(narrow.all.size(), 40u + 96u);
}

TEST(ExportDib, ComesBackThroughTheBuilder) {
  for (const std::int32_t format : {FORMAT_RGB24, FORMAT_RGB32, FORMAT_YUV420, FORMAT_YUY2}) {
    SurfaceDescription description = Describe(8, 6, format);
    description.Orientation = format == FORMAT_YUV420 ? 1 : 0;
    const HeldSurface surface = Noisy(description);
    CheckComingBack(ExportedDib(surface.get()).handle, SOURCE_GLOBAL_DIB, description, surface);
  }
}

TEST(ExportDib, WithoutGlobalMemoryFails) {
  const HeldSurface surface = Noisy(Describe(8, 8, FORMAT_YUY2));
  SystemCallWatch watch;
  watch.Fail(SystemCall::kGlobalAlloc);
  EXPECT_EQ(FailToExport(surface, kDib), E_FAIL);
  EXPECT_EQ(DescriptionOf(surface.get()).Orientation, 1u);
}

GlobalHandle lastGlobal = nullptr;

TEST(ExportDib, ALockThatGivesNothingFailsAndTheBitmapStays) {
  const HeldSurface surface = Noisy(Describe(8, 8, FORMAT_RGB24));
  SystemCallWatch watch;
  // Keeps the handle that nobody is told of.
  auto& calls = CurrentSystemCalls().globalMemory;
  calls.alloc = [](std::uint32_t flags, std::size_t bytes) {
    EXPECT_EQ(flags, 66u);
    EXPECT_EQ(bytes, 40u + 192u);
    return lastGlobal = NativeSystemCalls().globalMemory.alloc(flags, bytes);
  };
  watch.Fail(SystemCall::kGlobalLock, 0, 2);
  EXPECT_EQ(FailToExport(surface, kDib), E_FAIL);
  EXPECT_EQ(watch.Count(SystemCall::kGlobalFree), 0);
  ASSERT_NE(lastGlobal, nullptr);
  GlobalFree(lastGlobal);
}

TEST(ExportDib, WithoutAHeaderThereIsNoBitmap) {
  const HeldSurface surface = Noisy(Describe(8, 8, FORMAT_YUY2));
  SystemCallWatch watch;
  watch.Fail(SystemCall::kGlobalLock);
  EXPECT_EQ(FailToExport(surface, kDib), E_FAIL);
  EXPECT_EQ(watch.Count(SystemCall::kGlobalFree), 1);
  EXPECT_EQ(DescriptionOf(surface.get()).Orientation, 1u);
}

TEST(ExportDib, ImpossibleSizesFailWithoutAskingTheSystem) {
  SystemCallWatch watch;
  for (const auto& [width, height, bits] : {std::tuple{INT32_MAX, INT32_MAX, 24},
                                            {INT32_MAX, INT32_MAX, 12},
                                            {-8, 8, 24},
                                            {8, -8, 12},
                                            {INT32_MAX, 4, INT32_MAX},
                                            {INT32_MIN, INT32_MAX, INT32_MAX}}) {
    EXPECT_EQ(CreateGlobalDib(width, height, bits, 0), nullptr);
  }
  EXPECT_EQ(CreateGlobalDib(8, 8, 24, std::int64_t{1} << 40), nullptr);
  EXPECT_EQ(watch.Count(SystemCall::kGlobalAlloc), 0);
}

}  // namespace
}  // namespace zor::test
