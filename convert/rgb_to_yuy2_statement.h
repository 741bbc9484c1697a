// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// What the forms of RGB to YUY2 do with a pair of columns, in plain integers.

#include <cstdint>

#include "convert/forward_matrix.h"

namespace zor {

/// The plain form: chroma of both pixels.
///
///     Y0, Y1 = luma of each pixel
///     U, V   = rows of the matrix over the sums of both, >> 9, + 128
constexpr void RgbToYuy2Pair(std::uint8_t* target, const std::uint8_t* pixel0,
                             const std::uint8_t* pixel1) noexcept {
  RgbSum sum;
  sum.Add(pixel0);
  sum.Add(pixel1);
  target[0] = LumaOfRgb(pixel0);
  target[1] = UOfRgb<kChromaShiftOfTwo>(sum);
  target[2] = LumaOfRgb(pixel1);
  target[3] = VOfRgb<kChromaShiftOfTwo>(sum);
}

/// A block of the SSE2 form: chroma of the second pixel alone.
///
///     U, V = rows of the matrix over the second pixel, >> 8, + 128
constexpr void RgbToYuy2PairOfBlock(std::uint8_t* target, const std::uint8_t* pixel0,
                                    const std::uint8_t* pixel1) noexcept {
  RgbSum second;
  second.Add(pixel1);
  target[0] = LumaOfRgb(pixel0);
  target[1] = UOfRgb<kChromaShiftOfOne>(second);
  target[2] = LumaOfRgb(pixel1);
  target[3] = VOfRgb<kChromaShiftOfOne>(second);
}

/// The tail of the SSE2 form: the four bytes take the place of pixel 0 in the source, and the
/// target keeps what it has. Pixels are 4 bytes apart in both pixel sizes. Chroma is a quarter of
/// the excursion of the averages:
///
///     aB = (B0 + B1) >> 1, aG and aR alike
///     U, V = rows of the matrix over the averages, >> 10, + 128
constexpr void RgbToYuy2PairOfTail(std::uint8_t* source) noexcept {
  const std::uint8_t* pixel1 = source + 4;
  RgbSum average;
  average.Add(source);
  average.Add(pixel1);
  average = {average.b >> 1, average.g >> 1, average.r >> 1};
  const std::uint8_t pair[4] = {LumaOfRgb(source), UOfRgb<kChromaShiftOfFour>(average),
                                LumaOfRgb(pixel1), VOfRgb<kChromaShiftOfFour>(average)};
  for (int i = 0; i < 4; ++i) source[i] = pair[i];
}

}  // namespace zor
