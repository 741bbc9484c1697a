// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "platform/system_calls.h"

#include <gtest/gtest.h>

#include "platform/memory.h"
#include "platform/shared_library.h"
#include "support/kelp_handle.h"
#include "support/system_call_watch.h"

namespace {

using zor::test::SystemCall;
using zor::test::SystemCallWatch;

constexpr std::int32_t kCode = static_cast<std::int32_t>(0x88760123u);

TEST(SystemCalls, ARefusedHeapGivesNull) {
  SystemCallWatch watch;
  watch.Fail(SystemCall::kAllocate);
  EXPECT_EQ(zor::AllocateBytes(10), nullptr);
  void* const block = zor::AllocateBytes(10);
  EXPECT_NE(block, nullptr);
  zor::FreeBytes(block);
  EXPECT_EQ(watch.Count(SystemCall::kAllocate), 2);
  EXPECT_EQ(watch.Count(SystemCall::kFree), 1);
}

TEST(SystemCalls, GlobalMemoryCanBeMadeToFail) {
  SystemCallWatch watch;
  watch.Fail(SystemCall::kGlobalAlloc);
  EXPECT_EQ(zor::GlobalAlloc(66, 10), nullptr);
  zor::GlobalHandle const handle = zor::GlobalAlloc(66, 10);
  ASSERT_NE(handle, nullptr);
  watch.Fail(SystemCall::kGlobalLock, 0, 2);
  EXPECT_NE(zor::GlobalLock(handle), nullptr);
  EXPECT_EQ(zor::GlobalLock(handle), nullptr) << "the second one from then on";
  zor::GlobalUnlock(handle);
  watch.Fail(SystemCall::kGlobalSize);
  EXPECT_EQ(zor::GlobalSize(handle), 0u);
  EXPECT_GE(zor::GlobalSize(handle), 10u);
  zor::GlobalFree(handle);
  EXPECT_EQ(watch.Count(SystemCall::kGlobalAlloc), 2);
  EXPECT_EQ(watch.Count(SystemCall::kGlobalLock), 2);
  EXPECT_EQ(watch.Count(SystemCall::kGlobalUnlock), 1);
  EXPECT_EQ(watch.Count(SystemCall::kGlobalFree), 1);
}

TEST(SystemCalls, EachDirectDrawCallCanBeMadeToFail) {
  SystemCallWatch watch;
  IDirectDraw7* directDraw = nullptr;
  watch.Fail(SystemCall::kDirectDrawCreateEx, kCode);
  EXPECT_EQ(zor::DirectDrawCreateEx(&directDraw), kCode);
  EXPECT_EQ(directDraw, nullptr);
  ASSERT_EQ(zor::DirectDrawCreateEx(&directDraw), DD_OK);
  watch.Fail(SystemCall::kSetCooperativeLevel, kCode);
  EXPECT_EQ(zor::SetCooperativeLevel(directDraw, DDSCL_NORMAL), kCode);
  ASSERT_EQ(zor::SetCooperativeLevel(directDraw, DDSCL_NORMAL), DD_OK);

  DDSURFACEDESC2 desc = zor::EmptySurfaceDesc();
  desc.dwFlags = DDSD_CAPS | DDSD_HEIGHT | DDSD_WIDTH;
  desc.dwWidth = 4;
  desc.dwHeight = 4;
  desc.ddsCaps.dwCaps = DDSCAPS_OFFSCREENPLAIN | DDSCAPS_SYSTEMMEMORY;
  IDirectDrawSurface7* surface = nullptr;
  watch.Fail(SystemCall::kCreateSurface, kCode);
  EXPECT_EQ(zor::CreateSurface(directDraw, &desc, &surface), kCode);
  EXPECT_EQ(surface, nullptr);
  ASSERT_EQ(zor::CreateSurface(directDraw, &desc, &surface), DD_OK);

  desc = zor::EmptySurfaceDesc();
  watch.Fail(SystemCall::kGetSurfaceDesc, 1);
  EXPECT_EQ(zor::GetSurfaceDesc(surface, &desc), 1) << "a positive code, too";
  EXPECT_EQ(desc.dwWidth, 0u);
  EXPECT_EQ(zor::GetSurfaceDesc(surface, &desc), DD_OK);
  watch.Fail(SystemCall::kLock, kCode);
  EXPECT_EQ(zor::LockSurface(surface, &desc), kCode);
  EXPECT_EQ(zor::LockSurface(surface, &desc), DD_OK) << "the failed call locked nothing";
  watch.Fail(SystemCall::kUnlock, kCode);
  EXPECT_EQ(zor::UnlockSurface(surface), kCode);
  EXPECT_EQ(zor::UnlockSurface(surface), DD_OK);
  zor::ReleaseSurface(surface);
  zor::ReleaseDirectDraw(directDraw);
  for (const SystemCall call : {SystemCall::kDirectDrawCreateEx, SystemCall::kSetCooperativeLevel,
                                SystemCall::kCreateSurface, SystemCall::kGetSurfaceDesc,
                                SystemCall::kLock, SystemCall::kUnlock}) {
    EXPECT_EQ(watch.Count(call), 2) << static_cast<int>(call);
  }
  EXPECT_EQ(watch.Count(SystemCall::kReleaseSurface), 1);
  EXPECT_EQ(watch.Count(SystemCall::kReleaseDirectDraw), 1);
}

TEST(SystemCalls, EachKelpCallCanBeMadeToFail) {
  const std::uint8_t pixels[16] = {};
  const zor::test::KelpHandle handle(4, 4, 8, 4, pixels, sizeof pixels);
  SystemCallWatch watch;
  zor::KelpInfo info{};
  void* address = nullptr;
  watch.Fail(SystemCall::kKelpGetInfo, 5);
  EXPECT_EQ(zor::KelpGetInfo(handle.get(), &info), 5);
  EXPECT_EQ(info.width, 0);
  EXPECT_EQ(zor::KelpGetInfo(handle.get(), &info), 0);
  EXPECT_EQ(info.width, 4);
  watch.Fail(SystemCall::kKelpLockData, -5);
  EXPECT_EQ(zor::KelpLockData(handle.get(), &address), -5);
  EXPECT_EQ(handle.Locks(), 0);
  EXPECT_EQ(zor::KelpLockData(handle.get(), &address), 0);
  EXPECT_EQ(handle.Locks(), 1);
  zor::KelpUnlockData(handle.get());
  EXPECT_EQ(handle.Locks(), 0);
  EXPECT_EQ(watch.Count(SystemCall::kKelpLockData), 2);
  EXPECT_EQ(watch.Count(SystemCall::kKelpUnlockData), 1);
}

TEST(SystemCalls, ALibraryOrAFunctionOfItCanBeMissing) {
  const std::uint8_t pixels[16] = {};
  const zor::test::KelpHandle handle(4, 4, 8, 4, pixels, sizeof pixels);
  SystemCallWatch watch;
  watch.Fail(SystemCall::kOpenLibrary);
  EXPECT_EQ(zor::OpenSharedLibrary("anything"), nullptr);
  EXPECT_EQ(watch.Count(SystemCall::kOpenLibrary), 1);

  zor::KelpInfo info{1, 2, 3, 4};
  void* address = &info;
  watch.Fail(SystemCall::kFindFunction);
  EXPECT_NE(zor::KelpGetInfo(handle.get(), &info), 0);
  EXPECT_EQ(info.width, 1);
  watch.Fail(SystemCall::kFindFunction);
  EXPECT_NE(zor::KelpLockData(handle.get(), &address), 0);
  EXPECT_EQ(address, &info);
  EXPECT_EQ(zor::KelpLockData(handle.get(), &address), 0);
  watch.Fail(SystemCall::kFindFunction);
  zor::KelpUnlockData(handle.get());
  EXPECT_EQ(handle.Locks(), 1) << "nothing was called";
  zor::KelpUnlockData(handle.get());
  EXPECT_EQ(handle.Locks(), 0);
}

#ifdef _WIN32
TEST(SystemCalls, WithoutTheLibraryOrItsFunctionThereIsNoDirectDraw) {
  for (const SystemCall call : {SystemCall::kOpenLibrary, SystemCall::kFindFunction}) {
    SystemCallWatch watch;
    watch.Fail(call);
    IDirectDraw7* directDraw = nullptr;
    EXPECT_EQ(zor::DirectDrawCreateEx(&directDraw), E_FAIL);
    EXPECT_EQ(directDraw, nullptr);
    EXPECT_EQ(watch.Count(call), 1);
  }
}
#endif

TEST(SystemCalls, AreTheSystemsOwnAgainAfterAWatch) {
  {
    SystemCallWatch watch;
    EXPECT_NE(zor::CurrentSystemCalls().memory.allocate, zor::NativeSystemCalls().memory.allocate);
    EXPECT_NE(zor::CurrentSystemCalls().directDrawSurface.lock,
              zor::NativeSystemCalls().directDrawSurface.lock);
  }
  EXPECT_EQ(zor::CurrentSystemCalls().memory.allocate, zor::NativeSystemCalls().memory.allocate);
  EXPECT_EQ(zor::CurrentSystemCalls().globalMemory.lock,
            zor::NativeSystemCalls().globalMemory.lock);
  EXPECT_EQ(zor::CurrentSystemCalls().directDrawSurface.lock,
            zor::NativeSystemCalls().directDrawSurface.lock);
  EXPECT_EQ(zor::CurrentSystemCalls().kelpTool.lockData,
            zor::NativeSystemCalls().kelpTool.lockData);
}

}  // namespace
