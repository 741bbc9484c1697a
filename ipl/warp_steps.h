// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Source positions of a warp in 16.16 words that wrap.

#include <cmath>
#include <cstdint>

#include "ipl/warp_rows.h"

namespace zor {

/// Rounded to nearest, ties to even; a value beyond 32 bits keeps its low 32.
inline std::int32_t FixedWord(double value) noexcept {
  const double rounded = std::rint(value);
  if (!(std::fabs(rounded) < 9.2e18)) return 0;
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(static_cast<std::int64_t>(rounded)));
}

/// The low 32 bits.
inline std::int32_t WrapWord(std::int64_t value) noexcept {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
}

/// The fixed-point form of a warp, at one row.
struct WarpSteps {
  static constexpr double kOne = 65536.0;

  std::int32_t sx, sy;  ///< per column
  std::int32_t rx, ry;  ///< per row
  std::int32_t bx, by;  ///< of column 0

  /// @param added to both coordinates; a half, 32768, makes rounding of truncation.
  WarpSteps(const WarpRows& w, std::int32_t added) noexcept
      : sx(FixedWord(w.a[0] * kOne)),
        sy(FixedWord(w.a[3] * kOne)),
        rx(FixedWord(w.a[1] * kOne)),
        ry(FixedWord(w.a[4] * kOne)),
        bx(WrapWord(std::int64_t{FixedWord((w.firstRow * w.a[1] + w.a[2]) * kOne)} + added)),
        by(WrapWord(std::int64_t{FixedWord((w.firstRow * w.a[4] + w.a[5]) * kOne)} + added)) {}

  std::int32_t XAt(std::int64_t column) const noexcept { return WrapWord(bx + sx * column); }
  std::int32_t YAt(std::int64_t column) const noexcept { return WrapWord(by + sy * column); }

  void Advance(std::int32_t rows) noexcept {
    bx = WrapWord(bx + std::int64_t{rx} * rows);
    by = WrapWord(by + std::int64_t{ry} * rows);
  }
  /// @return whether columns and rows step by whole pixels.
  bool Whole() const noexcept { return ((sx | sy | rx | ry) & 0xFFFF) == 0; }
};

}  // namespace zor
