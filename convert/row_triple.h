// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The vertical three-tap filter of the conversions between YUV 4:2:0 and YUY2, and which rows it
/// takes. The centre row weighs one half, its neighbours a quarter each, with two roundings.

#include <cstddef>
#include <cstdint>

#include "platform/compiler.h"

namespace zor {

/// Averages of plain and SSE2 forms and of all tails round up. (Blocks of MMX forms truncate, see
/// convert/row_filter_mmx.h.)
struct RoundingFilter {
  static constexpr std::uint8_t Average(std::uint8_t a, std::uint8_t b) noexcept {
    return static_cast<std::uint8_t>((a + b + 1) >> 1);
  }
  static constexpr std::uint8_t Smooth(std::uint8_t above, std::uint8_t centre,
                                       std::uint8_t below) noexcept {
    return Average(Average(above, below), centre);
  }
};

/// The three rows of which one row is made.
///
/// Edges are told by repeating rows, so that rounding averages need no case of their own:
/// above == centre == below leaves the centre as it is, and above == below averages it with them.
struct RowTriple {
  const std::uint8_t* above;
  const std::uint8_t* centre;
  const std::uint8_t* below;

  ZOR_ALWAYS_INLINE std::uint8_t Smooth(std::ptrdiff_t i) const noexcept {
    return RoundingFilter::Smooth(above[i], centre[i], below[i]);
  }
};

/// The two rows of luma, or of packed samples, of a pair: smoothed, but for the picture's first and
/// last row, which stay as they are.
/// @param upper the pair's first row
ZOR_ALWAYS_INLINE void PlanPair(RowTriple (&rows)[2], const std::uint8_t* upper,
                                std::ptrdiff_t stride, bool first, bool last) noexcept {
  const std::uint8_t* lower = upper + stride;
  rows[0] = first ? RowTriple{upper, upper, upper} : RowTriple{upper - stride, upper, lower};
  rows[1] = last ? RowTriple{lower, lower, lower} : RowTriple{upper, lower, lower + stride};
}

/// The chroma row of a pair: smoothed, in the first and last pair averaged with its one neighbour,
/// and as it is where there is no other row.
ZOR_ALWAYS_INLINE RowTriple PlanChroma(const std::uint8_t* centre, std::ptrdiff_t stride,
                                       bool first, bool last) noexcept {
  const std::uint8_t* above = first ? (last ? centre : centre + stride) : centre - stride;
  return {above, centre, last ? above : centre + stride};
}

}  // namespace zor
