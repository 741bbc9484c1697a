// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

// A software DirectDraw: surfaces in system memory, and nothing to show them on.

#include "platform/direct_draw.h"

#include <atomic>
#include <cstring>
#include <new>

#include "platform/memory.h"
#include "platform/system_calls.h"

struct IDirectDraw7 {
  bool levelIsSet = false;
};

namespace zor {
namespace {

constexpr std::uint32_t kRedMask = 0xFF0000;
constexpr std::uint32_t kGreenMask = 0xFF00;
constexpr std::uint32_t kBlueMask = 0xFF;

/// What a surface gets that asks for no format: that of a display of 32 bits.
constexpr DDPIXELFORMAT kDisplayFormat = {32, DDPF_RGB, 0, 32, kRedMask, kGreenMask, kBlueMask, 0};

bool IsServed(const DDPIXELFORMAT& format) {
  if (format.dwSize != 32 || (format.dwFlags & DDPF_RGB) == 0) return false;
  switch (format.dwRGBBitCount) {
    case 8:
    case 24:
      return true;
    case 32:
      return format.dwRBitMask == kRedMask && format.dwGBitMask == kGreenMask &&
             format.dwBBitMask == kBlueMask;
    default:
      return false;
  }
}

class SoftwareSurface final : public IDirectDrawSurface7 {
 public:
  /// @param desc size, pitch, pixel format and caps. @param pixels becomes the surface's own.
  SoftwareSurface(const DDSURFACEDESC2& desc, std::uint8_t* pixels) noexcept
      : desc_(desc), pixels_(pixels) {
    desc_.dwFlags = DDSD_CAPS | DDSD_HEIGHT | DDSD_WIDTH | DDSD_PITCH | DDSD_PIXELFORMAT;
    desc_.lpSurface = nullptr;
  }

  std::uint32_t AddRef() override { return ++references_; }

  std::uint32_t Release() override {
    const std::uint32_t left = --references_;
    if (left == 0) {
      FreeBytes(pixels_);
      this->~SoftwareSurface();
      FreeBytes(this);
    }
    return left;
  }

  std::int32_t GetSurfaceDesc(DDSURFACEDESC2* desc) override {
    if (desc == nullptr || desc->dwSize != kSurfaceDescSize) return DDERR_INVALIDPARAMS;
    *desc = desc_;
    return DD_OK;
  }

  std::int32_t Lock(RECT* rect, DDSURFACEDESC2* desc, std::uint32_t, void*) override {
    if (desc == nullptr || desc->dwSize != kSurfaceDescSize) return DDERR_INVALIDPARAMS;
    if (rect != nullptr && !Holds(*rect)) return DDERR_INVALIDPARAMS;
    if (locked_.exchange(true)) return DDERR_SURFACEBUSY;
    *desc = desc_;
    desc->dwFlags |= DDSD_LPSURFACE;
    desc->lpSurface = pixels_;
    if (rect != nullptr) {
      desc->lpSurface = pixels_ + std::int64_t{desc_.lPitch} * rect->top +
                        std::int64_t{desc_.ddpfPixelFormat.dwRGBBitCount / 8} * rect->left;
    }
    return DD_OK;
  }

  std::int32_t Unlock(RECT*) override { return locked_.exchange(false) ? DD_OK : DDERR_NOTLOCKED; }

 private:
  ~SoftwareSurface() = default;

  bool Holds(const RECT& rect) const {
    return rect.left >= 0 && rect.top >= 0 && rect.left <= rect.right && rect.top <= rect.bottom &&
           rect.right <= std::int64_t{desc_.dwWidth} && rect.bottom <= std::int64_t{desc_.dwHeight};
  }

  DDSURFACEDESC2 desc_;
  std::uint8_t* pixels_;
  std::atomic<std::uint32_t> references_{1};
  std::atomic<bool> locked_{false};
};

template <class T, class... Arguments>
T* Make(const Arguments&... arguments) noexcept {
  void* const memory = AllocateBytes(sizeof(T));
  return memory != nullptr ? new (memory) T(arguments...) : nullptr;
}

std::int32_t CreateEx(IDirectDraw7** out) {
  IDirectDraw7* const made = Make<IDirectDraw7>();
  if (made == nullptr) return DDERR_OUTOFMEMORY;
  *out = made;
  return DD_OK;
}

std::int32_t SetLevel(IDirectDraw7* directDraw, std::uint32_t flags) {
  if (flags != DDSCL_NORMAL) return DDERR_INVALIDPARAMS;
  directDraw->levelIsSet = true;
  return DD_OK;
}

std::int32_t Create(IDirectDraw7* directDraw, DDSURFACEDESC2* desc, IDirectDrawSurface7** out) {
  if (!directDraw->levelIsSet) return DDERR_NOCOOPERATIVELEVELSET;
  if (desc == nullptr || out == nullptr) return DDERR_INVALIDPARAMS;
  *out = nullptr;
  constexpr std::uint32_t kNeeded = DDSD_CAPS | DDSD_HEIGHT | DDSD_WIDTH;
  if (desc->dwSize != kSurfaceDescSize || (desc->dwFlags & kNeeded) != kNeeded) {
    return DDERR_INVALIDPARAMS;
  }
  if ((desc->ddsCaps.dwCaps & DDSCAPS_SYSTEMMEMORY) == 0) return DDERR_NODIRECTDRAWHW;

  DDSURFACEDESC2 made = *desc;
  if ((made.dwFlags & DDSD_PIXELFORMAT) == 0) made.ddpfPixelFormat = kDisplayFormat;
  if (!IsServed(made.ddpfPixelFormat)) return DDERR_INVALIDPIXELFORMAT;

  // Rows stand at whole multiples of 8 bytes, as on Windows.
  const std::uint64_t row = std::uint64_t{made.dwWidth} * (made.ddpfPixelFormat.dwRGBBitCount / 8);
  const std::uint64_t pitch = (row + 7) & ~std::uint64_t{7};
  if (made.dwWidth == 0 || made.dwHeight == 0 || pitch > INT32_MAX) return DDERR_INVALIDPARAMS;
  made.lPitch = static_cast<std::int32_t>(pitch);
  const std::uint64_t bytes = pitch * made.dwHeight;
  if (bytes > INT32_MAX) return DDERR_OUTOFMEMORY;

  auto* const pixels = static_cast<std::uint8_t*>(AllocateBytes(static_cast<std::size_t>(bytes)));
  if (pixels == nullptr) return DDERR_OUTOFMEMORY;
  SoftwareSurface* const surface = Make<SoftwareSurface>(made, pixels);
  if (surface == nullptr) {
    FreeBytes(pixels);
    return DDERR_OUTOFMEMORY;
  }
  std::memset(pixels, 0, static_cast<std::size_t>(bytes));
  *out = surface;
  return DD_OK;
}

std::uint32_t Release(IDirectDraw7* directDraw) {
  FreeBytes(directDraw);
  return 0;
}

}  // namespace

DirectDrawCalls NativeDirectDrawCalls() noexcept {
  return {CreateEx, SetLevel, Create, Release};
}

}  // namespace zor
