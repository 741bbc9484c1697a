// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "platform/memory.h"
#include "platform/system_calls.h"
#include "support/guarded_memory.h"
#include "support/kelp_handle.h"
#include "support/surfaces.h"
#include "support/system_call_watch.h"
#include "surface/system_images.h"

namespace {

using testing::Each;
using zor::LiveAllocations;
using zor::RefuseAllocation;
using zor::test::BlockOf;
using zor::test::CountOf;
using zor::test::DescriptionOf;
using zor::test::HeldBuilder;
using zor::test::HeldSurface;
using zor::test::KelpHandle;
using zor::test::MakeBuilder;
using zor::test::Noise;
using zor::test::SystemCall;
using zor::test::SystemCallWatch;
using Bytes = std::vector<std::uint8_t>;

IZorSurface* const kUntouched = reinterpret_cast<IZorSurface*>(std::uintptr_t{0x40});

constexpr std::uint32_t kCopy = STORAGE_COPY;

Bytes Part(const Bytes& bytes, std::size_t start, std::size_t count) {
  return {bytes.begin() + static_cast<std::ptrdiff_t>(start),
          bytes.begin() + static_cast<std::ptrdiff_t>(start + count)};
}

/// Runs a `CreateFromSource` that must fail, and checks that the library keeps nothing.
std::int32_t Fail(void* handle, std::int32_t kind, std::int32_t format,
                  std::uint32_t flags = kCopy) {
  const HeldBuilder builder = MakeBuilder();
  const std::int64_t before = LiveAllocations();
  IZorSurface* out = kUntouched;
  const std::int32_t result = builder->CreateFromSource(handle, kind, format, flags, &out);
  EXPECT_EQ(out, kUntouched);
  EXPECT_EQ(LiveAllocations(), before);
  return result;
}

HeldSurface Take(void* handle, std::int32_t kind, std::int32_t format,
                 std::uint32_t flags = kCopy) {
  HeldSurface surface;
  EXPECT_EQ(MakeBuilder()->CreateFromSource(handle, kind, format, flags, surface.Reset()), VED_OK);
  return surface;
}

/// What must hold of every surface from a system image.
void CheckDescription(IZorSurface* surface, const SurfaceDescription& expected) {
  const SurfaceDescription actual = DescriptionOf(surface);
  EXPECT_EQ(actual.size, 52u);
  EXPECT_EQ(actual.width, expected.width);
  EXPECT_EQ(actual.height, expected.height);
  EXPECT_EQ(actual.format, expected.format);
  EXPECT_EQ(actual.StorageKind, 4u);
  EXPECT_EQ(actual.bitsPerPixel, expected.bitsPerPixel);
  EXPECT_EQ(actual.stride, expected.stride);
  EXPECT_EQ(actual.DirtyRect.left, 0);
  EXPECT_EQ(actual.DirtyRect.top, 0);
  EXPECT_EQ(actual.DirtyRect.right, expected.DirtyRect.right);
  EXPECT_EQ(actual.DirtyRect.bottom, expected.DirtyRect.bottom);
  EXPECT_EQ(actual.Orientation, expected.Orientation);
  EXPECT_EQ(actual.ComposeInPlace, 1u);
  EXPECT_EQ(CountOf(surface), 1u);
}

SurfaceDescription Expect(std::int32_t width, std::int32_t height, std::int32_t format,
                          std::int32_t bits, std::int32_t stride, std::int32_t dirtyRight,
                          std::int32_t dirtyBottom, std::uint32_t orientation) {
  return {52,          width, height, format, 4, bits, stride, {0, 0, dirtyRight, dirtyBottom},
          orientation, 1};
}

// ------------------------------------------------------------------------------ all kinds alike

TEST(CreateFromSource, OtherKindsAreUnsupportedWhateverElseIsWrong) {
  int image = 0;
  for (const std::int32_t kind : {3, -1, 100, INT32_MIN, INT32_MAX}) {
    EXPECT_EQ(Fail(&image, kind, FORMAT_RGB24), VED_E_UNSUPPORTED);
    EXPECT_EQ(Fail(nullptr, kind, 0, 0), VED_E_UNSUPPORTED);
  }
}

TEST(CreateFromSource, NullHandlesAndResultsAreInvalid) {
  int image = 0;
  for (const std::int32_t kind : {SOURCE_KELP, SOURCE_DIRECT_DRAW, SOURCE_GLOBAL_DIB}) {
    EXPECT_EQ(Fail(nullptr, kind, 99), VED_E_INVALIDARG);
    EXPECT_EQ(MakeBuilder()->CreateFromSource(&image, kind, FORMAT_RGB24, kCopy, nullptr),
              VED_E_INVALIDARG);
  }
}

// ------------------------------------------------------------------------------ video-DIB handles

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
      const HeldBuilder builder = MakeBuilder();
      const std::int64_t before = LiveAllocations();
      IZorSurface* out = kUntouched;
      RefuseAllocation(k);
      EXPECT_EQ(builder->CreateFromSource(image.handle.get(), SOURCE_KELP, format, kCopy, &out),
                VED_E_OUTOFMEMORY);
      RefuseAllocation(0);
      EXPECT_EQ(out, kUntouched);
      EXPECT_EQ(LiveAllocations(), before);
      EXPECT_EQ(image.handle.Locks(), static_cast<int>(k) - 1);
    }
  }
}

// ------------------------------------------------------------------------------ DirectDraw

/// A DirectDraw surface of the test's own behind the platform's calls.
class FakeDraw {
 public:
  FakeDraw(std::uint32_t width, std::uint32_t height, std::uint32_t bits, std::int32_t pitch) {
    desc = zor::EmptySurfaceDesc();
    desc.dwWidth = width;
    desc.dwHeight = height;
    desc.lPitch = pitch;
    desc.ddpfPixelFormat.dwRGBBitCount = bits;
    current = this;
    auto& calls = zor::CurrentSystemCalls().directDrawSurface;
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
      return std::int32_t{0};
    };
  }
  ~FakeDraw() { zor::CurrentSystemCalls() = zor::NativeSystemCalls(); }

  void* handle() { return this; }

  DDSURFACEDESC2 desc;
  Bytes memory;
  std::int32_t descResult = 0;
  std::int32_t lockResult = 0;
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
  zor::CurrentSystemCalls().directDrawSurface.unlock = [](IDirectDrawSurface7*) {
    return std::int32_t{-5};
  };
  Take(image.handle(), SOURCE_DIRECT_DRAW, FORMAT_RGB24);
}

TEST(DirectDrawSource, WithoutMemoryTheSurfaceIsUnlocked) {
  for (const std::int32_t format : {FORMAT_RGB24, FORMAT_YUV420}) {
    FakeDraw image(8, 8, 24, 24);
    image.memory = Bytes(192);
    for (std::uint64_t k = 1; k <= 2; ++k) {
      const HeldBuilder builder = MakeBuilder();
      const std::int64_t before = LiveAllocations();
      IZorSurface* out = kUntouched;
      RefuseAllocation(k);
      EXPECT_EQ(builder->CreateFromSource(&image, SOURCE_DIRECT_DRAW, format, kCopy, &out),
                VED_E_OUTOFMEMORY);
      RefuseAllocation(0);
      EXPECT_EQ(out, kUntouched);
      EXPECT_EQ(LiveAllocations(), before);
      EXPECT_EQ(image.locks, 0);
    }
    image.memory.clear();  // a lock that gives no address
    EXPECT_EQ(Fail(&image, SOURCE_DIRECT_DRAW, format), VED_E_OUTOFMEMORY);
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
  ASSERT_EQ(zor::CreateDirectDrawSurface(&image, 9, 5, 24, zor::DrawSurface::kRgb, true), DD_OK);
  DDSURFACEDESC2 desc = zor::EmptySurfaceDesc();
  ASSERT_EQ(zor::LockSurface(image, &desc), DD_OK);
  const auto bytes = static_cast<std::size_t>(desc.lPitch) * 5;
  Bytes pixels = Noise(15).Bytes(bytes);
  std::memcpy(desc.lpSurface, pixels.data(), bytes);
  zor::UnlockSurface(image);
  const HeldSurface surface = Take(image, SOURCE_DIRECT_DRAW, FORMAT_RGB32);
  CheckDescription(surface.get(), Expect(9, 5, FORMAT_RGB24, 24, desc.lPitch, 9, 5, 1));
  EXPECT_EQ(BlockOf(surface.get(), bytes), pixels);
  EXPECT_EQ(zor::ReleaseSurface(image), 0u);
}

// ------------------------------------------------------------------------------ global memory

/// A bitmap in global memory.
class Dib {
 public:
  Dib(std::int32_t width, std::int32_t height, std::uint16_t bits, std::size_t pixelBytes)
      : pixels(Noise(16).Bytes(pixelBytes)),
        handle(zor::GlobalAlloc(GMEM_MOVEABLE, 40 + pixelBytes)) {
    auto* start = static_cast<std::uint8_t*>(zor::GlobalLock(handle));
    // What doesn't count is filled with nonsense.
    std::memset(start, 0xEE, 40);
    std::memcpy(start + 4, &width, 4);
    std::memcpy(start + 8, &height, 4);
    std::memcpy(start + 14, &bits, 2);
    if (pixelBytes > 0) std::memcpy(start + 40, pixels.data(), pixelBytes);
    zor::GlobalUnlock(handle);
  }
  ~Dib() { zor::GlobalFree(handle); }

  Bytes pixels;
  zor::GlobalHandle handle;
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
  zor::GlobalHandle handle = zor::GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, 8);
  EXPECT_EQ(Fail(handle, SOURCE_GLOBAL_DIB, FORMAT_RGB24), VED_E_INVALIDARG);
  zor::GlobalFree(handle);
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
      const HeldBuilder builder = MakeBuilder();
      const std::int64_t before = LiveAllocations();
      SystemCallWatch watch;
      IZorSurface* out = kUntouched;
      RefuseAllocation(k);
      EXPECT_EQ(builder->CreateFromSource(image.handle, SOURCE_GLOBAL_DIB, format, kCopy, &out),
                VED_E_OUTOFMEMORY);
      RefuseAllocation(0);
      EXPECT_EQ(out, kUntouched);
      EXPECT_EQ(LiveAllocations(), before);
      EXPECT_EQ(watch.Count(SystemCall::kGlobalUnlock), watch.Count(SystemCall::kGlobalLock));
    }
  }
}

}  // namespace
