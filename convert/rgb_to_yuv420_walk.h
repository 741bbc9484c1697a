// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The walk over the row pairs of a picture from RGB to YUV 4:2:0, and the statement of one group.

#include <cstdint>

#include "convert/forward_matrix.h"
#include "convert/row_pairs.h"
#include "convert/rows_ahead.h"
#include "platform/compiler.h"

namespace zor {

/// Two rows of pixels and what becomes of them.
struct RgbToYuv420Pair {
  const std::uint8_t* source[2];
  std::uint8_t* luma[2];
  std::uint8_t* u;
  std::uint8_t* v;
  PairAhead ahead;
};

/// Converts the group of columns @p x and x + 1.
template <class Pixel>
ZOR_ALWAYS_INLINE void ConvertRgbGroup(const RgbToYuv420Pair& rows, std::int32_t x) noexcept {
  RgbSum sum;
  for (int row = 0; row < 2; ++row) {
    for (int column = 0; column < 2; ++column) {
      const std::uint8_t* pixel = rows.source[row] + (x + column) * Pixel::kBytes;
      rows.luma[row][x + column] = LumaOfRgb(pixel);
      sum.Add(pixel);
    }
  }
  rows.u[x / 2] = UOfRgb<kChromaShiftOfFour>(sum);
  rows.v[x / 2] = VOfRgb<kChromaShiftOfFour>(sum);
}

/// Calls `convert(rows, columns, pair)` for every pair of rows from the first in walking order on,
/// and converts by the statement what columns it leaves. It returns how many it did, an even
/// number.
template <class Pixel, class Convert>
ZOR_ALWAYS_INLINE void WalkRgbToYuv420(const ToPlanes& picture, const Convert& convert) noexcept {
  WalkRowPairs<Pixel::kBytes>(picture, [&](const auto& pair) {
    const RgbToYuv420Pair rows = {{pair.packed, pair.packed + pair.packedStride},
                                  {pair.luma, pair.luma + pair.lumaStride},
                                  pair.u,
                                  pair.v,
                                  {PairAhead::Of(pair.packed, pair.packedStride, kRowsToNextPair),
                                   PairAhead::Of(pair.luma, pair.lumaStride, kRowsToNextPair)}};
    for (std::int32_t x = convert(rows, pair.columns, pair.index); x < pair.columns; x += 2) {
      ConvertRgbGroup<Pixel>(rows, x);
    }
  });
}

}  // namespace zor
