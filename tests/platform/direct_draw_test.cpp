// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "platform/direct_draw.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "platform/memory.h"

namespace {

/// The description of an off-screen RGB surface in system memory.
DDSURFACEDESC2 RgbDesc(std::uint32_t width, std::uint32_t height, std::uint32_t bits) {
  DDSURFACEDESC2 desc = zor::EmptySurfaceDesc();
  desc.dwFlags = DDSD_CAPS | DDSD_HEIGHT | DDSD_WIDTH | DDSD_PIXELFORMAT;
  desc.dwWidth = width;
  desc.dwHeight = height;
  desc.ddsCaps.dwCaps = DDSCAPS_OFFSCREENPLAIN | DDSCAPS_SYSTEMMEMORY;
  desc.ddpfPixelFormat.dwSize = 32;
  desc.ddpfPixelFormat.dwFlags = DDPF_RGB;
  desc.ddpfPixelFormat.dwRGBBitCount = bits;
  desc.ddpfPixelFormat.dwRBitMask = 0xFF0000;
  desc.ddpfPixelFormat.dwGBitMask = 0xFF00;
  desc.ddpfPixelFormat.dwBBitMask = 0xFF;
  return desc;
}

class DirectDraw : public testing::Test {
 protected:
  void SetUp() override {
    live_ = zor::LiveAllocations();
    ASSERT_EQ(zor::DirectDrawCreateEx(&directDraw_), DD_OK);
    ASSERT_NE(directDraw_, nullptr);
    ASSERT_EQ(zor::SetCooperativeLevel(directDraw_, DDSCL_NORMAL), DD_OK);
  }
  void TearDown() override {
    if (directDraw_ != nullptr) zor::ReleaseDirectDraw(directDraw_);
    EXPECT_EQ(zor::LiveAllocations(), live_);
  }

  /// @return a surface, or null.
  IDirectDrawSurface7* Make(DDSURFACEDESC2 desc) {
    IDirectDrawSurface7* surface = nullptr;
    EXPECT_EQ(zor::CreateSurface(directDraw_, &desc, &surface), DD_OK);
    return surface;
  }

  /// @return the code of a creation that must fail.
  std::int32_t CodeOf(DDSURFACEDESC2 desc) {
    IDirectDrawSurface7* surface = nullptr;
    const std::int32_t code = zor::CreateSurface(directDraw_, &desc, &surface);
    EXPECT_EQ(surface, nullptr);
    if (surface != nullptr) zor::ReleaseSurface(surface);
    return code;
  }

  IDirectDraw7* directDraw_ = nullptr;
  std::int64_t live_ = 0;
};

TEST(DirectDrawConstants, AreThePlatformsNumbers) {
  EXPECT_EQ(DDSD_CAPS | DDSD_HEIGHT | DDSD_WIDTH, 7);
  EXPECT_EQ(DDSD_CAPS | DDSD_HEIGHT | DDSD_WIDTH | DDSD_PIXELFORMAT, 4103);
  EXPECT_EQ(DDSCAPS_OFFSCREENPLAIN | DDSCAPS_SYSTEMMEMORY, 2112);
  EXPECT_EQ(DDPF_RGB, 64);
  EXPECT_EQ(DDSCL_NORMAL, 8);
  EXPECT_EQ(DDLOCK_WAIT, 1);
  EXPECT_EQ(zor::EmptySurfaceDesc().dwSize, 124u);
  EXPECT_EQ(zor::EmptySurfaceDesc().dwFlags, 0u);
}

TEST_F(DirectDraw, DescribesASurface) {
  for (const std::uint32_t bits : {24u, 32u}) {
    IDirectDrawSurface7* const surface = Make(RgbDesc(99, 51, bits));
    ASSERT_NE(surface, nullptr);
    DDSURFACEDESC2 desc = zor::EmptySurfaceDesc();
    ASSERT_EQ(zor::GetSurfaceDesc(surface, &desc), DD_OK);
    EXPECT_EQ(desc.dwSize, 124u);
    EXPECT_EQ(desc.dwWidth, 99u);
    EXPECT_EQ(desc.dwHeight, 51u);
    EXPECT_EQ(desc.ddpfPixelFormat.dwRGBBitCount, bits);
    EXPECT_EQ(desc.ddpfPixelFormat.dwRBitMask, 0xFF0000u);
    EXPECT_EQ(desc.lpSurface, nullptr);
    EXPECT_EQ(desc.dwFlags & (DDSD_PITCH | DDSD_PIXELFORMAT), DDSD_PITCH | DDSD_PIXELFORMAT);
    EXPECT_EQ(zor::ReleaseSurface(surface), 0u);
  }
}

TEST_F(DirectDraw, RoundsThePitchUpToWholeEights) {
  const struct {
    std::uint32_t width, bits;
    std::int32_t pitch;
  } cases[] = {{99, 32, 400}, {99, 24, 304}, {8, 24, 24}, {1, 24, 8}, {4, 32, 16}, {5, 32, 24}};
  for (const auto& c : cases) {
    IDirectDrawSurface7* const surface = Make(RgbDesc(c.width, 4, c.bits));
    ASSERT_NE(surface, nullptr);
    DDSURFACEDESC2 desc = zor::EmptySurfaceDesc();
    EXPECT_EQ(zor::GetSurfaceDesc(surface, &desc), DD_OK);
    EXPECT_EQ(desc.lPitch, c.pitch) << c.width << " pixels of " << c.bits;
    zor::ReleaseSurface(surface);
  }
}

TEST_F(DirectDraw, ASurfaceIsZeroedLockedWrittenAndReadBack) {
  IDirectDrawSurface7* const surface = Make(RgbDesc(99, 51, 24));
  ASSERT_NE(surface, nullptr);
  DDSURFACEDESC2 desc = zor::EmptySurfaceDesc();
  ASSERT_EQ(zor::LockSurface(surface, &desc), DD_OK);
  EXPECT_EQ(desc.dwWidth, 99u);
  EXPECT_EQ(desc.dwHeight, 51u);
  ASSERT_EQ(desc.lPitch, 304);
  ASSERT_NE(desc.lpSurface, nullptr);
  auto* bytes = static_cast<std::uint8_t*>(desc.lpSurface);
  for (int i = 0; i < 304 * 51; ++i) ASSERT_EQ(bytes[i], 0) << i;
  for (int i = 0; i < 304 * 51; ++i) bytes[i] = static_cast<std::uint8_t>(i % 251);
  EXPECT_EQ(zor::UnlockSurface(surface), DD_OK);

  desc = zor::EmptySurfaceDesc();
  ASSERT_EQ(zor::LockSurface(surface, &desc), DD_OK);
  bytes = static_cast<std::uint8_t*>(desc.lpSurface);
  for (int i = 0; i < 304 * 51; ++i) ASSERT_EQ(bytes[i], static_cast<std::uint8_t>(i % 251)) << i;
  EXPECT_EQ(zor::UnlockSurface(surface), DD_OK);
  EXPECT_EQ(zor::ReleaseSurface(surface), 0u);
}

TEST_F(DirectDraw, ALockedSurfaceIsBusyAndAnUnlockedOneNotLocked) {
  IDirectDrawSurface7* const surface = Make(RgbDesc(16, 16, 32));
  ASSERT_NE(surface, nullptr);
  DDSURFACEDESC2 desc = zor::EmptySurfaceDesc();
  EXPECT_EQ(zor::UnlockSurface(surface), DDERR_NOTLOCKED);
  EXPECT_EQ(zor::LockSurface(surface, &desc), DD_OK);
  EXPECT_EQ(zor::LockSurface(surface, &desc), DDERR_SURFACEBUSY);
  EXPECT_EQ(zor::GetSurfaceDesc(surface, &desc), DD_OK) << "may be described while locked";
  EXPECT_EQ(zor::UnlockSurface(surface), DD_OK);
  EXPECT_EQ(zor::UnlockSurface(surface), DDERR_NOTLOCKED);
  zor::ReleaseSurface(surface);
}

TEST_F(DirectDraw, ARecordOfAnotherSizeIsRefusedAndLocksNothing) {
  IDirectDrawSurface7* const surface = Make(RgbDesc(16, 16, 32));
  ASSERT_NE(surface, nullptr);
  DDSURFACEDESC2 desc = zor::EmptySurfaceDesc();
  for (const std::uint32_t size : {0u, 100u, 125u}) {
    desc.dwSize = size;
    EXPECT_EQ(zor::GetSurfaceDesc(surface, &desc), DDERR_INVALIDPARAMS);
    EXPECT_EQ(zor::LockSurface(surface, &desc), DDERR_INVALIDPARAMS);
  }
  EXPECT_EQ(zor::GetSurfaceDesc(surface, nullptr), DDERR_INVALIDPARAMS);
  EXPECT_EQ(zor::LockSurface(surface, nullptr), DDERR_INVALIDPARAMS);
  EXPECT_EQ(zor::UnlockSurface(surface), DDERR_NOTLOCKED);
  zor::ReleaseSurface(surface);
}

TEST_F(DirectDraw, LocksPartsOfASurface) {
  IDirectDrawSurface7* const surface = Make(RgbDesc(99, 51, 24));
  ASSERT_NE(surface, nullptr);
  DDSURFACEDESC2 desc = zor::EmptySurfaceDesc();
  ASSERT_EQ(zor::LockSurface(surface, &desc), DD_OK);
  const auto* const start = static_cast<std::uint8_t*>(desc.lpSurface);
  EXPECT_EQ(zor::UnlockSurface(surface), DD_OK);

  RECT part = {5, 7, 20, 30};
  desc = zor::EmptySurfaceDesc();
  ASSERT_EQ(surface->Lock(&part, &desc, DDLOCK_WAIT, nullptr), DD_OK);
  EXPECT_EQ(static_cast<std::uint8_t*>(desc.lpSurface) - start, 7 * 304 + 5 * 3);
  EXPECT_EQ(surface->Unlock(nullptr), DD_OK);

  for (RECT bad : std::vector<RECT>{
           {-1, 0, 5, 5}, {0, -1, 5, 5}, {0, 0, 100, 5}, {0, 0, 5, 52}, {10, 0, 5, 5}}) {
    desc = zor::EmptySurfaceDesc();
    EXPECT_EQ(surface->Lock(&bad, &desc, DDLOCK_WAIT, nullptr), DDERR_INVALIDPARAMS);
  }
  zor::ReleaseSurface(surface);
}

TEST_F(DirectDraw, ASurfaceOutlivesItsDirectDrawAndCountsItsReferences) {
  IDirectDrawSurface7* const surface = Make(RgbDesc(16, 16, 32));
  ASSERT_NE(surface, nullptr);
  zor::ReleaseDirectDraw(directDraw_);
  directDraw_ = nullptr;
  EXPECT_EQ(surface->AddRef(), 2u);
  EXPECT_EQ(zor::ReleaseSurface(surface), 1u);
  DDSURFACEDESC2 desc = zor::EmptySurfaceDesc();
  ASSERT_EQ(zor::LockSurface(surface, &desc), DD_OK);
  std::memset(desc.lpSurface, 0x77, static_cast<std::size_t>(desc.lPitch) * 16);
  EXPECT_EQ(zor::UnlockSurface(surface), DD_OK);
  EXPECT_EQ(zor::ReleaseSurface(surface), 0u);
}

TEST_F(DirectDraw, RefusesSurfacesWithoutASize) {
  EXPECT_EQ(CodeOf(RgbDesc(0, 4, 32)), DDERR_INVALIDPARAMS);
  EXPECT_EQ(CodeOf(RgbDesc(4, 0, 32)), DDERR_INVALIDPARAMS);
  EXPECT_EQ(CodeOf(RgbDesc(0x40000000, 2, 32)), DDERR_INVALIDPARAMS);
  DDSURFACEDESC2 desc = RgbDesc(4, 4, 32);
  desc.dwFlags &= ~static_cast<std::uint32_t>(DDSD_HEIGHT);
  EXPECT_EQ(CodeOf(desc), DDERR_INVALIDPARAMS);
  desc = RgbDesc(4, 4, 32);
  desc.dwFlags &= ~static_cast<std::uint32_t>(DDSD_WIDTH);
  EXPECT_EQ(CodeOf(desc), DDERR_INVALIDPARAMS);
}

TEST_F(DirectDraw, RefusesPixelFormatsThatAreNone) {
  EXPECT_EQ(CodeOf(RgbDesc(4, 4, 0)), DDERR_INVALIDPIXELFORMAT);
  EXPECT_EQ(CodeOf(RgbDesc(4, 4, 12)), DDERR_INVALIDPIXELFORMAT);
  EXPECT_EQ(CodeOf(RgbDesc(4, 4, 16)), DDERR_INVALIDPIXELFORMAT);
  DDSURFACEDESC2 desc = RgbDesc(4, 4, 32);
  desc.ddpfPixelFormat.dwRBitMask = 0;
  desc.ddpfPixelFormat.dwGBitMask = 0;
  desc.ddpfPixelFormat.dwBBitMask = 0;
  EXPECT_EQ(CodeOf(desc), DDERR_INVALIDPIXELFORMAT);
}

TEST_F(DirectDraw, WithoutAFormatTheHeightAloneDecides) {
  DDSURFACEDESC2 desc = RgbDesc(8, 0, 0);
  desc.dwFlags = DDSD_CAPS | DDSD_HEIGHT | DDSD_WIDTH;
  EXPECT_EQ(CodeOf(desc), DDERR_INVALIDPARAMS);
  desc.dwHeight = 4;
  IDirectDrawSurface7* const surface = Make(desc);
  ASSERT_NE(surface, nullptr);
  zor::ReleaseSurface(surface);
}

TEST(DirectDrawLevel, NoSurfaceIsMadeBeforeTheLevelIsSet) {
  IDirectDraw7* directDraw = nullptr;
  ASSERT_EQ(zor::DirectDrawCreateEx(&directDraw), DD_OK);
  DDSURFACEDESC2 desc = RgbDesc(4, 4, 32);
  IDirectDrawSurface7* surface = nullptr;
  EXPECT_EQ(zor::CreateSurface(directDraw, &desc, &surface), DDERR_NOCOOPERATIVELEVELSET);
  EXPECT_EQ(surface, nullptr);
  zor::ReleaseDirectDraw(directDraw);
}

#ifndef _WIN32

/// A host's own surface over its own memory.
class HostSurface final : public IDirectDrawSurface7 {
 public:
  std::uint32_t AddRef() override { return ++references; }
  std::uint32_t Release() override { return --references; }
  std::int32_t GetSurfaceDesc(DDSURFACEDESC2* desc) override {
    desc->dwWidth = 4;
    desc->dwHeight = 2;
    desc->lPitch = 20;
    desc->ddpfPixelFormat.dwRGBBitCount = 32;
    return DD_OK;
  }
  std::int32_t Lock(RECT* rect, DDSURFACEDESC2* desc, std::uint32_t flags, void* event) override {
    EXPECT_EQ(rect, nullptr);
    EXPECT_EQ(flags, DDLOCK_WAIT);
    EXPECT_EQ(event, nullptr);
    EXPECT_EQ(desc->dwSize, 124u);
    GetSurfaceDesc(desc);
    desc->lpSurface = memory;
    ++locks;
    return DD_OK;
  }
  std::int32_t Unlock(RECT* rect) override {
    EXPECT_EQ(rect, nullptr);
    --locks;
    return DD_OK;
  }

  std::uint32_t references = 1;
  int locks = 0;
  std::uint8_t memory[40] = {};
};

TEST(DirectDrawHost, ASurfaceThatAHostImplementsIsLockedWholeAndUnlocked) {
  HostSurface surface;
  DDSURFACEDESC2 desc = zor::EmptySurfaceDesc();
  EXPECT_EQ(zor::GetSurfaceDesc(&surface, &desc), DD_OK);
  EXPECT_EQ(desc.lPitch, 20);
  EXPECT_EQ(zor::LockSurface(&surface, &desc), DD_OK);
  EXPECT_EQ(desc.lpSurface, surface.memory);
  EXPECT_EQ(surface.locks, 1);
  EXPECT_EQ(zor::UnlockSurface(&surface), DD_OK);
  EXPECT_EQ(surface.locks, 0);
  EXPECT_EQ(surface.AddRef(), 2u);
  EXPECT_EQ(zor::ReleaseSurface(&surface), 1u);
}

TEST_F(DirectDraw, SoftwareSurfacesLieInSystemMemoryOnly) {
  DDSURFACEDESC2 desc = RgbDesc(4, 4, 32);
  desc.ddsCaps.dwCaps = DDSCAPS_OFFSCREENPLAIN;
  EXPECT_EQ(CodeOf(desc), DDERR_NODIRECTDRAWHW);
}

TEST_F(DirectDraw, SoftwareSurfacesAbove2To31Minus1BytesHaveNoMemory) {
  EXPECT_EQ(CodeOf(RgbDesc(40000, 40000, 32)), DDERR_OUTOFMEMORY);
}

TEST_F(DirectDraw, EveryRefusedAllocationFailsTheCreationAndLeaksNothing) {
  const std::int64_t before = zor::LiveAllocations();
  for (std::uint64_t k = 1; k <= 2; ++k) {
    zor::RefuseAllocation(k);
    EXPECT_EQ(CodeOf(RgbDesc(4, 4, 32)), DDERR_OUTOFMEMORY) << k;
    EXPECT_EQ(zor::CountAllocations(), k);
    zor::RefuseAllocation(0);
    EXPECT_EQ(zor::LiveAllocations(), before);
  }
  zor::RefuseAllocation(1);
  IDirectDraw7* second = nullptr;
  EXPECT_EQ(zor::DirectDrawCreateEx(&second), DDERR_OUTOFMEMORY);
  EXPECT_EQ(second, nullptr);
  zor::RefuseAllocation(0);
}

#endif

}  // namespace
