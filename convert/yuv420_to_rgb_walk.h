// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The walk over the row pairs of a picture from YUV 4:2:0 to RGB, and the statement of a pair of
/// columns.

#include "convert/row_pairs.h"
#include "convert/row_triple.h"
#include "convert/rows_ahead.h"
#include "convert/table_colour.h"

namespace zor {

/// Two rows of the target and what they are made of.
struct Yuv420ToRgbPair {
  RowTriple luma[2];
  RowTriple u;  ///< of whole blocks
  RowTriple v;
  RowTriple tailU;  ///< of plain forms and tails: a single row in the first and the last pair
  RowTriple tailV;
  std::uint8_t* target[2];
  bool first;
  bool inner;              ///< neither the first nor the last: luma[1] shares two rows with luma[0]
  AskForPair<2, 8> ahead;  ///< of RGB32, which alone has wide forms of pairs
};

/// The chroma row of a pair by the table arithmetic: smoothed, but in the first pair its own row
/// and in the last one the row before it.
ZOR_ALWAYS_INLINE RowTriple PlanTailChroma(const std::uint8_t* centre, std::ptrdiff_t stride,
                                           bool first, bool last) noexcept {
  if (first) return {centre, centre, centre};
  const std::uint8_t* above = centre - stride;
  if (last) return {above, above, above};
  return {above, centre, centre + stride};
}

/// Converts the columns @p x and x + 1 of both rows by the table arithmetic.
template <class Pixel>
ZOR_ALWAYS_INLINE void ConvertColumns(const Yuv420ToRgbPair& rows, std::ptrdiff_t x) noexcept {
  const TableChroma chroma(rows.tailU.Smooth(x / 2), rows.tailV.Smooth(x / 2));
  for (int row = 0; row < 2; ++row) {
    for (std::ptrdiff_t column = x; column < x + 2; ++column) {
      chroma.Store<Pixel>(rows.target[row] + column * Pixel::kBytes, rows.luma[row].Smooth(column));
    }
  }
}

/// Calls `convert(rows, columns)` for every pair of rows, which converts all of them.
template <class Pixel, class Convert>
ZOR_ALWAYS_INLINE void WalkYuv420ToRgb(const FromPlanes& picture, const Convert& convert) noexcept {
  WalkRowPairs<Pixel::kBytes>(picture, [&](const auto& pair) {
    Yuv420ToRgbPair rows = {{},
                            PlanChroma(pair.u, pair.chromaStride, pair.first, pair.last),
                            PlanChroma(pair.v, pair.chromaStride, pair.first, pair.last),
                            PlanTailChroma(pair.u, pair.chromaStride, pair.first, pair.last),
                            PlanTailChroma(pair.v, pair.chromaStride, pair.first, pair.last),
                            {pair.packed, pair.packed + pair.packedStride},
                            pair.first,
                            !pair.first && !pair.last,
                            {{PairAhead::Of(pair.luma, pair.lumaStride, kRowsToNextFilteredPair),
                              PairAhead::Of(pair.packed, pair.packedStride, kRowsToNextPair)}}};
    PlanPair(rows.luma, pair.luma, pair.lumaStride, pair.first, pair.last);
    convert(rows, pair.columns);
  });
}

}  // namespace zor
