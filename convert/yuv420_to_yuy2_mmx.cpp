// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/row_filter_mmx.h"
#include "convert/yuv420_to_yuy2.h"
#include "convert/yuv420_to_yuy2_walk.h"

namespace zor {
namespace {

constexpr std::int32_t kColumns = 16;

void ConvertBlock(const Yuv420ToYuy2Pair& rows, std::int32_t x) {
  const __m64 u = SmoothTruncating<LoadEight>(rows.u, x / 2);
  const __m64 v = SmoothTruncating<LoadEight>(rows.v, x / 2);
  const __m64 chroma[2] = {_mm_unpacklo_pi8(u, v), _mm_unpackhi_pi8(u, v)};
  for (int row = 0; row < 2; ++row) {
    for (int half = 0; half < 2; ++half) {
      const __m64 luma = SmoothTruncating<LoadEight>(rows.luma[row], x + 8 * half);
      std::uint8_t* target = rows.target[row] + 2 * x + 16 * half;
      StoreEight(target, _mm_unpacklo_pi8(luma, chroma[half]));
      StoreEight(target + 8, _mm_unpackhi_pi8(luma, chroma[half]));
    }
  }
}

}  // namespace

void ConvertYuv420ToYuy2Mmx(std::uint8_t* target, std::int32_t targetStride,
                            const std::uint8_t* luma, const std::uint8_t* u, const std::uint8_t* v,
                            std::int32_t lumaStride, std::int32_t chromaStride, std::int32_t width,
                            std::int32_t height) noexcept {
  WalkYuv420ToYuy2({target, targetStride, luma, u, v, lumaStride, chromaStride, width, height},
                   [](const Yuv420ToYuy2Pair& rows, std::int32_t columns) {
                     std::int32_t x = 0;
                     for (; x + kColumns <= columns; x += kColumns) ConvertBlock(rows, x);
                     return x;
                   });
  _mm_empty();
}

}  // namespace zor
