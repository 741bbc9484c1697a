// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Rows as the entries of the kernel table take them, straight or through the row filter, and the
/// walks over them.
///
/// The filter of packed pictures runs over the rows as they are walked: the first and the last stay
/// as they are, every other is smoothed with the two next to it, each sample with its like.

#include <type_traits>

#include "convert/packed_rows.h"
#include "convert/row_pairs.h"
#include "convert/row_triple.h"
#include "convert/yuv420_to_rgb_walk.h"

namespace zor {

/// A row that is taken as it is.
struct SingleRow {
  const std::uint8_t* bytes;
};

ZOR_ALWAYS_INLINE std::uint8_t Sample(const SingleRow& row, std::ptrdiff_t i) noexcept {
  return row.bytes[i];
}
ZOR_ALWAYS_INLINE std::uint8_t Sample(const RowTriple& rows, std::ptrdiff_t i) noexcept {
  return rows.Smooth(i);
}

/// The policy of first entries: rows as they are.
struct Straight {
  using Row = SingleRow;

  static Row Of(const std::uint8_t* row, std::ptrdiff_t, bool, bool) noexcept { return {row}; }
  static void Pair(Row (&rows)[2], const std::uint8_t* upper, std::ptrdiff_t stride, bool,
                   bool) noexcept {
    rows[0] = {upper};
    rows[1] = {upper + stride};
  }
};

/// The policy of second entries: rows through the filter.
struct Smoothed {
  using Row = RowTriple;

  static Row Of(const std::uint8_t* row, std::ptrdiff_t step, bool first, bool last) noexcept {
    if (first || last) return {row, row, row};
    return {row - step, row, row + step};
  }
  static void Pair(Row (&rows)[2], const std::uint8_t* upper, std::ptrdiff_t stride, bool first,
                   bool last) noexcept {
    PlanPair(rows, upper, stride, first, last);
  }
};

/// Calls `convert(target, row)` for every row of a packed picture.
template <class Filter, class Convert>
ZOR_ALWAYS_INLINE void WalkFilteredRows(const PackedPicture<>& picture, const RowDrift& drift,
                                        const Convert& convert) noexcept {
  const WalkedRows<const std::uint8_t> source(picture.source, picture.sourceStride, picture.height);
  const std::ptrdiff_t step = source.stride - drift.source;
  std::int32_t y = 0;
  WalkPackedRows(picture, drift, [&](std::uint8_t* target, const std::uint8_t* row) {
    convert(target, Filter::Of(row, step, y == 0, y == source.height - 1));
    ++y;
  });
}

/// What one row of a packed target is made of.
template <class Row>
struct PlanarRow {
  Row luma;
  Row u;
  Row v;
  Row tableU;  ///< for the table arithmetic, whose chroma at the picture's edges is a single row
  Row tableV;
};

/// Calls `convert(target, rows)` for every row of a packed target that is made of planes.
///
/// Straight, every row stands alone, an odd last one included; rows 2p and 2p + 1 share chroma row
/// p, and at an odd width each next row starts one pixel further left. Smoothed, rows go in pairs
/// by convert/row_pairs.h.
/// @tparam kBytes of a pixel of the target
template <class Filter, int kBytes, class Convert>
ZOR_ALWAYS_INLINE void WalkPlanarRows(const FromPlanes& picture, const Convert& convert) noexcept {
  using Row = typename Filter::Row;
  if constexpr (std::is_same_v<Filter, Straight>) {
    const WalkedRows<std::uint8_t> packed(picture.target, picture.targetStride, picture.height);
    const std::ptrdiff_t drift = picture.width & 1;
    for (std::ptrdiff_t y = 0; y < packed.height; ++y) {
      const Row u = {picture.u + y / 2 * picture.chromaStride};
      const Row v = {picture.v + y / 2 * picture.chromaStride};
      convert(packed.first + y * (packed.stride - drift * kBytes),
              PlanarRow<Row>{{picture.luma + y * (picture.lumaStride - drift)}, u, v, u, v});
    }
  } else {
    WalkRowPairs<kBytes>(picture, [&](const auto& pair) {
      Row luma[2];
      Filter::Pair(luma, pair.luma, pair.lumaStride, pair.first, pair.last);
      const Row u = PlanChroma(pair.u, pair.chromaStride, pair.first, pair.last);
      const Row v = PlanChroma(pair.v, pair.chromaStride, pair.first, pair.last);
      const Row tableU = PlanTailChroma(pair.u, pair.chromaStride, pair.first, pair.last);
      const Row tableV = PlanTailChroma(pair.v, pair.chromaStride, pair.first, pair.last);
      for (int row = 0; row < 2; ++row) {
        convert(pair.packed + row * pair.packedStride,
                PlanarRow<Row>{luma[row], u, v, tableU, tableV});
      }
    });
  }
}

}  // namespace zor
