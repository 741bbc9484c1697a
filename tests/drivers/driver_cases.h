// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Surfaces with known pixels for tests of the drivers.

#include <zorsurface/zorsurface.h>

#include <cstring>
#include <memory>
#include <ostream>
#include <vector>

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

using Bytes = std::vector<std::uint8_t>;

inline SurfaceDescription DescribeOriented(std::int32_t width, std::int32_t height,
                                           std::int32_t format, std::uint32_t orientation) {
  SurfaceDescription d = Describe(width, height, format);
  d.Orientation = orientation;
  return d;
}

/// @return the address of the surface's pixels.
inline std::uint8_t* PixelsOf(const HeldSurface& surface) {
  std::uint8_t* pixels = nullptr;
  surface->GetPixels(&pixels);
  return pixels;
}

/// @return a surface of any size and format, with all bytes of its picture set to @p value.
inline HeldSurface MakeEven(const SurfaceDescription& d, std::uint8_t value) {
  HeldSurface surface = MakeBlank(d);
  std::memset(PixelsOf(surface), value, PictureBytes(d));
  return surface;
}

/// @return a surface of any size and format, with noise for pixels.
inline HeldSurface MakeNoisy(const SurfaceDescription& d, std::uint64_t seed) {
  HeldSurface surface = MakeBlank(d);
  Noise(seed).Fill(PixelsOf(surface), PictureBytes(d));
  return surface;
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

inline RECT DirtyRectOf(const HeldSurface& surface) {
  return DescriptionOf(surface.get()).DirtyRect;
}

}  // namespace zor::test
