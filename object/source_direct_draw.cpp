// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <algorithm>

#include "object/new_surface.h"
#include "object/system_sources.h"
#include "platform/direct_draw.h"
#include "surface/row_copy.h"

namespace zor {
namespace {

/// @return whether the format is served; @p local then describes the surface for @p desc.
bool Describe(const DDSURFACEDESC2& desc, std::int32_t format, SurfaceDescription& local) {
  local.width = static_cast<std::int32_t>(desc.dwWidth);
  local.height = static_cast<std::int32_t>(desc.dwHeight);
  if (format == FORMAT_YUV420) {
    // The three planes travel as a picture of half the height.
    local.height = CutToWord(2 * std::int64_t{desc.dwHeight});
    local.format = FORMAT_YUV420;
    local.bitsPerPixel = 12;
    local.stride = local.width;
  } else if (SetRgbFormat(format, CutToWord(desc.ddpfPixelFormat.dwRGBBitCount), local)) {
    local.stride = desc.lPitch;
  } else {
    return false;
  }
  local.Orientation = 1;
  local.DirtyRect = {0, 0, local.width, local.height};
  return true;
}

/// Copies the locked pixels. @return whether there was memory for the block.
bool CopyPixels(NewSurface& surface, const SurfaceDescription& local, const DDSURFACEDESC2& desc) {
  const auto* source = static_cast<const std::uint8_t*>(desc.lpSurface);
  if (local.format == FORMAT_YUV420) {
    const std::int64_t bytes = CountPlanarBytes(desc.dwWidth, 2 * std::int64_t{desc.dwHeight});
    std::uint8_t* pixels = surface.AllocatePixels(bytes);
    if (pixels == nullptr) return false;
    // A surface with less memory than planes leaves the rest 0.
    const std::int64_t held = std::min(bytes, CountBytes(desc.lPitch, desc.dwHeight));
    CopyRows(pixels, held, source, held, held, 1);
    return true;
  }
  std::uint8_t* pixels = surface.AllocatePixels(CountBytes(local.stride, local.height));
  if (pixels == nullptr) return false;
  CopyRows(pixels, local.stride, source, desc.lPitch,
           std::min<std::int64_t>(local.stride, desc.lPitch), local.height);
  return true;
}

}  // namespace

std::int32_t CreateFromDirectDraw(void* handle, std::int32_t format, std::uint32_t flags,
                                  IZorSurface** out) {
  auto* const image = static_cast<IDirectDrawSurface7*>(handle);
  DDSURFACEDESC2 desc = EmptySurfaceDesc();
  std::int32_t result = GetSurfaceDesc(image, &desc);
  if (result != 0) return result;
  if (desc.dwWidth < kMinSurfaceSize || desc.dwHeight < kMinSurfaceSize) return VED_E_INVALIDARG;
  SurfaceDescription local = SourceDescription();
  if (!Describe(desc, format, local)) return VED_E_UNSUPPORTED;
  if ((flags & STORAGE_COPY) == 0) return VED_E_INVALIDARG;

  NewSurface surface(local);
  if (!surface) return VED_E_OUTOFMEMORY;
  result = LockSurface(image, &desc);
  if (result < 0) return result;
  // The system may answer a lock with success and yet have no memory behind the surface.
  const bool copied = desc.lpSurface != nullptr && CopyPixels(surface, local, desc);
  UnlockSurface(image);
  return copied ? surface.HandOver(flags, out) : VED_E_OUTOFMEMORY;
}

}  // namespace zor
