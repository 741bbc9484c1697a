// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/row_filter_mmx.h"
#include "convert/yuy2_to_yuv420.h"
#include "convert/yuy2_to_yuv420_walk.h"

namespace zor {
namespace {

constexpr std::int32_t kColumns = 8;

ZOR_ALWAYS_INLINE __m64 LowBytes(__m64 words) {
  return _mm_and_si64(words, _mm_set1_pi16(0x00FF));
}

void ConvertBlock(const Yuy2ToYuv420Pair& rows, std::int32_t x) {
  __m64 smoothed[2][2];
  for (int row = 0; row < 2; ++row) {
    for (int half = 0; half < 2; ++half) {
      smoothed[row][half] = SmoothTruncating<LoadEight>(rows.source[row], 2 * x + 8 * half);
    }
    StoreEight(rows.luma[row] + x,
               _mm_packs_pu16(LowBytes(smoothed[row][0]), LowBytes(smoothed[row][1])));
  }
  // U V U V U V U V, then words of U and of V.
  const __m64 chroma =
      _mm_packs_pu16(_mm_srli_pi16(TruncatingAverage(smoothed[0][0], smoothed[1][0]), 8),
                     _mm_srli_pi16(TruncatingAverage(smoothed[0][1], smoothed[1][1]), 8));
  const __m64 planes = _mm_packs_pu16(LowBytes(chroma), _mm_srli_pi16(chroma, 8));
  StoreFour(rows.u + x / 2, planes);
  StoreFour(rows.v + x / 2, _mm_srli_si64(planes, 32));
}

}  // namespace

void ConvertYuy2ToYuv420Mmx(std::uint8_t* luma, std::uint8_t* u, std::uint8_t* v,
                            std::int32_t lumaStride, std::int32_t chromaStride,
                            const std::uint8_t* source, std::int32_t sourceStride,
                            std::int32_t width, std::int32_t height) noexcept {
  WalkYuy2ToYuv420({luma, u, v, lumaStride, chromaStride, source, sourceStride, width, height},
                   [](const Yuy2ToYuv420Pair& rows, std::int32_t columns) {
                     std::int32_t x = 0;
                     if (rows.only) return x;  // averaged by the statement, rounding
                     for (; x + kColumns <= columns; x += kColumns) ConvertBlock(rows, x);
                     return x;
                   });
  _mm_empty();
}

}  // namespace zor
