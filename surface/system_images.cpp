// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "surface/system_images.h"

#include <algorithm>
#include <cstring>

#include "surface/block_size.h"

namespace zor {
namespace {

/// The header of the exported bitmap, the platform's `BITMAPINFOHEADER`.
struct BitmapHeader {
  std::uint32_t size = kDibHeaderBytes;
  std::int32_t width = 0;
  std::int32_t height = 0;
  std::uint16_t planes = 1;
  std::uint16_t bitCount = 0;
  std::uint32_t compression = 0;
  std::uint32_t imageBytes = 0;
  std::uint32_t unused[4] = {};
};
static_assert(sizeof(BitmapHeader) == kDibHeaderBytes, "ten words");

/// What a bitmap's header says of the size of its pixels.
std::int64_t CountDibBytes(std::int32_t width, std::int32_t height, std::int32_t bits) {
  if (bits == 12) return CountBytes(width, height) * 3 / 2;
  return CountBytes(WordAlignedStride(bits, width), height);
}

/// The pixel format of a kind that has one.
DDPIXELFORMAT PixelFormat(DrawSurface kind, std::int32_t bits) {
  DDPIXELFORMAT format = {};
  format.dwSize = 32;
  format.dwFlags = DDPF_RGB;
  if (kind == DrawSurface::kRgb || kind == DrawSurface::kPlanarAs24) {
    format.dwRGBBitCount = kind == DrawSurface::kRgb ? static_cast<std::uint32_t>(bits) : 24;
    format.dwRBitMask = 0xFF0000;
    format.dwGBitMask = 0xFF00;
    format.dwBBitMask = 0xFF;
  } else {
    format.dwRGBBitCount = 32;
  }
  return format;
}

}  // namespace

GlobalHandle CreateGlobalDib(std::int32_t width, std::int32_t height, std::int32_t bits,
                             std::int64_t needed) noexcept {
  BitmapHeader header;
  header.width = width;
  header.height = height;
  header.bitCount = static_cast<std::uint16_t>(bits);
  const std::int64_t imageBytes = CountDibBytes(width, height, bits);
  header.imageBytes = static_cast<std::uint32_t>(imageBytes);
  const std::int64_t bytes = std::max(imageBytes, needed) + kDibHeaderBytes;
  if (imageBytes < 0 || !FitsWord(bytes)) return nullptr;

  GlobalHandle handle = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, static_cast<std::size_t>(bytes));
  if (handle == nullptr) return nullptr;
  void* const start = GlobalLock(handle);
  if (start == nullptr) {
    GlobalFree(handle);
    return nullptr;
  }
  std::memcpy(start, &header, sizeof header);
  GlobalUnlock(handle);
  return handle;
}

std::int32_t CreateDirectDrawSurface(IDirectDrawSurface7** out, std::int32_t width,
                                     std::int32_t height, std::int32_t bits, DrawSurface kind,
                                     bool systemMemory) noexcept {
  IDirectDraw7* directDraw = nullptr;
  std::int32_t result = DirectDrawCreateEx(&directDraw);
  if (result != 0) return result;
  SetCooperativeLevel(directDraw, DDSCL_NORMAL);

  DDSURFACEDESC2 desc = EmptySurfaceDesc();
  desc.dwFlags = DDSD_CAPS | DDSD_HEIGHT | DDSD_WIDTH;
  desc.dwWidth = static_cast<std::uint32_t>(width);
  desc.ddsCaps.dwCaps = DDSCAPS_OFFSCREENPLAIN | (systemMemory ? DDSCAPS_SYSTEMMEMORY : 0);
  if (kind != DrawSurface::kPlain) {
    desc.dwFlags |= DDSD_PIXELFORMAT;
    desc.dwHeight = static_cast<std::uint32_t>(kind == DrawSurface::kRgb ? height : height / 2);
    desc.ddpfPixelFormat = PixelFormat(kind, bits);
  }
  result = CreateSurface(directDraw, &desc, out);
  ReleaseDirectDraw(directDraw);
  return result;
}

}  // namespace zor
