// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The table arithmetic from Y, U and V to B, G and R, which plain forms and all tails use:
/// products with 13 bits of fraction, no rounding term, a floor and a clamp to a byte.

#include <cstdint>

#include "convert/colour_tables.h"
#include "platform/compiler.h"

namespace zor {

/// The part of U and V, looked up once for all pixels that share them.
class TableChroma {
 public:
  TableChroma(std::uint8_t u, std::uint8_t v) noexcept
      : blue_(BlueFromUTable[u]),
        green_(GreenFromUTable[u] + GreenFromVTable[v]),
        red_(RedFromVTable[v]) {}

  /// Writes a pixel as B, G, R, and 0 as the fourth byte of RGB32.
  template <class Pixel>
  ZOR_ALWAYS_INLINE void Store(std::uint8_t* pixel, std::uint8_t y) const noexcept {
    const std::int32_t luma = LumaScaleTable[y];
    pixel[0] = ToByte(luma + blue_);
    pixel[1] = ToByte(luma - green_);
    pixel[2] = ToByte(luma + red_);
    if constexpr (Pixel::kBytes == 4) pixel[3] = 0;
  }

 private:
  /// @param sum within -2268528 to 4378302: -277 to 534 after the shift
  static ZOR_ALWAYS_INLINE std::uint8_t ToByte(std::int32_t sum) noexcept {
    const std::int32_t value = sum >> 13;
    return static_cast<std::uint8_t>(value < 0 ? 0 : value > 255 ? 255 : value);
  }

  std::int32_t blue_;
  std::int32_t green_;
  std::int32_t red_;
};

}  // namespace zor
