// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/pixel_formats.h"
#include "convert/row_filter_mmx.h"
#include "convert/yuv420_to_rgb.h"
#include "convert/yuv420_to_rgb_walk.h"
#include "convert/yuv_colour_mmx.h"

namespace zor {
namespace {

constexpr std::int32_t kColumns = 8;

/// Eight columns of both rows.
void ConvertBlock(const Yuv420ToRgbPair& rows, std::int32_t x) {
  const __m64 zero = _mm_setzero_si64();
  const __m64 u = _mm_unpacklo_pi8(SmoothTruncating<LoadFour>(rows.u, x / 2), zero);
  const __m64 v = _mm_unpacklo_pi8(SmoothTruncating<LoadFour>(rows.v, x / 2), zero);
  for (int row = 0; row < 2; ++row) {
    const __m64 luma = SmoothTruncating<LoadEight>(rows.luma[row], x);
    std::uint8_t* target = rows.target[row] + 4 * x;
    const FourPixels low =
        ConvertFour(_mm_unpacklo_pi8(luma, zero), _mm_unpacklo_pi16(u, u), _mm_unpacklo_pi16(v, v));
    const FourPixels high =
        ConvertFour(_mm_unpackhi_pi8(luma, zero), _mm_unpackhi_pi16(u, u), _mm_unpackhi_pi16(v, v));
    for (int i = 0; i < 2; ++i) {
      StoreEight(target + 8 * i, low.pixels[i]);
      StoreEight(target + 16 + 8 * i, high.pixels[i]);
    }
  }
}

}  // namespace

void ConvertYuv420ToRgb32Mmx(std::uint8_t* target, std::int32_t targetStride,
                             const std::uint8_t* luma, const std::uint8_t* u, const std::uint8_t* v,
                             std::int32_t lumaStride, std::int32_t chromaStride, std::int32_t width,
                             std::int32_t height) noexcept {
  WalkYuv420ToRgb<Rgb32>(
      {target, targetStride, luma, u, v, lumaStride, chromaStride, width, height},
      [](const Yuv420ToRgbPair& rows, std::int32_t columns) {
        const std::int32_t whole = columns & -kColumns;
        // Only the first pair counts its tail by the block.
        const std::int32_t tail = columns & (rows.first ? 7 : 15) & ~1;
        for (std::int32_t x = 0; x < whole; x += kColumns) ConvertBlock(rows, x);
        for (std::int32_t x = whole; x < whole + tail; x += 2) ConvertColumns<Rgb32>(rows, x);
      });
  _mm_empty();
}

}  // namespace zor
