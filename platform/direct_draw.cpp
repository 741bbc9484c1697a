// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "platform/direct_draw.h"

#include "platform/system_calls.h"

namespace zor {
namespace {

std::int32_t Describe(IDirectDrawSurface7* surface, DDSURFACEDESC2* desc) {
  return surface->GetSurfaceDesc(desc);
}

std::int32_t Lock(IDirectDrawSurface7* surface, DDSURFACEDESC2* desc) {
  return surface->Lock(nullptr, desc, DDLOCK_WAIT, nullptr);
}

std::int32_t Unlock(IDirectDrawSurface7* surface) {
  return surface->Unlock(nullptr);
}

std::uint32_t Release(IDirectDrawSurface7* surface) {
  return surface->Release();
}

}  // namespace

DirectDrawSurfaceCalls NativeDirectDrawSurfaceCalls() noexcept {
  return {Describe, Lock, Unlock, Release};
}

DDSURFACEDESC2 EmptySurfaceDesc() noexcept {
  DDSURFACEDESC2 desc{};
  desc.dwSize = kSurfaceDescSize;
  return desc;
}

std::int32_t DirectDrawCreateEx(IDirectDraw7** out) noexcept {
  return CurrentSystemCalls().directDraw.createEx(out);
}

std::int32_t SetCooperativeLevel(IDirectDraw7* directDraw, std::uint32_t flags) noexcept {
  return CurrentSystemCalls().directDraw.setCooperativeLevel(directDraw, flags);
}

std::int32_t CreateSurface(IDirectDraw7* directDraw, DDSURFACEDESC2* desc,
                           IDirectDrawSurface7** out) noexcept {
  return CurrentSystemCalls().directDraw.createSurface(directDraw, desc, out);
}

std::uint32_t ReleaseDirectDraw(IDirectDraw7* directDraw) noexcept {
  return CurrentSystemCalls().directDraw.release(directDraw);
}

std::int32_t GetSurfaceDesc(IDirectDrawSurface7* surface, DDSURFACEDESC2* desc) noexcept {
  return CurrentSystemCalls().directDrawSurface.getSurfaceDesc(surface, desc);
}

std::int32_t LockSurface(IDirectDrawSurface7* surface, DDSURFACEDESC2* desc) noexcept {
  return CurrentSystemCalls().directDrawSurface.lock(surface, desc);
}

std::int32_t UnlockSurface(IDirectDrawSurface7* surface) noexcept {
  return CurrentSystemCalls().directDrawSurface.unlock(surface);
}

std::uint32_t ReleaseSurface(IDirectDrawSurface7* surface) noexcept {
  return CurrentSystemCalls().directDrawSurface.release(surface);
}

}  // namespace zor
