// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The walk over the row pairs of a picture from YUV 4:2:0 to YUY2, and the statement of a pair of
/// columns.

#include "convert/row_triple.h"

namespace zor {

/// The operands of a kernel.
struct Yuv420ToYuy2Picture {
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
struct Yuv420ToYuy2Pair {
  RowTriple luma[2];
  RowTriple u;
  RowTriple v;
  std::uint8_t* target[2];
  bool inner;  ///< neither the first nor the last: luma[1] shares two rows with luma[0]
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
ZOR_ALWAYS_INLINE void WalkYuv420ToYuy2(const Yuv420ToYuy2Picture& picture,
                                        const Convert& convert) noexcept {
  std::uint8_t* target = picture.target;
  std::ptrdiff_t targetStride = picture.targetStride;
  std::int32_t height = picture.height;
  if (height < 0) {
    height = -height;
    target += (height - 1) * targetStride;
    targetStride = -targetStride;
  }
  const std::ptrdiff_t lumaStride = picture.lumaStride;
  const std::ptrdiff_t chromaStride = picture.chromaStride;
  const std::ptrdiff_t drift = picture.width & 1;
  const std::int32_t columns = picture.width & ~1;
  const std::ptrdiff_t pairs = height / 2;

  for (std::ptrdiff_t pair = 0; pair < pairs; ++pair) {
    const bool first = pair == 0;
    const bool last = pair == pairs - 1;
    std::uint8_t* upper = target + pair * (2 * targetStride - 2 * drift);
    Yuv420ToYuy2Pair rows = {{},
                             PlanChroma(picture.u + pair * chromaStride, chromaStride, first, last),
                             PlanChroma(picture.v + pair * chromaStride, chromaStride, first, last),
                             {upper, upper + targetStride},
                             !first && !last};
    PlanPair(rows.luma, picture.luma + pair * (2 * lumaStride - drift), lumaStride, first, last);
    for (std::int32_t x = convert(rows, columns); x < columns; x += 2) ConvertColumns(rows, x);
  }
}

}  // namespace zor
