// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// What the drivers ask of a picture: its kind, and its sizes in 64 bits.

#include <zorsurface/surface_description.h>

#include <algorithm>
#include <cstdint>

#include "platform/pixel_block.h"
#include "surface/block_size.h"

namespace zor {

/// @return whether a format has pixels of B, G, R.
constexpr bool IsRgb(std::int32_t format) {
  return format == FORMAT_RGB24 || format == FORMAT_RGB32;
}

/// @return whether a format has single rows of 1, 3 or 4 bytes a pixel.
constexpr bool IsRgbOrGray(std::int32_t format) {
  return IsRgb(format) || format == FORMAT_GRAY8;
}

/// @return the bytes of a picture's rows: one and a half times as many for planes.
constexpr std::int64_t PictureBytes(std::int64_t stride, std::int64_t height, bool planar) {
  return planar ? CountPlanarBytes(stride, height) : CountBytes(stride, height);
}

/// @return the bytes from a planar picture's first on that drawing reaches: every row is as wide as
///         the picture, whatever the stride. Fills round the start of a chroma row at an odd stride
///         less far down than scalers do.
constexpr std::int64_t PlanarReach(std::int64_t stride, std::int64_t width, std::int64_t height) {
  if (height < 1) return 0;
  const std::int64_t plane = CountBytes(stride, height);
  const std::int64_t chromaRows = std::max<std::int64_t>(0, height / 2 - 1);
  return std::max((height - 1) * stride + width,
                  plane + plane / 4 + chromaRows * stride / 2 + width / 2);
}

/// Allocates the block that an operation's result goes into.
/// @param result describes the picture that comes about. @param bytes by the format's rule.
/// @return null without memory or for a size that can't be.
inline std::uint8_t* AllocateResult(const SurfaceDescription& result, std::int64_t bytes,
                                    BlockContents contents) noexcept {
  if (bytes < 1 || bytes > kMaxBlockBytes) return nullptr;
  return AllocatePixelBlock(CoveredBytes(result, bytes), result.width, result.height, contents);
}

/// @return whether all rows of a surface lie in its block. A description may say otherwise where a
///         host made it up.
inline bool PictureInBlock(const SurfaceDescription& d, const std::uint8_t* pixels) noexcept {
  return d.stride > 0 && d.width > 0 && d.height > 0 &&
         CoveredBytes(d, 1) <= PixelBlockBytes(pixels);
}

}  // namespace zor
