// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "platform/pixel_block.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <thread>
#include <vector>

#include "platform/memory.h"

namespace {

using zor::AllocatePixelBlock;
using zor::BlockContents;
using zor::CoveredBytes;
using zor::FreePixelBlock;
using zor::GuardBytes;
using zor::PixelBlockBytes;

bool AllZero(const std::uint8_t* from, std::int64_t bytes) {
  return std::all_of(from, from + bytes, [](std::uint8_t byte) { return byte == 0; });
}

/// Leaves used heap blocks of about this size behind, so that zeros don't come by luck.
void SoilHeap(std::int64_t bytes) {
  for (int i = 0; i < 4; ++i) {
    void* const block = zor::AllocateBytes(static_cast<std::size_t>(bytes));
    ASSERT_NE(block, nullptr);
    std::memset(block, 0xEE, static_cast<std::size_t>(bytes));
    zor::FreeBytes(block);
  }
}

SurfaceDescription Description(std::int32_t format, std::int32_t width, std::int32_t height,
                               std::int32_t stride, std::int32_t bits) {
  SurfaceDescription description{};
  description.size = 52;
  description.width = width;
  description.height = height;
  description.format = format;
  description.bitsPerPixel = bits;
  description.stride = stride;
  return description;
}

TEST(GuardBytes, HoldsTwoPixelsARowAndOneRowOfFourByteStepsAndFourVectors) {
  for (const std::int64_t width : {1, 7, 64, 1920, 32767}) {
    for (const std::int64_t height : {1, 9, 1080, 32767}) {
      const std::int64_t guard = GuardBytes(width, height);
      EXPECT_EQ(guard % 64, 0);
      EXPECT_GE(guard, 8 * height + 4 * width + 256);
      EXPECT_LT(guard, 8 * height + 4 * width + 256 + 64);
    }
  }
}

TEST(GuardBytes, TakesSizesBelowZeroAsZeroAndDoesNotWrapAtTheLargest) {
  EXPECT_EQ(GuardBytes(-5, -7), 256);
  EXPECT_GE(GuardBytes(INT32_MAX, INT32_MAX), 12 * std::int64_t{INT32_MAX});
}

TEST(AllocatePixelBlock, ZeroesTheBlockAndBothGuards) {
  const std::int64_t bytes = 1000;
  const std::int64_t guard = GuardBytes(50, 20);
  SoilHeap(64 + guard + 1024 + guard);
  std::uint8_t* const pixels = AllocatePixelBlock(bytes, 50, 20, BlockContents::kZero);
  ASSERT_NE(pixels, nullptr);
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(pixels) % 64, 0u);
  EXPECT_TRUE(AllZero(pixels - guard, guard + bytes + guard));
  FreePixelBlock(pixels);
}

TEST(AllocatePixelBlock, ZeroesTheGuardsOfABlockLeftUnset) {
  const std::int64_t bytes = 1001;
  const std::int64_t guard = GuardBytes(50, 20);
  SoilHeap(64 + guard + 1024 + guard);
  std::uint8_t* const pixels = AllocatePixelBlock(bytes, 50, 20, BlockContents::kUnset);
  ASSERT_NE(pixels, nullptr);
  EXPECT_TRUE(AllZero(pixels - guard, guard));
  EXPECT_TRUE(AllZero(pixels + bytes, guard));
  FreePixelBlock(pixels);
}

TEST(AllocatePixelBlock, KnowsItsSizeAndIsFreedThoughItsGuardsWereWritten) {
  const std::int64_t live = zor::LiveAllocations();
  const std::int64_t guard = GuardBytes(33, 17);
  std::uint8_t* const pixels = AllocatePixelBlock(33 * 17, 33, 17, BlockContents::kUnset);
  ASSERT_NE(pixels, nullptr);
  std::memset(pixels - guard, 0xFF, static_cast<std::size_t>(guard + 33 * 17 + guard));
  EXPECT_EQ(PixelBlockBytes(pixels), 33 * 17);
  FreePixelBlock(pixels);
  EXPECT_EQ(zor::LiveAllocations(), live);
}

TEST(AllocatePixelBlock, RefusesSizesUnderOneAndAbove2To31Minus1) {
  const std::uint64_t before = zor::CountAllocations();
  EXPECT_EQ(AllocatePixelBlock(0, 4, 4, BlockContents::kZero), nullptr);
  EXPECT_EQ(AllocatePixelBlock(-1, 4, 4, BlockContents::kZero), nullptr);
  EXPECT_EQ(AllocatePixelBlock(INT64_MIN, 4, 4, BlockContents::kZero), nullptr);
  EXPECT_EQ(AllocatePixelBlock(std::int64_t{1} << 31, 4, 4, BlockContents::kZero), nullptr);
  EXPECT_EQ(AllocatePixelBlock(INT64_MAX, 4, 4, BlockContents::kZero), nullptr);
  EXPECT_EQ(zor::CountAllocations(), before) << "refused without asking the heap";
}

TEST(AllocatePixelBlock, RefusesGuardsThatPassTheAddressSpace) {
  // 2 x 12 x (2^31 - 1) bytes of guards: no 32-bit process can hold them, and where they would
  // fit the heap is made to say no.
  zor::RefuseAllocation(1);
  EXPECT_EQ(AllocatePixelBlock(16, INT32_MAX, INT32_MAX, BlockContents::kZero), nullptr);
  EXPECT_EQ(zor::CountAllocations(), sizeof(void*) == 4 ? 0u : 1u);
  zor::RefuseAllocation(0);
}

TEST(AllocatePixelBlock, IsNullWhenTheHeapRefuses) {
  const std::int64_t live = zor::LiveAllocations();
  zor::RefuseAllocation(1);
  EXPECT_EQ(AllocatePixelBlock(16, 4, 4, BlockContents::kZero), nullptr);
  zor::RefuseAllocation(0);
  EXPECT_EQ(zor::LiveAllocations(), live);
}

TEST(PixelBlockBytes, IsZeroForAPointerThatIsNoBlocks) {
  std::uint8_t* const pixels = AllocatePixelBlock(100, 10, 10, BlockContents::kZero);
  ASSERT_NE(pixels, nullptr);
  EXPECT_EQ(PixelBlockBytes(nullptr), 0);
  EXPECT_EQ(PixelBlockBytes(pixels + 1), 0);
  FreePixelBlock(pixels);
  EXPECT_EQ(PixelBlockBytes(pixels), 0);
  FreePixelBlock(nullptr);
}

TEST(PixelBlockBytes, FindsEachOfManyBlocks) {
  std::vector<std::uint8_t*> blocks;
  for (int i = 1; i <= 3000; ++i) {
    blocks.push_back(AllocatePixelBlock(i, 4, 4, BlockContents::kUnset));
    ASSERT_NE(blocks.back(), nullptr);
  }
  for (int i = 3000; i >= 1; --i) ASSERT_EQ(PixelBlockBytes(blocks[i - 1]), i);
  for (std::size_t i = 0; i < blocks.size(); i += 2) FreePixelBlock(blocks[i]);
  for (std::size_t i = 1; i < blocks.size(); i += 2) {
    ASSERT_EQ(PixelBlockBytes(blocks[i]), static_cast<std::int64_t>(i + 1));
    ASSERT_EQ(PixelBlockBytes(blocks[i - 1]), 0);
    FreePixelBlock(blocks[i]);
  }
}

TEST(PixelBlock, ThreadsMakeAndFreeBlocksAtOnceWithoutLosingOne) {
  const std::int64_t live = zor::LiveAllocations();
  std::vector<std::thread> threads;
  for (int t = 1; t <= 4; ++t) {
    threads.emplace_back([t] {
      for (int i = 1; i < 500; ++i) {
        std::uint8_t* const pixels = AllocatePixelBlock(i * t, 4, 4, BlockContents::kUnset);
        EXPECT_EQ(PixelBlockBytes(pixels), i * t);
        FreePixelBlock(pixels);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(zor::LiveAllocations(), live);
}

TEST(CoveredBytes, OfPackedPicturesIsTheLargerOfStrideAndRowTimesHeight) {
  EXPECT_EQ(CoveredBytes(Description(FORMAT_RGB24, 10, 6, 32, 24), 0), 32 * 6);
  EXPECT_EQ(CoveredBytes(Description(FORMAT_RGB24, 10, 6, 8, 24), 0), 30 * 6);
  EXPECT_EQ(CoveredBytes(Description(FORMAT_RGB32, 10, 6, 8, 32), 0), 40 * 6);
  EXPECT_EQ(CoveredBytes(Description(FORMAT_GRAY8, 10, 6, 8, 8), 0), 10 * 6);
  EXPECT_EQ(CoveredBytes(Description(FORMAT_YUY2, 10, 6, 8, 16), 0), 20 * 6);
  EXPECT_EQ(CoveredBytes(Description(FORMAT_YUY2, 11, 6, 22, 16), 0), 24 * 6)
      << "the last pair of an odd row is whole";
}

TEST(CoveredBytes, CoversPixelsThatTheBitsMakeLargerThanTheFormat) {
  EXPECT_EQ(CoveredBytes(Description(FORMAT_GRAY8, 10, 6, 12, 32), 0), 40 * 6);
  EXPECT_EQ(CoveredBytes(Description(FORMAT_RGB24, 10, 6, 32, 32), 0), 40 * 6);
  EXPECT_EQ(CoveredBytes(Description(FORMAT_RGB24, 10, 6, 32, INT32_MAX), 0), 32 * 6)
      << "no step knows such pixels";
}

TEST(CoveredBytes, IsAtLeastWhatIsReported) {
  EXPECT_EQ(CoveredBytes(Description(FORMAT_RGB24, 10, 6, 32, 24), 999), 999);
  EXPECT_EQ(CoveredBytes(Description(FORMAT_YUV420, 4, 4, 4, 12), 999), 999);
}

TEST(CoveredBytes, OfPlanarPicturesIsOneAndAHalfTimesThat) {
  EXPECT_EQ(CoveredBytes(Description(FORMAT_YUV420, 16, 8, 16, 12), 0), 16 * 8 * 3 / 2);
  EXPECT_EQ(CoveredBytes(Description(FORMAT_YUV420, 16, 8, 40, 12), 0), 40 * 8 * 3 / 2);
  EXPECT_EQ(CoveredBytes(Description(FORMAT_YUV420, 16, 8, 4, 12), 0), 16 * 8 * 3 / 2);
}

TEST(CoveredBytes, HoldsBothChromaPlanesAtOddStridesAndHeights) {
  for (std::int64_t stride = 4; stride < 40; ++stride) {
    for (std::int64_t height = 4; height < 40; ++height) {
      const auto description =
          Description(FORMAT_YUV420, static_cast<std::int32_t>(stride),
                      static_cast<std::int32_t>(height), static_cast<std::int32_t>(stride), 12);
      const std::int64_t covered = CoveredBytes(description, 0);
      const std::int64_t first = stride * height;
      const std::int64_t seconds[] = {
          first + stride * height / 4, first + ((stride / 2) * height) / 2,
          (stride * height * 5) >> 2, first + ((stride * (height >> 1)) >> 1)};
      for (const std::int64_t second : seconds) {
        // Rows of the rounded-up half, stepped by it, for the rounded-up half of the rows.
        EXPECT_GE(covered, second + ((stride + 1) / 2) * ((height + 1) / 2))
            << stride << " x " << height;
      }
      EXPECT_LE(covered, 2 * stride * height) << stride << " x " << height;
    }
  }
}

TEST(CoveredBytes, DoesNotWrapAtTheLargestWords) {
  for (const std::int32_t format : {FORMAT_RGB32, FORMAT_YUV420, FORMAT_YUY2}) {
    const auto huge = Description(format, INT32_MAX, INT32_MAX, INT32_MAX, 32);
    EXPECT_GT(CoveredBytes(huge, 0), std::int64_t{1} << 61) << format;
  }
}

TEST(CoveredBytes, OfSizesBelowZeroIsWhatIsReported) {
  EXPECT_EQ(CoveredBytes(Description(FORMAT_RGB32, -4, 6, -16, 32), 7), 7);
  EXPECT_EQ(CoveredBytes(Description(FORMAT_RGB32, 4, -6, 16, 32), 7), 7);
}

}  // namespace
