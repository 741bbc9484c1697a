// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gmock/gmock.h>

#include "surface/export_cases.h"

namespace zor::test {
namespace {

using testing::Each;

/// Answers for a DirectDraw with a pitch and memory of the test's choice.
class FakeDraw {
 public:
  FakeDraw(std::int32_t pitch, std::size_t bytes)
      : memory(bytes, GuardedMemory::Edge::kEnd, 0x5A), pitch_(pitch) {
    current = this;
    auto& calls = CurrentSystemCalls();
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
      return current->unlockResult;
    };
  }
  ~FakeDraw() { CurrentSystemCalls() = NativeSystemCalls(); }

  GuardedMemory memory;
  DDSURFACEDESC2 asked = {};
  std::uint32_t level = 0;
  std::int32_t unlockResult = 0;
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
        EXPECT_EQ(Part(draw.memory, y * draw.desc.lPitch, row), Part(block, from, row));
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
    EXPECT_EQ(Part(draw.memory, 0, bytes), BlockOf(surface.get(), bytes));
  }
}

TEST(ExportDraw, ComesBackThroughTheBuilder) {
  for (const std::int32_t format : {FORMAT_RGB24, FORMAT_RGB32, FORMAT_YUV420}) {
    const SurfaceDescription description = Describe(16, 8, format);  // strides of whole eights
    const HeldSurface surface = Noisy(description);
    CheckComingBack(ExportedDraw(surface.get()).handle, SOURCE_DIRECT_DRAW, description, surface);
  }
}

TEST(ExportDraw, GrayAndPackedHaveNoSurfaceOfTheirOwn) {
  for (const std::int32_t format : {FORMAT_GRAY8, FORMAT_YUY2}) {
    EXPECT_EQ(FailToExport(Noisy(Describe(8, 6, format)), kDraw), E_FAIL);
  }
}

TEST(ExportDraw, FailingCallsThatMakeTheSurfaceFailTheExport) {
  const HeldSurface surface = Noisy(Describe(8, 6, FORMAT_RGB24));
  for (const SystemCall call : {SystemCall::kDirectDrawCreateEx, SystemCall::kCreateSurface}) {
    for (const std::int32_t code : {-5, 1}) {
      const std::int64_t before = LiveAllocations();
      SystemCallWatch watch;
      watch.Fail(call, code);
      EXPECT_EQ(FailToExport(surface, kDraw), E_FAIL);
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
  draw.unlockResult = -5;
  EXPECT_EQ(Export(surface.get(), kDraw), &draw);
  EXPECT_EQ(draw.unlocks, 1);
  EXPECT_EQ(draw.memory.Copy(), BlockOf(surface.get(), 144));
}

#ifndef _WIN32
// On Windows the system's DirectDraw has memory of its own.
TEST(ExportDraw, EveryRefusedAllocationFailsAndLeavesNothing) {
  const HeldSurface surface = Noisy(Describe(8, 6, FORMAT_YUV420));
  const std::int64_t before = LiveAllocations();
  RefuseAllocation(0);
  { const ExportedDraw draw(surface.get()); }
  const std::uint64_t requests = CountAllocations();
  EXPECT_GE(requests, 3u);
  for (std::uint64_t k = 1; k <= requests; ++k) {
    RefuseAllocation(k);
    EXPECT_EQ(FailToExport(surface, kDraw), E_FAIL);
    RefuseAllocation(0);
    EXPECT_EQ(LiveAllocations(), before);
  }
}
#endif

TEST(ExportDraw, ThePlanesOfAnOddHeightEndWithTheSurfacesMemory) {
  // 10 x 7 needs 70 + 2 x 15 bytes; three rows of 30 hold 90, three of 32 hold 96.
  const HeldSurface surface = Noisy(Describe(10, 7, FORMAT_YUV420));
  const Bytes block = BlockOf(surface.get(), 105);
  for (const std::int32_t pitch : {30, 31, 32}) {
    FakeDraw draw(pitch, static_cast<std::size_t>(3 * pitch));
    EXPECT_EQ(Export(surface.get(), kDraw), &draw);
    EXPECT_EQ(draw.unlocks, 1);
    EXPECT_TRUE(draw.memory.GuardsIntact());
    // Luma, three chroma rows of 5, and as much of the next plane, at 70 + 70 / 4, as fits.
    Bytes expected = Part(block, 0, 85);
    expected.insert(expected.end(), block.begin() + 87, block.begin() + 87 + 3 * pitch - 85);
    EXPECT_EQ(draw.memory.Copy(), expected);
  }
}

TEST(ExportDraw, ANarrowPitchCutsRowsAndPlanesAtTheSurfacesEnd) {
  for (const std::int32_t format : {FORMAT_RGB24, FORMAT_RGB32, FORMAT_YUV420}) {
    for (const std::int32_t pitch : {1, 7, 16}) {
      const HeldSurface surface = Noisy(Describe(10, 6, format));
      const std::int32_t rows = format == FORMAT_YUV420 ? 3 : 6;
      FakeDraw draw(pitch, static_cast<std::size_t>(pitch * rows));
      EXPECT_EQ(Export(surface.get(), kDraw), &draw);
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
      EXPECT_EQ(CreateDirectDrawSurface(&out, 10, 7, 32, expected.kind, systemMemory), 0);
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

}  // namespace
}  // namespace zor::test
