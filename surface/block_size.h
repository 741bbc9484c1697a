// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Byte counts of pictures. Sizes come from hosts, so that a product of two words may pass 64 bits
/// once it is taken times three: counts are held far above every block instead of running over.

#include <algorithm>
#include <cstdint>

namespace zor {

/// No block is this large, and a few more factors still fit 64 bits.
inline constexpr std::int64_t kUncountable = std::int64_t{1} << 56;

/// @return @p a x @p b, held between minus and plus `kUncountable`.
constexpr std::int64_t CountBytes(std::int64_t a, std::int64_t b) noexcept {
  std::int64_t product = 0;
  if (__builtin_mul_overflow(a, b, &product))
    return (a < 0) == (b < 0) ? kUncountable : -kUncountable;
  return std::clamp(product, -kUncountable, kUncountable);
}

/// @return the bytes of the three planes: @p stride x @p height x 3 / 2, rounded down.
constexpr std::int64_t CountPlanarBytes(std::int64_t stride, std::int64_t height) noexcept {
  return CountBytes(stride, height) * 3 >> 1;
}

/// @return the bytes of a row of whole 32-bit words: (@p bits x @p width + 31) / 32 x 4.
constexpr std::int64_t WordAlignedStride(std::int64_t bits, std::int64_t width) noexcept {
  return (bits * width + 31) / 32 * 4;
}

/// @return whether a count is a signed 32-bit word.
constexpr bool FitsWord(std::int64_t count) noexcept {
  return count >= INT32_MIN && count <= INT32_MAX;
}

/// @return the low 32 bits of a count, as a word of a description holds them.
constexpr std::int32_t CutToWord(std::int64_t count) noexcept {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(count));
}

}  // namespace zor
