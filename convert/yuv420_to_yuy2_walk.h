// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The walk over the row pairs of a picture from YUV 4:2:0 to YUY2, and the statement of a pair of
/// columns.

#include "convert/row_pairs.h"
#include "convert/row_triple.h"
#include "convert/rows_ahead.h"

namespace zor {

/// Two rows of the target and what they are made of.
struct Yuv420ToYuy2Pair {
  RowTriple luma[2];
  RowTriple u;
  RowTriple v;
  std::uint8_t* target[2];
  bool inner;  ///< neither the first nor the last: luma[1] shares two rows with luma[0]
  AskForPair<2, 4, LinesAhead::kEverySecond> ahead;
};

/// Converts the columns @p x and x + 1 of both rows.
ZOR_ALWAYS_INLINE void ConvertColumns(const Yuv420ToYuy2Pair& rows, std::int32_t x) noexcept {
  const std::uint8_t u = rows.u.Smooth(x / 2);
  const std::uint8_t v = rows.v.Smooth(x / 2);
  for (int row = 0; row < 2; ++row) {
    std::uint8_t* target = rows.target[row] + 2 * x;
    target[0] = rows.luma[row].Smooth(x);
    target[1] = u;
    target[2] = rows.luma[row].Smooth(x + 1);
    target[3] = v;
  }
}

/// Calls `convert(rows, columns)` for every pair of rows and converts by the statement what columns
/// it leaves. It returns how many it did, an even number.
template <class Convert>
ZOR_ALWAYS_INLINE void WalkYuv420ToYuy2(const FromPlanes& picture,
                                        const Convert& convert) noexcept {
  WalkRowPairs<2>(picture, [&](const auto& pair) {
    Yuv420ToYuy2Pair rows = {{},
                             PlanChroma(pair.u, pair.chromaStride, pair.first, pair.last),
                             PlanChroma(pair.v, pair.chromaStride, pair.first, pair.last),
                             {pair.packed, pair.packed + pair.packedStride},
                             !pair.first && !pair.last,
                             {{PairAhead::Of(pair.luma, pair.lumaStride, kRowsToNextFilteredPair),
                               PairAhead::Of(pair.packed, pair.packedStride, kRowsToNextPair)}}};
    PlanPair(rows.luma, pair.luma, pair.lumaStride, pair.first, pair.last);
    for (std::int32_t x = convert(rows, pair.columns); x < pair.columns; x += 2) {
      ConvertColumns(rows, x);
    }
  });
}

}  // namespace zor
