// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The walk over the row pairs of a picture from YUY2 to YUV 4:2:0, and the statement of a pair of
/// columns.

#include "convert/row_pairs.h"
#include "convert/row_triple.h"
#include "convert/rows_ahead.h"

namespace zor {

/// Two rows of the source and what they become.
struct Yuy2ToYuv420Pair {
  RowTriple source[2];
  std::uint8_t* luma[2];
  std::uint8_t* u;
  std::uint8_t* v;
  bool only;   ///< the picture's single pair
  bool inner;  ///< neither the first nor the last: source[1] shares two rows with source[0]
  AskForPair<4, 2, LinesAhead::kEverySecond> ahead;
};

/// Converts the columns @p x and x + 1 of both rows.
ZOR_ALWAYS_INLINE void ConvertColumns(const Yuy2ToYuv420Pair& rows, std::int32_t x) noexcept {
  std::uint8_t smoothed[2][4];
  for (int row = 0; row < 2; ++row) {
    for (int i = 0; i < 4; ++i) smoothed[row][i] = rows.source[row].Smooth(2 * x + i);
    rows.luma[row][x] = smoothed[row][0];
    rows.luma[row][x + 1] = smoothed[row][2];
  }
  rows.u[x / 2] = RoundingFilter::Average(smoothed[0][1], smoothed[1][1]);
  rows.v[x / 2] = RoundingFilter::Average(smoothed[0][3], smoothed[1][3]);
}

/// Calls `convert(rows, columns)` for every pair of rows and converts by the statement what columns
/// it leaves. It returns how many it did, an even number.
template <class Convert>
ZOR_ALWAYS_INLINE void WalkYuy2ToYuv420(const ToPlanes& picture, const Convert& convert) noexcept {
  WalkRowPairs<2>(picture, [&](const auto& pair) {
    Yuy2ToYuv420Pair rows = {
        {},
        {pair.luma, pair.luma + pair.lumaStride},
        pair.u,
        pair.v,
        pair.first && pair.last,
        !pair.first && !pair.last,
        {{PairAhead::Of(pair.packed, pair.packedStride, kRowsToNextFilteredPair),
          PairAhead::Of(pair.luma, pair.lumaStride, kRowsToNextPair)}}};
    PlanPair(rows.source, pair.packed, pair.packedStride, pair.first, pair.last);
    for (std::int32_t x = convert(rows, pair.columns); x < pair.columns; x += 2) {
      ConvertColumns(rows, x);
    }
  });
}

}  // namespace zor
