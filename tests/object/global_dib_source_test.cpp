// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <cstring>
#include <utility>

#include "object/source_cases.h"
#include "support/guarded_memory.h"
#include "support/system_call_watch.h"

namespace zor::test {
namespace {

/// A bitmap in global memory.
class Dib {
 public:
  Dib(std::int32_t width, std::int32_t height, std::uint16_t bits, std::size_t pixelBytes)
      : pixels(Noise(16).Bytes(pixelBytes)), handle(GlobalAlloc(GMEM_MOVEABLE, 40 + pixelBytes)) {
    auto* start = static_cast<std::uint8_t*>(GlobalLock(handle));
    // What doesn't count is filled with nonsense.
    std::memset(start, 0xEE, 40);
    std::memcpy(start + 4, &width, 4);
    std::memcpy(start + 8, &height, 4);
    std::memcpy(start + 14, &bits, 2);
    if (pixelBytes > 0) std::memcpy(start + 40, pixels.data(), pixelBytes);
    GlobalUnlock(handle);
  }
  ~Dib() { GlobalFree(handle); }

  Bytes pixels;
  GlobalHandle handle;
};

TEST(GlobalDibSource, RgbRoundsDownAndKeepsTheBitmapsRowOrder) {
  for (const std::uint16_t bits : {std::uint16_t{24}, std::uint16_t{32}}) {
    for (std::int32_t width = 4; width <= 9; ++width) {
      for (std::int32_t height = 4; height <= 7; ++height) {
        const std::int32_t sourceStride = (bits * width + 31) / 32 * 4;
        const std::int32_t rounded = width / 4 * 4;
        const std::int32_t rows = height / 2 * 2;
        const std::int32_t stride = width % 4 == 0 ? sourceStride : bits / 8 * rounded;
        const Dib image(width, height, bits, static_cast<std::size_t>(sourceStride * height));
        const HeldSurface surface = Take(image.handle, SOURCE_GLOBAL_DIB, FORMAT_RGB32);
        CheckDescription(surface.get(),
                         Expect(rounded, rows, bits == 24 ? FORMAT_RGB24 : FORMAT_RGB32, bits,
                                stride, width, height, 0));
        const Bytes block = BlockOf(surface.get(), static_cast<std::size_t>(stride * rows));
        const auto row = static_cast<std::size_t>(stride);
        for (std::size_t y = 0; y < static_cast<std::size_t>(rows); ++y) {
          EXPECT_EQ(Part(block, y * row, row),
                    Part(image.pixels, y * static_cast<std::size_t>(sourceStride), row));
        }
      }
    }
  }
}

TEST(GlobalDibSource, AThirtyTwoBitBitmapAskedForAsFormatOneIsFormatTwo) {
  const Dib image(8, 8, 32, 256);
  const HeldSurface surface = Take(image.handle, SOURCE_GLOBAL_DIB, FORMAT_RGB24);
  EXPECT_EQ(DescriptionOf(surface.get()).format, FORMAT_RGB32);
}

TEST(GlobalDibSource, PlanarPicturesKeepTheirSizeAndTheHeadersBitCount) {
  for (const std::uint16_t bits : {std::uint16_t{12}, std::uint16_t{24}, std::uint16_t{7}}) {
    const Dib image(7, 5, bits, 52);
    const HeldSurface surface = Take(image.handle, SOURCE_GLOBAL_DIB, FORMAT_YUV420);
    CheckDescription(surface.get(), Expect(7, 5, FORMAT_YUV420, bits, 7, 7, 5, 1));
    EXPECT_EQ(BlockOf(surface.get(), 52), image.pixels);
    EXPECT_EQ(Part(BlockOf(surface.get(), 68), 52, 16), Bytes(16, 0));
  }
}

TEST(GlobalDibSource, PackedPicturesAreBottomUp) {
  const Dib image(6, 5, 16, 60);
  const HeldSurface surface = Take(image.handle, SOURCE_GLOBAL_DIB, FORMAT_YUY2);
  CheckDescription(surface.get(), Expect(6, 5, FORMAT_YUY2, 16, 12, 6, 5, 0));
  EXPECT_EQ(BlockOf(surface.get(), 60), image.pixels);
}

TEST(GlobalDibSource, TestsSizeThenFormatThenFlags) {
  for (const auto& [width, height] : {std::pair{3, 8}, {8, 3}, {8, -8}, {-8, 8}, {0, 0}}) {
    const Dib image(width, height, 24, 256);
    EXPECT_EQ(Fail(image.handle, SOURCE_GLOBAL_DIB, 99, 0), VED_E_INVALIDARG);
  }
  const Dib image(8, 8, 24, 192);
  for (const std::int32_t format : {0, 3, 6, -1}) {
    EXPECT_EQ(Fail(image.handle, SOURCE_GLOBAL_DIB, format, 0), VED_E_UNSUPPORTED);
  }
  const Dib deep(8, 8, 16, 192);
  EXPECT_EQ(Fail(deep.handle, SOURCE_GLOBAL_DIB, FORMAT_RGB24, 0), VED_E_UNSUPPORTED);
  EXPECT_EQ(Fail(image.handle, SOURCE_GLOBAL_DIB, FORMAT_RGB24, 1), VED_E_INVALIDARG);
}

TEST(GlobalDibSource, AHeaderThatAsksForMoreThanTheBlockHoldsIsInvalid) {
  const struct {
    std::int32_t width, height, format;
    std::uint16_t bits;
  } kCases[] = {
      {1000, 1000, FORMAT_RGB24, 24},
      {1000, 1000, FORMAT_YUV420, 12},
      {1000, 1000, FORMAT_YUY2, 16},
      {INT32_MAX, INT32_MAX, FORMAT_RGB24, 32},
      {INT32_MAX, INT32_MAX, FORMAT_YUV420, 12},
      {INT32_MAX, INT32_MAX, FORMAT_YUY2, 16},
  };
  for (const auto& header : kCases) {
    const Dib image(header.width, header.height, header.bits, 4096);
    EXPECT_EQ(Fail(image.handle, SOURCE_GLOBAL_DIB, header.format), VED_E_INVALIDARG);
  }
}

TEST(GlobalDibSource, ABlockWithoutAWholeHeaderIsInvalid) {
  GlobalHandle handle = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, 8);
  EXPECT_EQ(Fail(handle, SOURCE_GLOBAL_DIB, FORMAT_RGB24), VED_E_INVALIDARG);
  GlobalFree(handle);
}

TEST(GlobalDibSource, ASizeThatTheSystemDoesNotTellIsInvalid) {
  const Dib image(8, 8, 24, 192);
  for (const int nth : {1, 2}) {
    SystemCallWatch watch;
    watch.Fail(SystemCall::kGlobalSize, 0, nth);
    EXPECT_EQ(Fail(image.handle, SOURCE_GLOBAL_DIB, FORMAT_RGB24), VED_E_INVALIDARG);
    EXPECT_EQ(watch.Count(SystemCall::kGlobalSize), nth);
  }
}

TEST(GlobalDibSource, AFirstLockThatGivesNothingIsInvalid) {
  const Dib image(8, 8, 24, 192);
  SystemCallWatch watch;
  watch.Fail(SystemCall::kGlobalLock);
  EXPECT_EQ(Fail(image.handle, SOURCE_GLOBAL_DIB, FORMAT_RGB24), VED_E_INVALIDARG);
}

TEST(GlobalDibSource, ASecondLockThatGivesNothingIsOutOfMemory) {
  const Dib image(8, 8, 24, 192);
  for (const std::int32_t format : {FORMAT_RGB24, FORMAT_YUV420, FORMAT_YUY2}) {
    SystemCallWatch watch;
    watch.Fail(SystemCall::kGlobalLock, 0, 2);
    EXPECT_EQ(Fail(image.handle, SOURCE_GLOBAL_DIB, format), VED_E_OUTOFMEMORY);
    EXPECT_EQ(watch.Count(SystemCall::kGlobalUnlock), 2);
  }
}

TEST(GlobalDibSource, WithoutMemoryTheBitmapIsUnlocked) {
  const Dib image(8, 8, 24, 192);
  for (const std::int32_t format : {FORMAT_RGB24, FORMAT_YUV420, FORMAT_YUY2}) {
    for (std::uint64_t k = 1; k <= 2; ++k) {
      SystemCallWatch watch;
      EXPECT_EQ(Fail(image.handle, SOURCE_GLOBAL_DIB, format, kCopy, k), VED_E_OUTOFMEMORY);
      EXPECT_EQ(watch.Count(SystemCall::kGlobalUnlock), watch.Count(SystemCall::kGlobalLock));
    }
  }
}

TEST(GlobalDibSource, FourByFourIsTheSmallestAndTheCopyBitOwnsTheBlock) {
  const Dib image(4, 4, 24, 48);
  CheckSmallest(image.handle, SOURCE_GLOBAL_DIB);
}

}  // namespace
}  // namespace zor::test
