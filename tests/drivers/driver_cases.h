// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Surfaces with known pixels for tests of the drivers.

#include <zorsurface/zorsurface.h>

#include <cstring>
#include <ostream>

#include "platform/pixel_block.h"
#include "support/guarded_memory.h"
#include "support/surfaces.h"
#include "support/with_features.h"
#include "surface/surface_buffer.h"

inline bool operator==(const RECT& a, const RECT& b) {
  return std::memcmp(&a, &b, sizeof a) == 0;
}
inline std::ostream& operator<<(std::ostream& out, const RECT& r) {
  return out << r.left << "," << r.top << "," << r.right << "," << r.bottom;
}

namespace zor::test {

/// Every format that a surface can have.
inline constexpr std::int32_t kFormats[] = {FORMAT_RGB24, FORMAT_RGB32, FORMAT_GRAY8, FORMAT_YUV420,
                                            FORMAT_YUY2};

/// A surface whose `DirtyRect` is small, so that a change shows.
inline HeldSurface MakeTarget(std::int32_t width, std::int32_t height, std::int32_t format,
                              std::uint32_t orientation = 1, std::uint8_t value = 0x55) {
  SurfaceDescription d = DescribeOriented(width, height, format, orientation);
  d.DirtyRect = {2, 2, 4, 4};
  return MakeEven(d, value);
}

/// @return a surface of which the builder would make none: without pixels, or with
///         @p bytes of them.
inline HeldSurface MakeRaw(const SurfaceDescription& d, std::int32_t bytes) {
  CZorSurfaceBuffer* surface = CZorSurfaceBuffer::Create(d);
  surface->AddRef();
  surface->SetStorageFlags(1);
  if (bytes > 0) surface->AllocatePixels(bytes);
  return HeldSurface(surface);
}

/// @return the bytes of a surface's picture, planes included.
inline Bytes PictureOf(const HeldSurface& surface) {
  return BlockOf(surface.get(), PictureBytes(DescriptionOf(surface.get())));
}

/// @return all bytes of a surface's block.
inline Bytes WholeBlock(const HeldSurface& surface) {
  std::uint8_t* pixels = PixelsOf(surface);
  return {pixels, pixels + PixelBlockBytes(pixels)};
}

inline bool HasAspect(const HeldSurface& surface) {
  std::int32_t width = 0, height = 0;
  surface->GetAspectRatio(&width, &height);
  return width != 0 || height != 0;
}

inline RECT DirtyRectOf(const HeldSurface& surface) {
  return DescriptionOf(surface.get()).DirtyRect;
}

}  // namespace zor::test
