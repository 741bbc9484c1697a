// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The row kernels of the warp, for 8-bit samples in pixel order.

#include <cstdint>

namespace zor {

/// One warp: the rows to fill, their spans and the matrix from destination to source.
struct WarpRows {
  const std::uint8_t* source;  ///< row 0, column 0
  std::uint8_t* target;        ///< the row `firstRow`, column 0
  std::int32_t sourceStep;
  std::int32_t targetStep;
  std::int32_t sourceChannels;
  std::int32_t targetChannels;
  std::int32_t channels;  ///< channels to process
  std::int32_t firstRow;
  std::int32_t lastRow;
  const std::int32_t* spanStarts;
  const std::int32_t* spanEnds;
  double a[6];
  std::int32_t lastColumn;     ///< of the source
  std::int32_t lastSourceRow;  ///< of the source
};

/// Nearest neighbour in 16.16 fixed point with 16-bit source coordinates and row steps.
void WarpNearest8(const WarpRows& rows) noexcept;
/// Bilinear with fractions of 14 bits, held to the source.
void WarpLinear8(const WarpRows& rows) noexcept;
/// Third-order Lagrange interpolation over 4 x 4 pixels with weights of 14 bits.
void WarpCubic8(const WarpRows& rows) noexcept;

/// A picture's lattice moved by whole steps: destination pixel (column, row) takes the source pixel
/// at byte origin + column x columnStep + row x rowStep.
struct LatticeMove {
  const std::uint8_t* source;
  std::int64_t origin;  ///< of destination column 0, row 0; may lie outside of the source
  std::int64_t columnStep;
  std::int64_t rowStep;
  std::uint8_t* target;  ///< destination column 0, row 0
  std::int32_t targetStep;
  std::int32_t pixelBytes;  ///< 1, 3 or 4
};

/// Copies columns @p x0 to @p x1 of rows @p y0 to @p y1, inclusive: whole rows, or bands of turned
/// ones.
void MoveLattice(const LatticeMove& move, std::int32_t x0, std::int32_t y0, std::int32_t x1,
                 std::int32_t y1) noexcept;

}  // namespace zor
