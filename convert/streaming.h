// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// When a kernel writes past the caches.

#include <cstdint>

namespace zor {

/// Output of more bytes than this doesn't come back out of the caches before it is needed, so that
/// wide forms write it with non-temporal stores. A 1080p picture at 4 bytes a pixel stays below:
/// the step after the conversion reads it.
inline constexpr std::int64_t kStreamingBytes = std::int64_t{8} << 20;

/// @return whether address and stride keep every row of @p operand aligned to whole cache lines, as
///         non-temporal stores want.
inline bool RowsAreLines(const std::uint8_t* operand, std::int64_t stride) noexcept {
  return ((reinterpret_cast<std::uintptr_t>(operand) | static_cast<std::uintptr_t>(stride)) & 63) ==
         0;
}

/// The same for a target of three planes, of an even width or it drifts off its lines.
/// @return whether the planes are written past the caches
inline bool PlanesArePastCaches(const std::uint8_t* luma, const std::uint8_t* u,
                                const std::uint8_t* v, std::int32_t lumaStride,
                                std::int32_t chromaStride, std::int32_t width,
                                std::int32_t height) noexcept {
  const std::int64_t rows = height < 0 ? -std::int64_t{height} : height;
  return rows * width * 3 / 2 > kStreamingBytes && (width & 1) == 0 &&
         RowsAreLines(luma, lumaStride) && RowsAreLines(u, chromaStride) &&
         RowsAreLines(v, chromaStride);
}

/// The same for a packed target with rows of @p rowBytes.
inline bool RowsArePastCaches(const std::uint8_t* target, std::int32_t stride,
                              std::int64_t rowBytes, std::int32_t height) noexcept {
  return rowBytes * (height < 0 ? -std::int64_t{height} : height) > kStreamingBytes &&
         RowsAreLines(target, stride);
}

}  // namespace zor
