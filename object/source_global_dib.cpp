// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <cstring>

#include "object/new_surface.h"
#include "object/system_sources.h"
#include "platform/global_memory.h"
#include "surface/row_copy.h"

namespace zor {
namespace {

constexpr std::int64_t kHeaderBytes = 40;

/// What of the bitmap's header counts. Its size word, palette and compression don't.
struct DibHeader {
  std::int32_t width = 0;
  std::int32_t height = 0;
  std::uint16_t bitCount = 0;
};

DibHeader ReadHeader(GlobalHandle handle) {
  DibHeader header;
  if (GlobalSize(handle) < static_cast<std::size_t>(kHeaderBytes)) return header;
  if (const auto* bytes = static_cast<const std::uint8_t*>(GlobalLock(handle))) {
    std::memcpy(&header.width, bytes + 4, sizeof header.width);
    std::memcpy(&header.height, bytes + 8, sizeof header.height);
    std::memcpy(&header.bitCount, bytes + 14, sizeof header.bitCount);
  }
  GlobalUnlock(handle);
  return header;
}

/// The picture behind a header.
struct DibPicture {
  std::int64_t sourceStride = 0;
  std::int64_t sourceBytes = 0;   ///< what the header asks for
  std::int64_t surfaceBytes = 0;  ///< the size of the new block
};

/// @return whether the format is served; @p local and @p picture then describe the surface.
bool Describe(const DibHeader& header, std::int32_t format, SurfaceDescription& local,
              DibPicture& picture) {
  local.width = header.width;
  local.height = header.height;
  local.DirtyRect = {0, 0, header.width, header.height};
  local.bitsPerPixel = header.bitCount;
  switch (format) {
    case FORMAT_RGB24:
    case FORMAT_RGB32: {
      if (!SetRgbFormat(format, header.bitCount, local)) return false;
      std::int64_t stride = WordAlignedStride(header.bitCount, header.width);
      picture.sourceStride = stride;
      picture.sourceBytes = CountBytes(stride, header.height);
      if (header.width % 4 != 0) {
        local.width = header.width & ~3;
        stride = CountBytes(header.bitCount >> 3, local.width);
      }
      local.height = header.height & ~1;
      local.stride = CutToWord(stride);
      local.Orientation = 0;
      picture.surfaceBytes = CountBytes(stride, local.height);
      return true;
    }
    case FORMAT_YUV420:
      local.format = FORMAT_YUV420;
      local.stride = header.width;
      local.Orientation = 1;
      picture.surfaceBytes = CountPlanarBytes(header.width, header.height);
      break;
    case FORMAT_YUY2:
      local.format = FORMAT_YUY2;
      local.stride = CutToWord(2 * std::int64_t{header.width});
      local.Orientation = 0;
      picture.surfaceBytes = CountBytes(2 * std::int64_t{header.width}, header.height);
      break;
    default:
      return false;
  }
  picture.sourceBytes = picture.surfaceBytes;
  return true;
}

/// Copies the rows in the bitmap's order; a last row of an odd height falls away.
void CopyPixels(std::uint8_t* pixels, const SurfaceDescription& local, const DibPicture& picture,
                const std::uint8_t* source) {
  if (picture.sourceStride != 0) {
    CopyRows(pixels, local.stride, source, picture.sourceStride, local.stride, local.height);
  } else {
    CopyRows(pixels, picture.surfaceBytes, source, picture.surfaceBytes, picture.surfaceBytes, 1);
  }
}

}  // namespace

std::int32_t CreateFromGlobalDib(void* handle, std::int32_t format, std::uint32_t flags,
                                 IZorSurface** out) {
  const DibHeader header = ReadHeader(handle);
  if (header.width < kMinSurfaceSize || header.height < kMinSurfaceSize) return VED_E_INVALIDARG;
  SurfaceDescription local = SourceDescription();
  DibPicture picture;
  if (!Describe(header, format, local, picture)) return VED_E_UNSUPPORTED;
  if ((flags & STORAGE_COPY) == 0) return VED_E_INVALIDARG;
  const auto held = static_cast<std::uint64_t>(GlobalSize(handle));
  if (static_cast<std::uint64_t>(kHeaderBytes + picture.sourceBytes) > held) {
    return VED_E_INVALIDARG;
  }

  NewSurface surface(local);
  if (!surface) return VED_E_OUTOFMEMORY;
  const auto* source = static_cast<const std::uint8_t*>(GlobalLock(handle));
  std::uint8_t* pixels = surface.AllocatePixels(picture.surfaceBytes);
  const bool copied = source != nullptr && pixels != nullptr;
  if (copied) CopyPixels(pixels, local, picture, source + kHeaderBytes);
  GlobalUnlock(handle);
  return copied ? surface.HandOver(flags, out) : VED_E_OUTOFMEMORY;
}

}  // namespace zor
