// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <zorsurface/result_codes.h>

#include "surface/block_size.h"
#include "surface/surface_buffer.h"
#include "surface/system_images.h"

namespace zor {
namespace {

constexpr std::uint32_t kExportDirectDraw = 1;
constexpr std::uint32_t kExportGlobalDib = 2;

/// How the rows of a format stand in a bitmap; a stride of 0 for one that has none there.
struct DibRows {
  std::int64_t stride;
  std::uint32_t orientation;
};
DibRows RowsInDib(const SurfaceDescription& picture) {
  switch (picture.format) {
    case FORMAT_RGB24:
    case FORMAT_RGB32:
      return {(std::int64_t{picture.bitsPerPixel} * picture.width + 31) >> 5 << 2, 0};
    case FORMAT_YUV420:
      return {picture.width, 1};
    case FORMAT_YUY2:
      return {2 * std::int64_t{picture.width}, 0};
    default:
      return {0, 0};
  }
}

DrawSurface DrawSurfaceFor(std::int32_t format) {
  switch (format) {
    case FORMAT_RGB24:
    case FORMAT_RGB32:
      return DrawSurface::kRgb;
    case FORMAT_YUV420:
      return DrawSurface::kPlanarAs24;
    default:
      return DrawSurface::kPlain;
  }
}

}  // namespace

std::int32_t CZorSurfaceBuffer::ExportImage(std::uint32_t kind, void** image, std::uint32_t* flag) {
  const bool known = kind == kExportDirectDraw || kind == kExportGlobalDib;
  if (known && (image == nullptr || flag == nullptr)) return VED_E_INVALIDARG;
  std::int32_t result = FlushQueue(0);
  if (result < 0) return result;
  if (!known) return VED_E_UNSUPPORTED;
  void* made = nullptr;
  result = kind == kExportGlobalDib ? ExportGlobalDib(&made) : ExportDirectDraw(&made);
  if (result < 0) return result;
  *image = made;
  *flag = 1;
  return result;
}

std::int32_t CZorSurfaceBuffer::ExportGlobalDib(void** image) {
  const DibRows rows = RowsInDib(description_);
  const std::int64_t needed = description_.format == FORMAT_YUV420
                                  ? CountPlanarBytes(rows.stride, description_.height)
                                  : CountBytes(rows.stride, description_.height);
  GlobalHandle handle =
      CreateGlobalDib(description_.width, description_.height, description_.bitsPerPixel, needed);
  if (handle == nullptr) return E_FAIL;
  // Packed rows leave in the order that they stand in, and the surface says so from now on.
  if (description_.format == FORMAT_YUY2) description_.Orientation = 0;
  auto* const start = static_cast<std::uint8_t*>(GlobalLock(handle));
  if (start == nullptr) return E_FAIL;
  CopyRowsOut(start + kDibHeaderBytes, CutToWord(rows.stride), rows.orientation);
  GlobalUnlock(handle);
  *image = handle;
  return VED_OK;
}

std::int32_t CZorSurfaceBuffer::ExportDirectDraw(void** image) {
  const DrawSurface kind = DrawSurfaceFor(description_.format);
  IDirectDrawSurface7* surface = nullptr;
  if (CreateDirectDrawSurface(&surface, description_.width, description_.height,
                              description_.bitsPerPixel, kind, true) != 0) {
    return E_FAIL;
  }
  DDSURFACEDESC2 desc = EmptySurfaceDesc();
  LockSurface(surface, &desc);
  if (desc.lpSurface != nullptr) {
    // At an odd height the planes need more room than the halved rows have: what doesn't fit into
    // the DirectDraw surface is left out.
    CopyRowsOut(static_cast<std::uint8_t*>(desc.lpSurface),
                kind == DrawSurface::kPlanarAs24 ? description_.width : desc.lPitch, 1,
                CountBytes(desc.lPitch, desc.dwHeight));
  }
  UnlockSurface(surface);
  *image = surface;
  return VED_OK;
}

}  // namespace zor
