// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <algorithm>

#include "object/new_surface.h"
#include "object/system_sources.h"
#include "platform/kelp_tool.h"
#include "surface/row_copy.h"

namespace zor {
namespace {

/// @return whether the format is served; @p local then describes the surface for @p info.
bool Describe(const KelpInfo& info, std::int32_t format, SurfaceDescription& local) {
  local.width = info.width;
  local.height = info.height;
  if (format == FORMAT_YUV420) {
    // The three planes travel as a picture of half the height.
    local.height = CutToWord(2 * std::int64_t{info.height});
    local.format = FORMAT_YUV420;
    local.bitsPerPixel = 12;
    local.stride = info.width;
    local.Orientation = 1;
  } else if (SetRgbFormat(format, info.bitCount, local)) {
    local.stride = info.stride;
    local.Orientation = 0;
  } else {
    return false;
  }
  local.DirtyRect = {0, 0, local.width, local.height};
  if (format != FORMAT_YUV420 && info.width % 4 != 0) {
    local.width = CutToWord((std::int64_t{info.width} + 3) & ~std::int64_t{3});
    local.stride = CutToWord(CountBytes(info.bitCount / 8, local.width));
  }
  return true;
}

/// Copies the locked pixels. @return whether there was memory for the block.
bool CopyPixels(NewSurface& surface, const SurfaceDescription& local, const KelpInfo& info,
                const std::uint8_t* source) {
  if (local.format == FORMAT_YUV420) {
    const std::int64_t bytes = CountPlanarBytes(local.stride, 2 * std::int64_t{info.height});
    std::uint8_t* pixels = surface.AllocatePixels(bytes);
    if (pixels == nullptr) return false;
    CopyRows(pixels, bytes, source, bytes, bytes, 1);
    return true;
  }
  std::uint8_t* pixels = surface.AllocatePixels(CountBytes(local.stride, local.height));
  if (pixels == nullptr) return false;
  // The rows are turned over; what rounding up has added stays 0.
  const std::int64_t step = info.stride;
  CopyRows(pixels, local.stride, source + (local.height - 1) * step, -step,
           std::min(local.stride, info.stride), local.height);
  return true;
}

}  // namespace

std::int32_t CreateFromKelp(void* handle, std::int32_t format, std::uint32_t flags,
                            IZorSurface** out) {
  KelpInfo info = {};
  if (KelpGetInfo(handle, &info) != 0) return E_FAIL;
  if (info.width < kMinSurfaceSize || info.height < kMinSurfaceSize) return VED_E_INVALIDARG;
  SurfaceDescription local = SourceDescription();
  if (!Describe(info, format, local)) return VED_E_UNSUPPORTED;
  if ((flags & STORAGE_COPY) == 0) return VED_E_INVALIDARG;

  NewSurface surface(local);
  if (!surface) return VED_E_OUTOFMEMORY;
  void* pixels = nullptr;
  if (KelpLockData(handle, &pixels) != 0) return E_FAIL;
  if (pixels == nullptr) {
    KelpUnlockData(handle);
    return E_FAIL;
  }
  // Without memory the image stays locked.
  if (!CopyPixels(surface, local, info, static_cast<const std::uint8_t*>(pixels))) {
    return VED_E_OUTOFMEMORY;
  }
  KelpUnlockData(handle);
  return surface.HandOver(flags, out);
}

}  // namespace zor
