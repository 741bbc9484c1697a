// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The walk over the row pairs of a picture from YUV 4:2:0 to RGB, and the statement of a pair of
/// columns.

#include "convert/row_triple.h"
#include "convert/table_colour.h"

namespace zor {

/// The operands of a kernel.
struct Yuv420ToRgbPicture {
  std::uint8_t* target;
  std::int32_t targetStride;
  const std::uint8_t* luma;
  const std::uint8_t* u;
  const std::uint8_t* v;
  std::int32_t lumaStride;
  std::int32_t chromaStride;
  std::int32_t width;
  std::int32_t height;
};

/// Two rows of the target and what they are made of.
struct Yuv420ToRgbPair {
  RowTriple luma[2];
  RowTriple u;  ///< of whole blocks
  RowTriple v;
  RowTriple tailU;  ///< of plain forms and tails: a single row in the first and the last pair
  RowTriple tailV;
  std::uint8_t* target[2];
  bool first;
  bool inner;  ///< neither the first nor the last: luma[1] shares two rows with luma[0]
};

/// The chroma row of a pair by the table arithmetic: smoothed, but in the first pair its own row and
/// in the last one the row before it.
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
      chroma.Store<Pixel>(rows.target[row] + column * Pixel::kBytes,
                          rows.luma[row].Smooth(column));
    }
  }
}

/// A picture's target as it is walked: from its last row upward at a negative height.
struct Yuv420ToRgbTarget {
  std::uint8_t* first;
  std::ptrdiff_t stride;
  std::int32_t height;

  explicit Yuv420ToRgbTarget(const Yuv420ToRgbPicture& picture) noexcept
      : first(picture.target), stride(picture.targetStride), height(picture.height) {
    if (height >= 0) return;
    height = -height;
    first += (height - 1) * stride;
    stride = -stride;
  }
};

/// Calls `convert(rows, columns)` for every pair of rows, which converts all of them.
template <class Pixel, class Convert>
ZOR_ALWAYS_INLINE void WalkYuv420ToRgb(const Yuv420ToRgbPicture& picture,
                                       const Convert& convert) noexcept {
  const Yuv420ToRgbTarget target(picture);
  const std::ptrdiff_t lumaStride = picture.lumaStride;
  const std::ptrdiff_t chromaStride = picture.chromaStride;
  const std::ptrdiff_t drift = picture.width & 1;
  const std::int32_t columns = picture.width & ~1;
  const std::ptrdiff_t pairs = target.height / 2;
  if (columns <= 0) return;

  for (std::ptrdiff_t pair = 0; pair < pairs; ++pair) {
    const bool first = pair == 0;
    const bool last = pair == pairs - 1;
    const std::uint8_t* u = picture.u + pair * chromaStride;
    const std::uint8_t* v = picture.v + pair * chromaStride;
    std::uint8_t* upper = target.first + pair * (2 * target.stride - drift * Pixel::kBytes);
    Yuv420ToRgbPair rows = {{},
                            PlanChroma(u, chromaStride, first, last),
                            PlanChroma(v, chromaStride, first, last),
                            PlanTailChroma(u, chromaStride, first, last),
                            PlanTailChroma(v, chromaStride, first, last),
                            {upper, upper + target.stride},
                            first,
                            !first && !last};
    PlanPair(rows.luma, picture.luma + pair * (2 * lumaStride - drift), lumaStride, first, last);
    convert(rows, columns);
  }
}

}  // namespace zor
