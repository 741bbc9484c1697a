// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The arithmetic from B, G, R to Y, U, V in plain integers: video-range BT.601 with 8 fractional
/// bits. Nothing is rounded and nothing clamped: >> is a floor, and the ranges below keep every
/// result in its byte.

#include <cstdint>

namespace zor {

/// Weights of the three rows in pixel byte order: B, G, R.
struct ForwardMatrix {
  static constexpr std::int32_t kLuma[3] = {25, 129, 66};  ///< sum 220
  static constexpr std::int32_t kU[3] = {112, -74, -38};   ///< sum 0
  static constexpr std::int32_t kV[3] = {-18, -94, 112};   ///< sum 0
};

/// Samples added up over a group of pixels: 0 to 255 x the number of pixels each.
struct RgbSum {
  std::int32_t b = 0;
  std::int32_t g = 0;
  std::int32_t r = 0;

  constexpr void Add(const std::uint8_t* pixel) noexcept {
    b += pixel[0];
    g += pixel[1];
    r += pixel[2];
  }
};

/// @return the sum of one row of the matrix.
constexpr std::int32_t MatrixRow(const std::int32_t (&row)[3], const RgbSum& sum) noexcept {
  return row[0] * sum.b + row[1] * sum.g + row[2] * sum.r;
}

/// @return luma of a pixel, 16 to 235.
constexpr std::uint8_t LumaOfRgb(const std::uint8_t* pixel) noexcept {
  RgbSum sum;
  sum.Add(pixel);
  return static_cast<std::uint8_t>((MatrixRow(ForwardMatrix::kLuma, sum) >> 8) + 16);
}

/// Shifts of the chroma rows: 8 for the matrix, and the average over the group.
inline constexpr int kChromaShiftOfOne = 8;
inline constexpr int kChromaShiftOfTwo = 9;
inline constexpr int kChromaShiftOfFour = 10;

/// @return U of a group, 16 to 239.
template <int kShift>
constexpr std::uint8_t UOfRgb(const RgbSum& sum) noexcept {
  return static_cast<std::uint8_t>((MatrixRow(ForwardMatrix::kU, sum) >> kShift) + 128);
}

/// @return V of a group, 16 to 239.
template <int kShift>
constexpr std::uint8_t VOfRgb(const RgbSum& sum) noexcept {
  return static_cast<std::uint8_t>((MatrixRow(ForwardMatrix::kV, sum) >> kShift) + 128);
}

}  // namespace zor
