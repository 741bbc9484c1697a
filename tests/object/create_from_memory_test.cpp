// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gmock/gmock.h>

#include <cstring>
#include <utility>

#include "object/creator_cases.h"
#include "platform/system_calls.h"
#include "support/guarded_memory.h"

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

namespace zor::test {
namespace {

using testing::Each;

struct MemoryFailure {
  std::int32_t result;
  std::uint32_t dataCalls;
};

/// Runs a `CreateFromMemory` that must fail, and checks that nothing is left of it.
MemoryFailure FailMemory(const SurfaceDescription& description, std::uint64_t refused = 0) {
  VectorSource source(Bytes(64, 1));
  const std::int32_t result = FailToCreate(
      [&](ISurfaceBuilder* builder, IZorSurface** out) {
        return builder->CreateFromMemory(&description, &source, out);
      },
      refused);
  return {result, source.dataCalls};
}

TEST(CreateFromMemory, NullPointersAreInvalid) {
  const HeldBuilder builder = MakeBuilder();
  const SurfaceDescription description = Describe(8, 8, FORMAT_RGB24);
  VectorSource source(Bytes(192, 1));
  IZorSurface* out = kUntouched;
  EXPECT_EQ(builder->CreateFromMemory(nullptr, &source, &out), VED_E_INVALIDARG);
  EXPECT_EQ(builder->CreateFromMemory(&description, nullptr, &out), VED_E_INVALIDARG);
  EXPECT_EQ(builder->CreateFromMemory(&description, &source, nullptr), VED_E_INVALIDARG);
  EXPECT_EQ(out, kUntouched);
  EXPECT_EQ(source.dataCalls, 0u);
}

TEST(CreateFromMemory, SizesUnderFourAreInvalidBeforeTheSourceIsAsked) {
  for (const auto& [width, height] : {std::pair{3, 8}, {8, 3}, {0, 8}, {8, 0}}) {
    const MemoryFailure failure = FailMemory(Describe(width, height, FORMAT_RGB32));
    EXPECT_EQ(failure.result, VED_E_INVALIDARG);
    EXPECT_EQ(failure.dataCalls, 0u);
  }
}

TEST(CreateFromMemory, FourByFourIsTheSmallestAndItsBlockGoesWithTheSurface) {
  const std::int64_t before = LiveAllocations();
  for (const std::int32_t format :
       {FORMAT_RGB24, FORMAT_RGB32, FORMAT_YUV420, FORMAT_YUY2, FORMAT_YVU420}) {
    const SurfaceDescription description = Describe(4, 4, format);
    HeldSurface surface = MakeSurface(description, Bytes(PictureBytes(description), 1));
    EXPECT_EQ(CountOf(surface.get()), 1u);
    surface.Reset();
    EXPECT_EQ(LiveAllocations(), before) << format;
  }
}

TEST(CreateFromMemory, GrayAndUnknownFormatsAreUnsupportedAfterTheSourceWasAsked) {
  for (const std::int32_t format : {-1, 0, FORMAT_GRAY8, 7}) {
    SurfaceDescription description = Describe(8, 8, FORMAT_GRAY8);
    description.format = format;
    const MemoryFailure failure = FailMemory(description);
    EXPECT_EQ(failure.result, VED_E_UNSUPPORTED);
    EXPECT_EQ(failure.dataCalls, 1u);
  }
}

TEST(CreateFromMemory, TenByElevenRgb24IsTrimmedToEightByTen) {
  SurfaceDescription description = Describe(10, 11, FORMAT_RGB24);
  description.stride = 32;
  description.Orientation = 0;
  description.ComposeInPlace = 3;
  description.DirtyRect = {1, 1, 2, 2};
  const Bytes source = Noise(1).Bytes(32 * 11);
  const HeldSurface surface = MakeSurface(description, source);
  const SurfaceDescription actual = DescriptionOf(surface.get());
  EXPECT_EQ(actual.width, 8);
  EXPECT_EQ(actual.height, 10);
  EXPECT_EQ(actual.stride, 24);
  EXPECT_EQ(actual.DirtyRect.left, 0);
  EXPECT_EQ(actual.DirtyRect.top, 0);
  EXPECT_EQ(actual.DirtyRect.right, 8);
  EXPECT_EQ(actual.DirtyRect.bottom, 10);
  EXPECT_EQ(actual.Orientation, 0u);
  EXPECT_EQ(actual.ComposeInPlace, 3u);
  EXPECT_EQ(actual.StorageKind, 4u);
  Bytes expected;
  for (std::size_t row = 0; row < 10; ++row) {
    const Bytes cut = Part(source, row * 32, 24);
    expected.insert(expected.end(), cut.begin(), cut.end());
  }
  EXPECT_EQ(BlockOf(surface.get(), 240), expected);
}

TEST(CreateFromMemory, EveryWidthAndHeightIsTrimmedByItsOwnRule) {
  for (const std::int32_t format : {FORMAT_RGB24, FORMAT_RGB32}) {
    for (std::int32_t width = 4; width <= 13; ++width) {
      for (std::int32_t height = 4; height <= 7; ++height) {
        SurfaceDescription description = Describe(width, height, format);
        description.stride += 4;
        const std::int32_t pixel = description.bitsPerPixel / 8;
        const Bytes source = Noise(2).Bytes(PictureBytes(description));
        const HeldSurface surface = MakeSurface(description, source);
        const SurfaceDescription actual = DescriptionOf(surface.get());
        EXPECT_EQ(actual.width, width / 4 * 4);
        EXPECT_EQ(actual.height, height / 2 * 2);
        // A width of whole fours keeps the caller's stride, and is copied padding and all.
        EXPECT_EQ(actual.stride, width % 4 == 0 ? description.stride : pixel * actual.width);
        const Bytes block = BlockOf(surface.get(), PictureBytes(actual));
        for (std::int32_t row = 0; row < actual.height; ++row) {
          const auto rowBytes = static_cast<std::size_t>(actual.stride);
          EXPECT_EQ(Part(block, static_cast<std::size_t>(row) * rowBytes, rowBytes),
                    Part(source, static_cast<std::size_t>(row * description.stride), rowBytes));
        }
      }
    }
  }
}

TEST(CreateFromMemory, PlanarPicturesAreCopiedWholeAndTopDown) {
  for (const auto& [width, height] : {std::pair{8, 6}, {5, 5}, {7, 4}, {4, 7}}) {
    SurfaceDescription description = Describe(width, height, FORMAT_YUV420);
    description.Orientation = 0;
    const auto bytes = static_cast<std::size_t>(width * height * 3 / 2);
    const Bytes source = Noise(3).Bytes(bytes);
    const HeldSurface surface = MakeSurface(description, source);
    EXPECT_EQ(BlockOf(surface.get(), bytes), source);
    EXPECT_EQ(DescriptionOf(surface.get()).Orientation, 1u);
    EXPECT_EQ(DescriptionOf(surface.get()).width, width);
    EXPECT_EQ(DescriptionOf(surface.get()).height, height);
  }
}

TEST(CreateFromMemory, FormatSixBecomesFormatFourWithItsPlanesExchanged) {
  for (const auto& [width, height] : {std::pair{8, 6}, {4, 4}, {5, 5}, {6, 5}}) {
    const auto luma = static_cast<std::size_t>(width * height);
    const std::size_t chroma = luma / 4;
    const std::size_t bytes = luma * 3 / 2;
    const Bytes source = Noise(4).Bytes(bytes);
    const HeldSurface surface = MakeSurface(Describe(width, height, FORMAT_YVU420), source);
    EXPECT_EQ(DescriptionOf(surface.get()).format, FORMAT_YUV420);
    EXPECT_EQ(DescriptionOf(surface.get()).Orientation, 1u);
    const Bytes block = BlockOf(surface.get(), bytes);
    EXPECT_EQ(Part(block, 0, luma), Part(source, 0, luma));
    EXPECT_EQ(Part(block, luma, chroma), Part(source, luma + chroma, chroma));
    EXPECT_EQ(Part(block, luma + chroma, chroma), Part(source, luma, chroma));
  }
}

TEST(CreateFromMemory, PlanarPicturesArePackedByTheWidthAndKeepTheStrideWord) {
  for (const std::int32_t format : {FORMAT_YUV420, FORMAT_YVU420}) {
    SurfaceDescription description = Describe(8, 4, format);
    description.stride = 20;
    const Bytes source = Noise(5).Bytes(48);
    const HeldSurface surface = MakeSurface(description, source);
    EXPECT_EQ(DescriptionOf(surface.get()).stride, 20);
    const Bytes block = BlockOf(surface.get(), 120);
    EXPECT_EQ(Part(block, 0, 32), Part(source, 0, 32));
    EXPECT_THAT(Part(block, 48, 72), Each(0));
  }
}

TEST(CreateFromMemory, PackedPicturesAreCopiedWhole) {
  SurfaceDescription description = Describe(7, 5, FORMAT_YUY2);
  description.stride = 18;
  description.Orientation = 0;
  const Bytes source = Noise(6).Bytes(90);
  const HeldSurface surface = MakeSurface(description, source);
  EXPECT_EQ(BlockOf(surface.get(), 90), source);
  EXPECT_EQ(DescriptionOf(surface.get()).Orientation, 0u);
}

TEST(CreateFromMemory, TheSurfaceDoesNotReferToTheHostsMemory) {
  const SurfaceDescription description = Describe(8, 8, FORMAT_RGB32);
  Bytes bytes = Noise(7).Bytes(256);
  VectorSource source(bytes);
  HeldSurface surface;
  ASSERT_EQ(MakeBuilder()->CreateFromMemory(&description, &source, surface.Reset()), VED_OK);
  std::memset(source.GetData(), 0, 256);
  EXPECT_EQ(BlockOf(surface.get(), 256), bytes);
  EXPECT_EQ(source.otherCalls, 0u);
}

TEST(CreateFromMemory, SizesWithoutBytesOrBeyondAWordAreInvalid) {
  const struct {
    std::int32_t width, height, format, bits, stride;
  } kCases[] = {
      {8, 8, FORMAT_RGB24, 24, 0},
      {8, 8, FORMAT_RGB24, 24, -24},
      {10, 8, FORMAT_RGB24, 7, 30},  // 7 / 8 is 0
      {10, 8, FORMAT_RGB24, -24, 30},
      {8, 8, FORMAT_YUY2, 16, -1},
      {0x10000, 0x10000, FORMAT_RGB32, 32, 0x40000},
      {0x10000, 0x10000, FORMAT_YUV420, 12, 0x10000},
      {-8, -8, FORMAT_YUV420, 12, 8},
      {INT32_MIN, INT32_MIN, FORMAT_YVU420, 12, 8},
      {0x7FFFFFFF, 0x7FFFFFFE, FORMAT_RGB24, INT32_MAX, 8},
      {-3, -4, FORMAT_RGB32, INT32_MIN, 8},
  };
  for (const auto& size : kCases) {
    SurfaceDescription description = Describe(4, 4, size.format);
    description.width = size.width;
    description.height = size.height;
    description.bitsPerPixel = size.bits;
    description.stride = size.stride;
    EXPECT_EQ(FailMemory(description).result, VED_E_INVALIDARG)
        << size.width << " x " << size.height << " format " << size.format;
  }
}

TEST(CreateFromMemory, ASourceWithoutDataLeavesOneObjectAliveWithoutPixels) {
  const HeldBuilder builder = MakeBuilder();
  const SurfaceDescription description = Describe(8, 8, FORMAT_RGB24);
  VectorSource source({});
  IZorSurface* out = kUntouched;
  const std::int64_t before = LiveAllocations();
#if defined(__SANITIZE_ADDRESS__)
  __lsan::ScopedDisabler theObjectIsMeantToStay;
#endif
  EXPECT_EQ(builder->CreateFromMemory(&description, &source, &out), VED_E_INVALIDARG);
  EXPECT_EQ(out, kUntouched);
  EXPECT_EQ(LiveAllocations(), before + 1);
}

TEST(CreateFromMemory, EveryRefusedAllocationIsOutOfMemoryAndLeavesNothing) {
  for (const std::int32_t format : {FORMAT_RGB24, FORMAT_YUV420, FORMAT_YUY2, FORMAT_YVU420}) {
    for (std::uint64_t k = 1; k <= 2; ++k) {
      const MemoryFailure failure = FailMemory(Describe(10, 8, format), k);
      EXPECT_EQ(failure.result, VED_E_OUTOFMEMORY);
      EXPECT_EQ(failure.dataCalls, k - 1);
    }
  }
}

/// A heap whose new blocks are full of old contents.
class UsedHeap {
 public:
  UsedHeap() {
    CurrentSystemCalls().memory.allocate = [](std::size_t bytes) {
      void* const block = NativeSystemCalls().memory.allocate(bytes);
      if (block != nullptr) std::memset(block, 0xCD, bytes);
      return block;
    };
  }
  ~UsedHeap() { CurrentSystemCalls() = NativeSystemCalls(); }
};

TEST(CreateFromMemory, RowsThatATurnedSizeLeavesOutAreZeros) {
  // As unsigned words -7 and -8 are large, and -8 x 3 x -8 is 192 bytes without a row to copy.
  const UsedHeap heap;
  SurfaceDescription description = Describe(4, 4, FORMAT_RGB24);
  description.width = -7;
  description.height = -8;
  const HeldSurface surface = MakeSurface(description, Bytes(192, 1));
  EXPECT_EQ(DescriptionOf(surface.get()).width, -8);
  EXPECT_EQ(DescriptionOf(surface.get()).height, -8);
  EXPECT_EQ(DescriptionOf(surface.get()).stride, -24);
  EXPECT_THAT(BlockOf(surface.get(), 192), Each(0));
}

TEST(CreateFromMemory, NoByteOfANewBlockIsTheHeapsOwn) {
  const UsedHeap heap;
  for (const std::int32_t format :
       {FORMAT_RGB24, FORMAT_RGB32, FORMAT_YUV420, FORMAT_YUY2, FORMAT_YVU420}) {
    for (const auto& [width, height] : {std::pair{4, 4}, {5, 5}, {6, 7}, {10, 11}}) {
      for (const std::int32_t wider : {0, 3}) {
        SurfaceDescription description = Describe(width, height, format);
        description.stride += wider;
        const Bytes source(PictureBytes(description), 1);
        const HeldSurface surface = MakeSurface(description, source);
        for (const std::uint8_t byte :
             BlockOf(surface.get(), PictureBytes(DescriptionOf(surface.get())))) {
          ASSERT_LE(byte, 1) << "format " << format << " " << width << " x " << height;
        }
      }
    }
  }
}

TEST(CreateFromMemory, AStrideSmallerThanTheRowIsAcceptedAndCovered) {
  SurfaceDescription description = Describe(8, 4, FORMAT_RGB32);
  description.stride = 5;
  const Bytes source = Noise(8).Bytes(20);
  const HeldSurface surface = MakeSurface(description, source);
  const Bytes block = BlockOf(surface.get(), 32 * 4);
  EXPECT_EQ(Part(block, 0, 20), source);
  EXPECT_THAT(Part(block, 20, 108), Each(0));
}

}  // namespace
}  // namespace zor::test
