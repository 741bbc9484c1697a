// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gmock/gmock.h>

#include <cstring>

#include "object/creator_cases.h"

namespace zor::test {
namespace {

using testing::Each;

struct BlankResult {
  std::int32_t result;
  std::int32_t bytes;
};

/// Runs a `CreateBlank` that must fail, and checks that nothing is left of it.
BlankResult FailBlank(const SurfaceDescription& description, std::uint64_t refused = 0) {
  BlankResult blank = {0, -77};
  blank.result = FailToCreate(
      [&](ISurfaceBuilder* builder, IZorSurface** out) {
        return builder->CreateBlank(&description, &blank.bytes, out);
      },
      refused);
  return blank;
}

HeldSurface MakeBlank(const SurfaceDescription& description, std::int32_t expectedBytes) {
  HeldSurface surface;
  std::int32_t bytes = 0;
  EXPECT_EQ(MakeBuilder()->CreateBlank(&description, &bytes, surface.Reset()), VED_OK);
  EXPECT_EQ(bytes, expectedBytes);
  return surface;
}

TEST(CreateBlank, ThreeByHundredIsTooSmallAndFourByFourIsNot) {
  EXPECT_EQ(FailBlank(Describe(3, 100, FORMAT_RGB24)).result, VED_E_INVALIDARG);
  EXPECT_EQ(FailBlank(Describe(100, 3, FORMAT_RGB24)).result, VED_E_INVALIDARG);
  EXPECT_TRUE(MakeBlank(Describe(4, 4, FORMAT_RGB24), 48));
}

TEST(CreateBlank, NullPointersAreInvalid) {
  const HeldBuilder builder = MakeBuilder();
  const SurfaceDescription description = Describe(8, 8, FORMAT_RGB24);
  IZorSurface* out = kUntouched;
  std::int32_t bytes = -77;
  EXPECT_EQ(builder->CreateBlank(nullptr, &bytes, &out), VED_E_INVALIDARG);
  EXPECT_EQ(builder->CreateBlank(&description, nullptr, &out), VED_E_INVALIDARG);
  EXPECT_EQ(builder->CreateBlank(&description, &bytes, nullptr), VED_E_INVALIDARG);
  EXPECT_EQ(out, kUntouched);
  EXPECT_EQ(bytes, -77);
}

TEST(CreateBlank, StrideZeroIsInvalidAfterTheSizeWasStored) {
  for (const std::int32_t format : {FORMAT_RGB24, FORMAT_RGB32, FORMAT_GRAY8, FORMAT_YUY2}) {
    SurfaceDescription description = Describe(8, 8, format);
    description.stride = 0;
    const BlankResult blank = FailBlank(description);
    EXPECT_EQ(blank.result, VED_E_INVALIDARG);
    EXPECT_EQ(blank.bytes, 0);
  }
}

TEST(CreateBlank, ANegativeSizeIsNotSmallButHasNoBytes) {
  SurfaceDescription description = Describe(8, -8, FORMAT_RGB24);
  BlankResult blank = FailBlank(description);
  EXPECT_EQ(blank.result, VED_E_INVALIDARG);
  EXPECT_EQ(blank.bytes, -8 * 24);
  description = Describe(-8, 8, FORMAT_YUV420);
  blank = FailBlank(description);
  EXPECT_EQ(blank.result, VED_E_INVALIDARG);
  EXPECT_EQ(blank.bytes, -96);
}

TEST(CreateBlank, SizesBeyondAWordAreInvalid) {
  const struct {
    std::int32_t width, height, format, stride;
  } kCases[] = {
      {0x10000, 0x8000, FORMAT_RGB24, 0x10000},       {8, INT32_MAX, FORMAT_RGB32, INT32_MAX},
      {0x40000001, 4, FORMAT_RGB24, 0x40000001},      {INT32_MAX, INT32_MAX, FORMAT_YUV420, 0},
      {INT32_MIN, INT32_MIN, FORMAT_YUV420, 0},       {65535, 65535, FORMAT_YUV420, 65535},
      {INT32_MIN, INT32_MIN, FORMAT_YUY2, INT32_MIN},
  };
  for (const auto& size : kCases) {
    SurfaceDescription description = Describe(4, 4, size.format);
    description.width = size.width;
    description.height = size.height;
    description.stride = size.stride;
    const BlankResult blank = FailBlank(description);
    EXPECT_EQ(blank.result, VED_E_INVALIDARG) << size.width << " x " << size.height;
    EXPECT_EQ(blank.bytes, 0);  // a size that no word holds is stored as none
  }
}

TEST(CreateBlank, AStrideWordThatNoBlockCouldCoverIsOutOfMemory) {
  SurfaceDescription description = Describe(4, 4, FORMAT_YUV420);
  description.stride = INT32_MAX;
  const BlankResult blank = FailBlank(description);
  EXPECT_EQ(blank.result, VED_E_OUTOFMEMORY);
  EXPECT_EQ(blank.bytes, 24);
}

TEST(CreateBlank, OtherFormatsAreUnsupportedAndStoreNoSize) {
  for (const std::int32_t format : {-1, 0, FORMAT_YVU420, 7, 1000}) {
    SurfaceDescription description = Describe(8, 8, FORMAT_RGB24);
    description.format = format;
    const BlankResult blank = FailBlank(description);
    EXPECT_EQ(blank.result, VED_E_UNSUPPORTED);
    EXPECT_EQ(blank.bytes, -77);
  }
}

TEST(CreateBlank, RgbAndGrayAreZeros) {
  for (const std::int32_t format : {FORMAT_RGB24, FORMAT_RGB32, FORMAT_GRAY8}) {
    const SurfaceDescription description = Describe(6, 5, format);
    const std::size_t bytes = PictureBytes(description);
    const HeldSurface surface = MakeBlank(description, static_cast<std::int32_t>(bytes));
    EXPECT_THAT(BlockOf(surface.get(), bytes), Each(0));
  }
}

TEST(CreateBlank, APlanarOneOfFourByFourIsBlack) {
  const HeldSurface surface = MakeBlank(Describe(4, 4, FORMAT_YUV420), 24);
  const Bytes block = BlockOf(surface.get(), 24);
  EXPECT_THAT(Part(block, 0, 16), Each(16));
  EXPECT_THAT(Part(block, 16, 8), Each(128));
}

TEST(CreateBlank, OddPlanarSizesPaintByTheStatedQuotients) {
  // 5 x 5: 37 bytes; 25 of luma, ((5 / 2) * 5) / 2 = 5 of chroma at 25 and at 125 / 4 = 31.
  const HeldSurface surface = MakeBlank(Describe(5, 5, FORMAT_YUV420), 37);
  Bytes expected(37, 0);
  std::memset(&expected[0], 16, 25);
  std::memset(&expected[25], 128, 5);
  std::memset(&expected[31], 128, 5);
  EXPECT_EQ(BlockOf(surface.get(), 37), expected);
}

TEST(CreateBlank, APlanarStrideWordIsKeptWhileTheBlockGoesByTheWidth) {
  SurfaceDescription description = Describe(8, 4, FORMAT_YUV420);
  description.stride = 40;
  const HeldSurface surface = MakeBlank(description, 48);
  EXPECT_EQ(DescriptionOf(surface.get()).stride, 40);
  // The block has room for all that a stride of 40 reaches.
  const Bytes block = BlockOf(surface.get(), 240);
  EXPECT_THAT(Part(block, 0, 32), Each(16));
  EXPECT_THAT(Part(block, 32, 16), Each(128));
  EXPECT_THAT(Part(block, 48, 192), Each(0));
}

TEST(CreateBlank, OnlyTheFirstQuarterOfAPackedOneIsPainted) {
  const HeldSurface surface = MakeBlank(Describe(4, 4, FORMAT_YUY2), 32);
  const Bytes block = BlockOf(surface.get(), 32);
  EXPECT_THAT(Part(block, 0, 8), Each(0x80));
  EXPECT_THAT(Part(block, 8, 24), Each(0));
}

TEST(CreateBlank, KeepsTheRecordButForSizeWordKindAndEmptyDirtyRect) {
  SurfaceDescription description = Describe(9, 7, FORMAT_RGB32);
  description.size = 1;
  description.StorageKind = 99;
  description.DirtyRect = {3, 3, 3, 9};
  description.Orientation = 0;
  description.ComposeInPlace = 5;
  SurfaceDescription actual = DescriptionOf(MakeBlank(description, 252).get());
  EXPECT_EQ(actual.size, 52u);
  EXPECT_EQ(actual.width, 9);
  EXPECT_EQ(actual.height, 7);
  EXPECT_EQ(actual.format, FORMAT_RGB32);
  EXPECT_EQ(actual.StorageKind, 4u);
  EXPECT_EQ(actual.bitsPerPixel, 32);
  EXPECT_EQ(actual.stride, 36);
  EXPECT_EQ(actual.DirtyRect.left, 0);
  EXPECT_EQ(actual.DirtyRect.top, 0);
  EXPECT_EQ(actual.DirtyRect.right, 9);
  EXPECT_EQ(actual.DirtyRect.bottom, 7);
  EXPECT_EQ(actual.Orientation, 0u);
  EXPECT_EQ(actual.ComposeInPlace, 5u);
  description.DirtyRect = {1, 2, 3, 4};
  actual = DescriptionOf(MakeBlank(description, 252).get());
  EXPECT_EQ(actual.DirtyRect.left, 1);
  EXPECT_EQ(actual.DirtyRect.bottom, 4);
}

TEST(CreateBlank, EveryRefusedAllocationIsOutOfMemoryAndLeavesNothing) {
  for (const std::int32_t format : {FORMAT_RGB24, FORMAT_YUV420, FORMAT_YUY2}) {
    for (std::uint64_t k = 1; k <= 2; ++k) {
      EXPECT_EQ(FailBlank(Describe(8, 8, format), k).result, VED_E_OUTOFMEMORY);
    }
  }
}

TEST(CreateBlank, HandsOutOneReference) {
  const std::int64_t before = LiveAllocations();
  HeldSurface surface = MakeBlank(Describe(8, 8, FORMAT_RGB24), 192);
  EXPECT_EQ(CountOf(surface.get()), 1u);
  surface.Reset();
  EXPECT_EQ(LiveAllocations(), before);
}

}  // namespace
}  // namespace zor::test
