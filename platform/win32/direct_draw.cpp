// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "platform/direct_draw.h"

#include "platform/shared_library.h"
#include "platform/system_calls.h"

namespace zor {
namespace {

static_assert(sizeof(DDSURFACEDESC2) == kSurfaceDescSize, "the platform's record");

/// {15E65EC0-3B9C-11D2-B92F-00609797EA5B}: `IDirectDraw7`.
constexpr GUID kDirectDraw7Id = {
    0x15E65EC0, 0x3B9C, 0x11D2, {0xB9, 0x2F, 0x00, 0x60, 0x97, 0x97, 0xEA, 0x5B}};

std::int32_t CreateEx(IDirectDraw7** out) {
  using Function = HRESULT(WINAPI*)(GUID * driver, void** out, const GUID& id, IUnknown* outer);
  void* const library = OpenSharedLibrary("ddraw.dll");
  if (library == nullptr) return E_FAIL;
  const auto function = reinterpret_cast<Function>(FindFunction(library, "DirectDrawCreateEx"));
  if (function == nullptr) return E_FAIL;
  return function(nullptr, reinterpret_cast<void**>(out), kDirectDraw7Id, nullptr);
}

std::int32_t SetLevel(IDirectDraw7* directDraw, std::uint32_t flags) {
  return directDraw->SetCooperativeLevel(nullptr, flags);
}

std::int32_t Create(IDirectDraw7* directDraw, DDSURFACEDESC2* desc, IDirectDrawSurface7** out) {
  return directDraw->CreateSurface(desc, out, nullptr);
}

std::uint32_t Release(IDirectDraw7* directDraw) {
  return directDraw->Release();
}

}  // namespace

DirectDrawCalls NativeDirectDrawCalls() noexcept {
  return {CreateEx, SetLevel, Create, Release};
}

}  // namespace zor
