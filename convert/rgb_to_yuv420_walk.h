// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The walk over the row pairs of a picture from RGB to YUV 4:2:0, and the statement of one group.

#include <cstdint>

#include "convert/forward_matrix.h"
#include "platform/compiler.h"

namespace zor {

/// The operands of a kernel.
struct RgbToYuv420Picture {
  std::uint8_t* luma;
  std::uint8_t* u;
  std::uint8_t* v;
  std::int32_t lumaStride;
  std::int32_t chromaStride;
  const std::uint8_t* source;
  std::int32_t sourceStride;
  std::int32_t width;
  std::int32_t height;
};

/// Two rows of pixels and what becomes of them.
struct RgbToYuv420Pair {
  const std::uint8_t* source[2];
  std::uint8_t* luma[2];
  std::uint8_t* u;
  std::uint8_t* v;
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
ZOR_ALWAYS_INLINE void WalkRgbToYuv420(const RgbToYuv420Picture& picture,
                                       const Convert& convert) noexcept {
  const std::uint8_t* source = picture.source;
  std::ptrdiff_t sourceStride = picture.sourceStride;
  std::int32_t height = picture.height;
  if (height < 0) {
    height = -height;
    source += (height - 1) * sourceStride;
    sourceStride = -sourceStride;
  }
  const std::ptrdiff_t lumaStride = picture.lumaStride;
  const std::ptrdiff_t drift = picture.width & 1;
  const std::ptrdiff_t sourceStep = 2 * sourceStride - drift * Pixel::kBytes;
  const std::ptrdiff_t lumaStep = 2 * lumaStride - drift;
  const std::int32_t columns = picture.width & ~1;

  for (std::ptrdiff_t pair = 0; pair < height / 2; ++pair) {
    const std::uint8_t* upper = source + pair * sourceStep;
    std::uint8_t* luma = picture.luma + pair * lumaStep;
    const RgbToYuv420Pair rows = {{upper, upper + sourceStride},
                                  {luma, luma + lumaStride},
                                  picture.u + pair * picture.chromaStride,
                                  picture.v + pair * picture.chromaStride};
    std::int32_t x = convert(rows, columns, static_cast<std::int32_t>(pair));
    for (; x < columns; x += 2) ConvertRgbGroup<Pixel>(rows, x);
  }
}

}  // namespace zor
