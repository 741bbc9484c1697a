// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gmock/gmock.h>

#include <cstring>

#include "object/source_cases.h"
#include "platform/system_calls.h"
#include "support/guarded_memory.h"

namespace zor::test {
namespace {

using testing::Each;

/// A DirectDraw surface of the test's own behind the platform's calls.
class FakeDraw {
 public:
  FakeDraw(std::uint32_t width, std::uint32_t height, std::uint32_t bits, std::int32_t pitch) {
    desc = EmptySurfaceDesc();
    desc.dwWidth = width;
    desc.dwHeight = height;
    desc.lPitch = pitch;
    desc.ddpfPixelFormat.dwRGBBitCount = bits;
    current = this;
    auto& calls = CurrentSystemCalls().directDrawSurface;
    calls.getSurfaceDesc = [](IDirectDrawSurface7*, DDSURFACEDESC2* out) {
      current->sizeWordSeen = out->dwSize;
      *out = current->desc;
      return current->descResult;
    };
    calls.lock = [](IDirectDrawSurface7*, DDSURFACEDESC2* out) {
      if (current->lockResult < 0) return current->lockResult;
      ++current->locks;
      *out = current->desc;
      out->lpSurface = current->memory.empty() ? nullptr : current->memory.data();
      return current->lockResult;
    };
    calls.unlock = [](IDirectDrawSurface7*) {
      --current->locks;
      return current->unlockResult;
    };
  }
  ~FakeDraw() { CurrentSystemCalls() = NativeSystemCalls(); }

  void* handle() { return this; }

  DDSURFACEDESC2 desc;
  Bytes memory;
  std::int32_t descResult = 0;
  std::int32_t lockResult = 0;
  std::int32_t unlockResult = 0;
  std::uint32_t sizeWordSeen = 0;
  int locks = 0;

 private:
  static inline FakeDraw* current;
};

TEST(DirectDrawSource, RgbKeepsWidthHeightAndPitch) {
  for (const std::uint32_t bits : {24u, 32u}) {
    for (const std::int32_t format : {FORMAT_RGB24, FORMAT_RGB32}) {
      const std::int32_t pitch = static_cast<std::int32_t>(bits / 8 * 7) + 3;
      FakeDraw image(7, 5, bits, pitch);
      image.memory = Noise(12).Bytes(static_cast<std::size_t>(5 * pitch));
      const HeldSurface surface = Take(image.handle(), SOURCE_DIRECT_DRAW, format);
      CheckDescription(surface.get(), Expect(7, 5, bits == 24 ? FORMAT_RGB24 : FORMAT_RGB32,
                                             static_cast<std::int32_t>(bits), pitch, 7, 5, 1));
      EXPECT_EQ(BlockOf(surface.get(), image.memory.size()), image.memory);
      EXPECT_EQ(image.sizeWordSeen, 124u);
      EXPECT_EQ(image.locks, 0);
    }
  }
}

TEST(DirectDrawSource, PlanarPicturesHaveTwiceTheHeightAndIgnoreThePitch) {
  FakeDraw image(10, 4, 24, 32);
  image.memory = Noise(13).Bytes(128);
  const HeldSurface surface = Take(image.handle(), SOURCE_DIRECT_DRAW, FORMAT_YUV420);
  CheckDescription(surface.get(), Expect(10, 8, FORMAT_YUV420, 12, 10, 10, 8, 1));
  EXPECT_EQ(BlockOf(surface.get(), 120), Part(image.memory, 0, 120));
  // What the pitch adds to the rows stays out: behind the planes nothing is copied.
  EXPECT_THAT(Part(BlockOf(surface.get(), 128), 120, 8), Each(0));
}

TEST(DirectDrawSource, APlanarPictureReadsNoFurtherThanTheSurfaceReaches) {
  FakeDraw image(10, 4, 8, 16);  // 64 bytes for 120 of planes
  image.memory = Noise(14).Bytes(64);
  const HeldSurface surface = Take(image.handle(), SOURCE_DIRECT_DRAW, FORMAT_YUV420);
  const Bytes block = BlockOf(surface.get(), 120);
  EXPECT_EQ(Part(block, 0, 64), image.memory);
  EXPECT_THAT(Part(block, 64, 56), Each(0));
}

TEST(DirectDrawSource, TestsSizeThenFormatThenFlags) {
  FakeDraw image(3, 8, 24, 24);
  EXPECT_EQ(Fail(image.handle(), SOURCE_DIRECT_DRAW, 99, 0), VED_E_INVALIDARG);
  image.desc.dwWidth = 8;
  image.desc.dwHeight = 3;
  EXPECT_EQ(Fail(image.handle(), SOURCE_DIRECT_DRAW, 99, 0), VED_E_INVALIDARG);
  image.desc.dwHeight = 8;
  for (const std::int32_t format : {0, 3, 5, 6, -1}) {
    EXPECT_EQ(Fail(image.handle(), SOURCE_DIRECT_DRAW, format, 0), VED_E_UNSUPPORTED);
  }
  image.desc.ddpfPixelFormat.dwRGBBitCount = 16;
  EXPECT_EQ(Fail(image.handle(), SOURCE_DIRECT_DRAW, FORMAT_RGB32, 0), VED_E_UNSUPPORTED);
  image.desc.ddpfPixelFormat.dwRGBBitCount = 24;
  EXPECT_EQ(Fail(image.handle(), SOURCE_DIRECT_DRAW, FORMAT_RGB32, 1), VED_E_INVALIDARG);
}

TEST(DirectDrawSource, CodesOfDescribeAndLockComeThroughUnchanged) {
  FakeDraw image(8, 8, 24, 24);
  image.memory = Bytes(192);
  for (const std::int32_t code : {-5, 1, INT32_MIN}) {
    image.descResult = code;
    EXPECT_EQ(Fail(image.handle(), SOURCE_DIRECT_DRAW, FORMAT_RGB24), code);
  }
  image.descResult = 0;
  image.lockResult = -6;
  EXPECT_EQ(Fail(image.handle(), SOURCE_DIRECT_DRAW, FORMAT_RGB24), -6);
  image.lockResult = 1;  // only a negative result of a lock is a failure
  Take(image.handle(), SOURCE_DIRECT_DRAW, FORMAT_RGB24);
  EXPECT_EQ(image.locks, 0);
}

TEST(DirectDrawSource, TheResultOfTheUnlockDoesNotCount) {
  FakeDraw image(8, 8, 24, 24);
  image.memory = Bytes(192);
  image.unlockResult = -5;
  Take(image.handle(), SOURCE_DIRECT_DRAW, FORMAT_RGB24);
  EXPECT_EQ(image.locks, 0);
}

TEST(DirectDrawSource, WithoutMemoryTheSurfaceIsUnlocked) {
  for (const std::int32_t format : {FORMAT_RGB24, FORMAT_YUV420}) {
    FakeDraw image(8, 8, 24, 24);
    image.memory = Bytes(192);
    for (std::uint64_t k = 1; k <= 2; ++k) {
      EXPECT_EQ(Fail(image.handle(), SOURCE_DIRECT_DRAW, format, kCopy, k), VED_E_OUTOFMEMORY);
      EXPECT_EQ(image.locks, 0);
    }
    image.memory.clear();  // a lock that gives no address
    EXPECT_EQ(Fail(image.handle(), SOURCE_DIRECT_DRAW, format), VED_E_OUTOFMEMORY);
    EXPECT_EQ(image.locks, 0);
  }
}

TEST(DirectDrawSource, SizesThatNoBlockCanHoldAreOutOfMemory) {
  FakeDraw image(0x40000000, 0x7FFFFFFF, 32, INT32_MAX);
  image.memory = Bytes(16);
  EXPECT_EQ(Fail(image.handle(), SOURCE_DIRECT_DRAW, FORMAT_RGB24), VED_E_OUTOFMEMORY);
  EXPECT_EQ(Fail(image.handle(), SOURCE_DIRECT_DRAW, FORMAT_YUV420), VED_E_OUTOFMEMORY);
  image.desc.dwWidth = 0xFFFFFFF0;
  image.desc.dwHeight = 0xFFFFFFF0;
  EXPECT_EQ(Fail(image.handle(), SOURCE_DIRECT_DRAW, FORMAT_RGB24), VED_E_OUTOFMEMORY);
  EXPECT_EQ(Fail(image.handle(), SOURCE_DIRECT_DRAW, FORMAT_YUV420), VED_E_OUTOFMEMORY);
}

TEST(DirectDrawSource, TakesASurfaceOfTheRealDirectDraw) {
  IDirectDrawSurface7* image = nullptr;
  ASSERT_EQ(CreateDirectDrawSurface(&image, 9, 5, 24, DrawSurface::kRgb, true), DD_OK);
  DDSURFACEDESC2 desc = EmptySurfaceDesc();
  ASSERT_EQ(LockSurface(image, &desc), DD_OK);
  const auto bytes = static_cast<std::size_t>(desc.lPitch) * 5;
  Bytes pixels = Noise(15).Bytes(bytes);
  std::memcpy(desc.lpSurface, pixels.data(), bytes);
  UnlockSurface(image);
  const HeldSurface surface = Take(image, SOURCE_DIRECT_DRAW, FORMAT_RGB32);
  CheckDescription(surface.get(), Expect(9, 5, FORMAT_RGB24, 24, desc.lPitch, 9, 5, 1));
  EXPECT_EQ(BlockOf(surface.get(), bytes), pixels);
  EXPECT_EQ(ReleaseSurface(image), 0u);
}

TEST(DirectDrawSource, FourByFourIsTheSmallestAndTheCopyBitOwnsTheBlock) {
  FakeDraw image(4, 4, 24, 12);
  image.memory = Noise(17).Bytes(48);
  CheckSmallest(image.handle(), SOURCE_DIRECT_DRAW);
}

}  // namespace
}  // namespace zor::test
