// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gmock/gmock.h>

#include "object/source_cases.h"
#include "support/guarded_memory.h"
#include "support/kelp_handle.h"
#include "support/system_call_watch.h"

namespace zor::test {
namespace {

using testing::Each;

struct KelpImage {
  KelpImage(std::int32_t width, std::int32_t height, std::int32_t bits, std::int32_t stride)
      : bytes(Noise(11).Bytes(static_cast<std::size_t>(stride * height))),
        handle(width, height, bits, stride, bytes.data(), bytes.size()) {}
  Bytes bytes;
  KelpHandle handle;
};

TEST(KelpSource, RgbRowsAreTurnedOverAndTheBitCountDecidesTheFormat) {
  for (const std::int32_t bits : {24, 32}) {
    for (const std::int32_t format : {FORMAT_RGB24, FORMAT_RGB32}) {
      const std::int32_t stride = 8 * bits / 8 + 4;
      KelpImage image(8, 5, bits, stride);
      const HeldSurface surface = Take(image.handle.get(), SOURCE_KELP, format);
      CheckDescription(surface.get(), Expect(8, 5, bits == 24 ? FORMAT_RGB24 : FORMAT_RGB32, bits,
                                             stride, 8, 5, 0));
      const auto row = static_cast<std::size_t>(stride);
      const Bytes block = BlockOf(surface.get(), 5 * row);
      for (std::size_t y = 0; y < 5; ++y) {
        EXPECT_EQ(Part(block, y * row, row), Part(image.bytes, (4 - y) * row, row));
      }
      EXPECT_EQ(image.handle.Locks(), 0);
      EXPECT_EQ(image.handle.LockCalls(), 1);
    }
  }
}

TEST(KelpSource, WidthsRoundUpAndThePaddingStaysZero) {
  for (std::int32_t width = 4; width <= 9; ++width) {
    for (const std::int32_t bits : {24, 32}) {
      const std::int32_t rounded = (width + 3) / 4 * 4;
      const std::int32_t sourceStride = bits / 8 * width;
      const std::int32_t stride = bits / 8 * rounded;
      KelpImage image(width, 7, bits, sourceStride);
      const HeldSurface surface = Take(image.handle.get(), SOURCE_KELP, FORMAT_RGB24);
      CheckDescription(surface.get(), Expect(rounded, 7, bits == 24 ? FORMAT_RGB24 : FORMAT_RGB32,
                                             bits, stride, width, 7, 0));
      const Bytes block = BlockOf(surface.get(), static_cast<std::size_t>(7 * stride));
      const auto copied = static_cast<std::size_t>(sourceStride);
      for (std::size_t y = 0; y < 7; ++y) {
        const std::size_t row = y * static_cast<std::size_t>(stride);
        EXPECT_EQ(Part(block, row, copied), Part(image.bytes, (6 - y) * copied, copied));
        EXPECT_THAT(Part(block, row + copied, static_cast<std::size_t>(stride) - copied), Each(0));
      }
    }
  }
}

TEST(KelpSource, ASourceStrideWiderThanTheRoundedOneIsCut) {
  KelpImage image(6, 4, 24, 40);  // rounded: 8 x 4, stride 24
  const HeldSurface surface = Take(image.handle.get(), SOURCE_KELP, FORMAT_RGB24);
  CheckDescription(surface.get(), Expect(8, 4, FORMAT_RGB24, 24, 24, 6, 4, 0));
  const Bytes block = BlockOf(surface.get(), 96);
  for (std::size_t y = 0; y < 4; ++y) {
    EXPECT_EQ(Part(block, y * 24, 24), Part(image.bytes, (3 - y) * 40, 24));
  }
  // Nor does the last row run on into the zeros behind the block.
  EXPECT_THAT(Part(BlockOf(surface.get(), 112), 96, 16), Each(0));
}

TEST(KelpSource, PlanarPicturesHaveTwiceTheHeight) {
  KelpImage image(10, 4, 24, 30);
  const HeldSurface surface = Take(image.handle.get(), SOURCE_KELP, FORMAT_YUV420);
  CheckDescription(surface.get(), Expect(10, 8, FORMAT_YUV420, 12, 10, 10, 8, 1));
  EXPECT_EQ(BlockOf(surface.get(), 120), image.bytes);
  EXPECT_THAT(Part(BlockOf(surface.get(), 136), 120, 16), Each(0));
  EXPECT_EQ(image.handle.Locks(), 0);
}

TEST(KelpSource, TestsSizeThenFormatThenFlags) {
  KelpImage narrow(3, 8, 24, 12);
  KelpImage low(8, 3, 24, 24);
  EXPECT_EQ(Fail(narrow.handle.get(), SOURCE_KELP, 99, 0), VED_E_INVALIDARG);
  EXPECT_EQ(Fail(low.handle.get(), SOURCE_KELP, 99, 0), VED_E_INVALIDARG);
  KelpImage image(8, 8, 24, 24);
  for (const std::int32_t format : {0, 3, 5, 6, 7, -1}) {
    EXPECT_EQ(Fail(image.handle.get(), SOURCE_KELP, format, 0), VED_E_UNSUPPORTED);
  }
  KelpImage deep(8, 8, 16, 16);
  EXPECT_EQ(Fail(deep.handle.get(), SOURCE_KELP, FORMAT_RGB24, 0), VED_E_UNSUPPORTED);
  EXPECT_EQ(Fail(image.handle.get(), SOURCE_KELP, FORMAT_RGB24, 1), VED_E_INVALIDARG);
  EXPECT_EQ(Fail(image.handle.get(), SOURCE_KELP, FORMAT_RGB24, ~kCopy), VED_E_INVALIDARG);
  EXPECT_EQ(image.handle.LockCalls(), 0);
}

TEST(KelpSource, FailingCallsAreFailuresAndLeaveNoSurface) {
  KelpImage image(8, 8, 24, 24);
  SystemCallWatch watch;
  watch.Fail(SystemCall::kKelpGetInfo, 5);
  EXPECT_EQ(Fail(image.handle.get(), SOURCE_KELP, FORMAT_RGB24), E_FAIL);
  watch.Fail(SystemCall::kKelpLockData, 5);
  EXPECT_EQ(Fail(image.handle.get(), SOURCE_KELP, FORMAT_RGB24), E_FAIL);
  EXPECT_EQ(watch.Count(SystemCall::kKelpUnlockData), 0);
}

TEST(KelpSource, ALockWithoutAnAddressIsAFailureAndIsUnlocked) {
  KelpImage image(8, 8, 24, 24);
  SystemCallWatch watch;
  watch.Fail(SystemCall::kKelpLockData, 0);
  EXPECT_EQ(Fail(image.handle.get(), SOURCE_KELP, FORMAT_YUV420), E_FAIL);
  EXPECT_EQ(watch.Count(SystemCall::kKelpUnlockData), 1);
}

TEST(KelpSource, TheResultOfTheUnlockDoesNotCount) {
  KelpImage image(8, 8, 24, 24);
  SystemCallWatch watch;
  watch.Fail(SystemCall::kKelpUnlockData, 5);
  Take(image.handle.get(), SOURCE_KELP, FORMAT_RGB24);
  EXPECT_EQ(watch.Count(SystemCall::kKelpUnlockData), 1);
}

TEST(KelpSource, WithoutMemoryForTheBlockTheHandleStaysLocked) {
  for (const std::int32_t format : {FORMAT_RGB24, FORMAT_YUV420}) {
    KelpImage image(8, 8, 24, 24);
    for (std::uint64_t k = 1; k <= 2; ++k) {
      EXPECT_EQ(Fail(image.handle.get(), SOURCE_KELP, format, kCopy, k), VED_E_OUTOFMEMORY);
      EXPECT_EQ(image.handle.Locks(), static_cast<int>(k) - 1);
    }
  }
}

TEST(KelpSource, FourByFourIsTheSmallestAndTheCopyBitOwnsTheBlock) {
  KelpImage image(4, 4, 24, 12);
  CheckSmallest(image.handle.get(), SOURCE_KELP);
}

}  // namespace
}  // namespace zor::test
