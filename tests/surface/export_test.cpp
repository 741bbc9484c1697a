// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

#include "platform/memory.h"
#include "platform/system_calls.h"
#include "support/guarded_memory.h"
#include "support/surfaces.h"
#include "support/system_call_watch.h"
#include "surface/surface_buffer.h"
#include "surface/system_images.h"

namespace {

using testing::Each;
using zor::DrawSurface;
using zor::LiveAllocations;
using zor::test::BlockOf;
using zor::test::Describe;
using zor::test::DescriptionOf;
using zor::test::HeldSurface;
using zor::test::MakeBlank;
using zor::test::MakeBuilder;
using zor::test::Noise;
using zor::test::PictureBytes;
using zor::test::SystemCall;
using zor::test::SystemCallWatch;
using Bytes = std::vector<std::uint8_t>;

constexpr std::uint32_t kDraw = 1;
constexpr std::uint32_t kDib = 2;

HeldSurface Noisy(const SurfaceDescription& description) {
  HeldSurface surface = MakeBlank(description);
  std::uint8_t* pixels = nullptr;
  surface->GetPixels(&pixels);
  Noise(41).Fill(pixels, PictureBytes(description));
  return surface;
}

/// A bitmap from an export, freed in the end.
class ExportedDib {
 public:
  explicit ExportedDib(IZorSurface* surface) {
    void* image = nullptr;
    std::uint32_t flag = 77;
    EXPECT_EQ(surface->ExportImage(kDib, &image, &flag), VED_OK);
    EXPECT_EQ(flag, 1u);
    handle = image;
    const std::size_t bytes = zor::GlobalSize(handle);
    const auto* start = static_cast<const std::uint8_t*>(zor::GlobalLock(handle));
    all.assign(start, start + bytes);
    zor::GlobalUnlock(handle);
  }
  ~ExportedDib() { zor::GlobalFree(handle); }

  template <class T>
  T At(std::size_t offset) const {
    T value;
    std::memcpy(&value, &all[offset], sizeof value);
    return value;
  }
  Bytes Pixels(std::size_t bytes) const {
    EXPECT_GE(all.size(), 40 + bytes);
    return {all.begin() + 40, all.begin() + 40 + static_cast<std::ptrdiff_t>(bytes)};
  }

  void* handle;
  Bytes all;
};

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

TEST(Export, OtherKindsAreUnsupportedAfterTheFlush) {
  const HeldSurface surface = Noisy(Describe(8, 8, FORMAT_RGB24));
  void* image = nullptr;
  std::uint32_t flag = 77;
  for (const std::uint32_t kind : {0u, 3u, 0xFFFFFFFFu}) {
    EXPECT_EQ(surface->ExportImage(kind, &image, &flag), VED_E_UNSUPPORTED);
  }
  EXPECT_EQ(flag, 77u);
  surface->QueueConvert(99);
  EXPECT_EQ(surface->ExportImage(3, &image, &flag), VED_E_UNSUPPORTED);
  std::uint8_t* pixels = nullptr;
  EXPECT_EQ(surface->GetPixels(&pixels), VED_OK);  // the record is gone
}

TEST(Export, NullPointersAreInvalidAndNothingIsFlushed) {
  const HeldSurface surface = Noisy(Describe(8, 8, FORMAT_RGB24));
  surface->QueueConvert(99);
  void* image = nullptr;
  std::uint32_t flag = 77;
  for (const std::uint32_t kind : {kDraw, kDib}) {
    EXPECT_EQ(surface->ExportImage(kind, nullptr, &flag), VED_E_INVALIDARG);
    EXPECT_EQ(surface->ExportImage(kind, &image, nullptr), VED_E_INVALIDARG);
  }
  EXPECT_EQ(surface->Flush(), VED_E_UNSUPPORTED);
}

// ------------------------------------------------------------------------------ bitmap

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
        EXPECT_EQ(
            std::memcmp(&pixels[static_cast<std::size_t>(y * stride)],
                        &block[static_cast<std::size_t>(from)], static_cast<std::size_t>(stride)),
            0);
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
    const ExportedDib dib(surface.get());
    HeldSurface back;
    ASSERT_EQ(MakeBuilder()->CreateFromSource(dib.handle, SOURCE_GLOBAL_DIB, format, STORAGE_COPY,
                                              back.Reset()),
              VED_OK);
    const SurfaceDescription actual = DescriptionOf(back.get());
    EXPECT_EQ(actual.format, format);
    EXPECT_EQ(actual.width, 8);
    EXPECT_EQ(actual.height, 6);
    EXPECT_EQ(actual.stride, description.stride);
    EXPECT_EQ(actual.Orientation, description.Orientation);
    const std::size_t bytes = PictureBytes(description);
    EXPECT_EQ(BlockOf(back.get(), bytes), BlockOf(surface.get(), bytes));
  }
}

TEST(ExportDib, WithoutGlobalMemoryFails) {
  const HeldSurface surface = Noisy(Describe(8, 8, FORMAT_YUY2));
  SystemCallWatch watch;
  watch.Fail(SystemCall::kGlobalAlloc);
  void* image = surface.get();
  std::uint32_t flag = 77;
  EXPECT_EQ(surface->ExportImage(kDib, &image, &flag), E_FAIL);
  EXPECT_EQ(image, surface.get());
  EXPECT_EQ(flag, 77u);
  EXPECT_EQ(DescriptionOf(surface.get()).Orientation, 1u);
}

zor::GlobalHandle lastGlobal = nullptr;

TEST(ExportDib, ALockThatGivesNothingFailsAndTheBitmapStays) {
  const HeldSurface surface = Noisy(Describe(8, 8, FORMAT_RGB24));
  SystemCallWatch watch;
  // Keeps the handle that nobody is told of.
  auto& calls = zor::CurrentSystemCalls().globalMemory;
  calls.alloc = [](std::uint32_t flags, std::size_t bytes) {
    EXPECT_EQ(flags, 66u);
    EXPECT_EQ(bytes, 40u + 192u);
    return lastGlobal = zor::NativeSystemCalls().globalMemory.alloc(flags, bytes);
  };
  void* image = surface.get();
  std::uint32_t flag = 77;
  watch.Fail(SystemCall::kGlobalLock, 0, 2);
  EXPECT_EQ(surface->ExportImage(kDib, &image, &flag), E_FAIL);
  EXPECT_EQ(image, surface.get());
  EXPECT_EQ(flag, 77u);
  EXPECT_EQ(watch.Count(SystemCall::kGlobalFree), 0);
  ASSERT_NE(lastGlobal, nullptr);
  zor::GlobalFree(lastGlobal);
}

TEST(ExportDib, WithoutAHeaderThereIsNoBitmap) {
  const HeldSurface surface = Noisy(Describe(8, 8, FORMAT_YUY2));
  SystemCallWatch watch;
  watch.Fail(SystemCall::kGlobalLock);
  void* image = surface.get();
  std::uint32_t flag = 77;
  EXPECT_EQ(surface->ExportImage(kDib, &image, &flag), E_FAIL);
  EXPECT_EQ(image, surface.get());
  EXPECT_EQ(flag, 77u);
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
    EXPECT_EQ(zor::CreateGlobalDib(width, height, bits, 0), nullptr);
  }
  EXPECT_EQ(zor::CreateGlobalDib(8, 8, 24, std::int64_t{1} << 40), nullptr);
  EXPECT_EQ(watch.Count(SystemCall::kGlobalAlloc), 0);
}

// ------------------------------------------------------------------------------ DirectDraw

/// The surface of an export and its locked memory.
class ExportedDraw {
 public:
  explicit ExportedDraw(IZorSurface* surface) {
    void* image = nullptr;
    std::uint32_t flag = 77;
    EXPECT_EQ(surface->ExportImage(kDraw, &image, &flag), VED_OK);
    EXPECT_EQ(flag, 1u);
    handle = static_cast<IDirectDrawSurface7*>(image);
    desc = zor::EmptySurfaceDesc();
    EXPECT_EQ(zor::LockSurface(handle, &desc), DD_OK);
    const auto* start = static_cast<const std::uint8_t*>(desc.lpSurface);
    memory.assign(start, start + static_cast<std::size_t>(desc.lPitch) * desc.dwHeight);
    EXPECT_EQ(zor::UnlockSurface(handle), DD_OK);
  }
  ~ExportedDraw() { EXPECT_EQ(zor::ReleaseSurface(handle), 0u); }

  IDirectDrawSurface7* handle;
  DDSURFACEDESC2 desc;
  Bytes memory;
};

/// Answers for a DirectDraw with a pitch and memory of the test's choice.
class FakeDraw {
 public:
  FakeDraw(std::int32_t pitch, std::size_t bytes)
      : memory(bytes, zor::test::GuardedMemory::Edge::kEnd, 0x5A), pitch_(pitch) {
    current = this;
    auto& calls = zor::CurrentSystemCalls();
    calls.directDraw.createEx = [](IDirectDraw7** out) {
      *out = reinterpret_cast<IDirectDraw7*>(current);
      return std::int32_t{0};
    };
    calls.directDraw.setCooperativeLevel = [](IDirectDraw7*, std::uint32_t flags) {
      current->level = flags;
      return std::int32_t{-1};  // nobody minds
    };
    calls.directDraw.createSurface = [](IDirectDraw7*, DDSURFACEDESC2* desc,
                                        IDirectDrawSurface7** out) {
      current->asked = *desc;
      *out = reinterpret_cast<IDirectDrawSurface7*>(current);
      return std::int32_t{0};
    };
    calls.directDraw.release = [](IDirectDraw7*) {
      ++current->releases;
      return std::uint32_t{0};
    };
    calls.directDrawSurface.lock = [](IDirectDrawSurface7*, DDSURFACEDESC2* desc) {
      *desc = current->asked;
      desc->lPitch = current->pitch_;
      desc->lpSurface = current->memory.data();
      return std::int32_t{0};
    };
    calls.directDrawSurface.unlock = [](IDirectDrawSurface7*) {
      ++current->unlocks;
      return std::int32_t{0};
    };
  }
  ~FakeDraw() { zor::CurrentSystemCalls() = zor::NativeSystemCalls(); }

  zor::test::GuardedMemory memory;
  DDSURFACEDESC2 asked = {};
  std::uint32_t level = 0;
  int releases = 0;
  int unlocks = 0;

 private:
  std::int32_t pitch_;
  static inline FakeDraw* current;
};

TEST(ExportDraw, RgbLeavesTopDownInRowsOfThePitch) {
  for (const std::int32_t format : {FORMAT_RGB24, FORMAT_RGB32}) {
    for (const std::uint32_t orientation : {0u, 1u}) {
      SurfaceDescription description = Describe(7, 5, format);
      description.Orientation = orientation;
      const HeldSurface surface = Noisy(description);
      const Bytes block = BlockOf(surface.get(), PictureBytes(description));
      const ExportedDraw draw(surface.get());
      EXPECT_EQ(draw.desc.dwWidth, 7u);
      EXPECT_EQ(draw.desc.dwHeight, 5u);
      EXPECT_EQ(draw.desc.ddpfPixelFormat.dwRGBBitCount,
                static_cast<std::uint32_t>(description.bitsPerPixel));
      const std::int32_t row = 7 * description.bitsPerPixel / 8;
      for (std::int32_t y = 0; y < 5; ++y) {
        const std::int32_t from = (orientation == 1 ? y : 4 - y) * description.stride;
        EXPECT_EQ(
            std::memcmp(&draw.memory[static_cast<std::size_t>(y * draw.desc.lPitch)],
                        &block[static_cast<std::size_t>(from)], static_cast<std::size_t>(row)),
            0);
      }
    }
  }
}

TEST(ExportDraw, PlanarTravelsIn24BitsOfHalfTheHeight) {
  for (const std::int32_t width : {8, 10, 12}) {
    const SurfaceDescription description = Describe(width, 6, FORMAT_YUV420);
    const HeldSurface surface = Noisy(description);
    const ExportedDraw draw(surface.get());
    EXPECT_EQ(draw.desc.dwHeight, 3u);
    EXPECT_EQ(draw.desc.dwWidth, static_cast<std::uint32_t>(width));
    EXPECT_EQ(draw.desc.ddpfPixelFormat.dwRGBBitCount, 24u);
    const std::size_t bytes = PictureBytes(description);
    EXPECT_EQ(Bytes(draw.memory.begin(), draw.memory.begin() + static_cast<std::ptrdiff_t>(bytes)),
              BlockOf(surface.get(), bytes));
  }
}

TEST(ExportDraw, ComesBackThroughTheBuilder) {
  for (const std::int32_t format : {FORMAT_RGB24, FORMAT_RGB32, FORMAT_YUV420}) {
    const SurfaceDescription description = Describe(16, 8, format);
    const HeldSurface surface = Noisy(description);
    const ExportedDraw draw(surface.get());
    HeldSurface back;
    ASSERT_EQ(MakeBuilder()->CreateFromSource(draw.handle, SOURCE_DIRECT_DRAW, format, STORAGE_COPY,
                                              back.Reset()),
              VED_OK);
    const SurfaceDescription actual = DescriptionOf(back.get());
    EXPECT_EQ(actual.format, format);
    EXPECT_EQ(actual.width, 16);
    EXPECT_EQ(actual.height, 8);
    EXPECT_EQ(actual.Orientation, 1u);
    EXPECT_EQ(actual.stride, description.stride);  // 48, 64 and 16 are whole eights
    const std::size_t bytes = PictureBytes(description);
    EXPECT_EQ(BlockOf(back.get(), bytes), BlockOf(surface.get(), bytes));
  }
}

TEST(ExportDraw, GrayAndPackedHaveNoSurfaceOfTheirOwn) {
  for (const std::int32_t format : {FORMAT_GRAY8, FORMAT_YUY2}) {
    const HeldSurface surface = Noisy(Describe(8, 6, format));
    void* image = surface.get();
    std::uint32_t flag = 77;
    EXPECT_EQ(surface->ExportImage(kDraw, &image, &flag), E_FAIL);
    EXPECT_EQ(image, surface.get());
    EXPECT_EQ(flag, 77u);
  }
}

TEST(ExportDraw, FailingCallsThatMakeTheSurfaceFailTheExport) {
  const HeldSurface surface = Noisy(Describe(8, 6, FORMAT_RGB24));
  for (const SystemCall call : {SystemCall::kDirectDrawCreateEx, SystemCall::kCreateSurface}) {
    for (const std::int32_t code : {-5, 1}) {
      const std::int64_t before = LiveAllocations();
      SystemCallWatch watch;
      watch.Fail(call, code);
      void* image = surface.get();
      std::uint32_t flag = 77;
      EXPECT_EQ(surface->ExportImage(kDraw, &image, &flag), E_FAIL);
      EXPECT_EQ(image, surface.get());
      EXPECT_EQ(flag, 77u);
      EXPECT_EQ(watch.Count(SystemCall::kReleaseDirectDraw),
                call == SystemCall::kCreateSurface ? 1 : 0);
      EXPECT_EQ(LiveAllocations(), before);
    }
  }
}

TEST(ExportDraw, ALockThatFailsLeavesTheNewSurfaceAsItWasMade) {
  const HeldSurface surface = Noisy(Describe(8, 6, FORMAT_RGB24));
  SystemCallWatch watch;
  watch.Fail(SystemCall::kLock, -5);
  const ExportedDraw draw(surface.get());
  EXPECT_THAT(draw.memory, Each(0));
}

TEST(ExportDraw, ResultsOfTheLevelAndOfTheUnlockDoNotCount) {
  const SurfaceDescription description = Describe(8, 6, FORMAT_RGB24);
  const HeldSurface surface = Noisy(description);
  FakeDraw draw(24, 144);  // its level is refused
  zor::CurrentSystemCalls().directDrawSurface.unlock = [](IDirectDrawSurface7*) {
    return std::int32_t{-5};
  };
  void* image = nullptr;
  std::uint32_t flag = 0;
  EXPECT_EQ(surface->ExportImage(kDraw, &image, &flag), VED_OK);
  EXPECT_EQ(image, &draw);
  EXPECT_EQ(flag, 1u);
  EXPECT_EQ(draw.memory.Copy(), BlockOf(surface.get(), 144));
}

#ifndef _WIN32
// On Windows the system's DirectDraw has memory of its own.
TEST(ExportDraw, EveryRefusedAllocationFailsAndLeavesNothing) {
  const HeldSurface surface = Noisy(Describe(8, 6, FORMAT_YUV420));
  const std::int64_t before = LiveAllocations();
  zor::RefuseAllocation(0);
  { const ExportedDraw draw(surface.get()); }
  const std::uint64_t requests = zor::CountAllocations();
  EXPECT_GE(requests, 3u);
  for (std::uint64_t k = 1; k <= requests; ++k) {
    void* image = nullptr;
    std::uint32_t flag = 77;
    zor::RefuseAllocation(k);
    EXPECT_EQ(surface->ExportImage(kDraw, &image, &flag), E_FAIL);
    zor::RefuseAllocation(0);
    EXPECT_EQ(image, nullptr);
    EXPECT_EQ(LiveAllocations(), before);
  }
}
#endif

TEST(ExportDraw, ThePlanesOfAnOddHeightEndWithTheSurfacesMemory) {
  // 10 x 7 needs 70 + 2 x 15 bytes; three rows of 30 hold 90.
  const HeldSurface surface = Noisy(Describe(10, 7, FORMAT_YUV420));
  FakeDraw draw(30, 90);
  void* image = nullptr;
  std::uint32_t flag = 0;
  EXPECT_EQ(surface->ExportImage(kDraw, &image, &flag), VED_OK);
  EXPECT_EQ(image, &draw);
  EXPECT_EQ(draw.unlocks, 1);
  EXPECT_TRUE(draw.memory.GuardsIntact());
  // Luma, three chroma rows of 5, and the one row of the next plane, at 70 + 70 / 4, that fits.
  const Bytes block = BlockOf(surface.get(), 105);
  Bytes expected(block.begin(), block.begin() + 85);
  expected.insert(expected.end(), block.begin() + 87, block.begin() + 92);
  EXPECT_EQ(draw.memory.Copy(), expected);
}

TEST(ExportDraw, ANarrowPitchCutsRowsAndPlanesAtTheSurfacesEnd) {
  for (const std::int32_t format : {FORMAT_RGB24, FORMAT_RGB32, FORMAT_YUV420}) {
    for (const std::int32_t pitch : {1, 7, 16}) {
      const HeldSurface surface = Noisy(Describe(10, 6, format));
      const std::int32_t rows = format == FORMAT_YUV420 ? 3 : 6;
      FakeDraw draw(pitch, static_cast<std::size_t>(pitch * rows));
      void* image = nullptr;
      std::uint32_t flag = 0;
      EXPECT_EQ(surface->ExportImage(kDraw, &image, &flag), VED_OK);
      EXPECT_TRUE(draw.memory.GuardsIntact());
      EXPECT_EQ(draw.memory.data()[0], BlockOf(surface.get(), 1)[0]);
    }
  }
}

TEST(ExportDraw, AsksForTheStatedSurfaces) {
  const struct {
    DrawSurface kind;
    std::uint32_t flags, height, pixelFormatSize, pixelFlags, bits, red, green, blue;
  } kCases[] = {
      {DrawSurface::kRgb, 4103, 7, 32, 64, 32, 0xFF0000, 0xFF00, 0xFF},
      {DrawSurface::kPlanarAs24, 4103, 3, 32, 64, 24, 0xFF0000, 0xFF00, 0xFF},
      {DrawSurface::kHalfAs32, 4103, 3, 32, 64, 32, 0, 0, 0},
      {DrawSurface::kHalfAs32Again, 4103, 3, 32, 64, 32, 0, 0, 0},
      {DrawSurface::kPlain, 7, 0, 0, 0, 0, 0, 0, 0},
  };
  for (const auto& expected : kCases) {
    for (const bool systemMemory : {false, true}) {
      FakeDraw draw(32, 64);
      IDirectDrawSurface7* out = nullptr;
      EXPECT_EQ(zor::CreateDirectDrawSurface(&out, 10, 7, 32, expected.kind, systemMemory), 0);
      EXPECT_EQ(draw.level, 8u);
      EXPECT_EQ(draw.releases, 1);
      EXPECT_EQ(draw.asked.dwSize, 124u);
      EXPECT_EQ(draw.asked.dwFlags, expected.flags);
      EXPECT_EQ(draw.asked.dwWidth, 10u);
      EXPECT_EQ(draw.asked.dwHeight, expected.height);
      EXPECT_EQ(draw.asked.ddsCaps.dwCaps, systemMemory ? 2112u : 64u);
      EXPECT_EQ(draw.asked.ddpfPixelFormat.dwSize, expected.pixelFormatSize);
      EXPECT_EQ(draw.asked.ddpfPixelFormat.dwFlags, expected.pixelFlags);
      EXPECT_EQ(draw.asked.ddpfPixelFormat.dwRGBBitCount, expected.bits);
      EXPECT_EQ(draw.asked.ddpfPixelFormat.dwRBitMask, expected.red);
      EXPECT_EQ(draw.asked.ddpfPixelFormat.dwGBitMask, expected.green);
      EXPECT_EQ(draw.asked.ddpfPixelFormat.dwBBitMask, expected.blue);
    }
  }
}

TEST(Export, OfASurfaceWithoutPixelsGivesEmptyImages) {
  zor::CZorSurfaceBuffer* surface = zor::CZorSurfaceBuffer::Create(Describe(8, 8, FORMAT_RGB24));
  {
    const ExportedDib dib(surface);
    EXPECT_THAT(dib.Pixels(192), Each(0));
    const ExportedDraw draw(surface);
    EXPECT_THAT(draw.memory, Each(0));
  }
  surface->ScalarDeletingDestructor(1);
}

}  // namespace
