// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The one allocator of pixel blocks.
///
/// A block has zeroed guard space on both sides: kernels are defined to make some accesses outside
/// of a picture (odd widths drift, tails run on, a fourth byte spills), and those stay inside the
/// allocation. What stands in a guard is part of no result.

#include <zorsurface/surface_description.h>

#include <cstdint>

namespace zor {

/// What a new block holds between its guards.
enum class BlockContents {
  kZero,  ///< zeros; for every block that something may leave unpainted
  kUnset  ///< anything; only where a following step writes every byte
};

/// The largest block, guards not counted.
inline constexpr std::int64_t kMaxBlockBytes = 0x7FFFFFFF;

/// @return the guard space in bytes on either side of a picture of this shape.
std::int64_t GuardBytes(std::int64_t width, std::int64_t height) noexcept;

/// @return the bytes that later steps touch in a picture of this description: the larger of stride
///         and row, times the height, one and a half times that for planar pictures, and at least
///         @p reported.
std::int64_t CoveredBytes(const SurfaceDescription& description, std::int64_t reported) noexcept;

/// Allocates a block for a picture, aligned to a cache line of 64 bytes.
/// @param bytes size of the block proper; refused under 1 and above `kMaxBlockBytes`.
/// @return the first byte of the picture, or null.
std::uint8_t* AllocatePixelBlock(std::int64_t bytes, std::int64_t width, std::int64_t height,
                                 BlockContents contents) noexcept;

/// Frees a block of `AllocatePixelBlock`; null is fine.
void FreePixelBlock(std::uint8_t* pixels) noexcept;

/// @return the size of the block proper, for drivers that check what an operand reaches; 0 for a
///         pointer that isn't the start of such a block.
std::int64_t PixelBlockBytes(const std::uint8_t* pixels) noexcept;

}  // namespace zor
