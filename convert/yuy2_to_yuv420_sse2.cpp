// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/column_blocks.h"
#include "convert/row_filter_sse2.h"
#include "convert/rows_by_level.h"
#include "convert/streaming.h"
#include "convert/yuy2_to_yuv420.h"
#include "convert/yuy2_to_yuv420_rows.h"

namespace zor {
namespace {

ZOR_ALWAYS_INLINE __m128i PackLowBytes(__m128i a, __m128i b) {
  const __m128i low = _mm_set1_epi16(0x00FF);
  return _mm_packus_epi16(_mm_and_si128(a, low), _mm_and_si128(b, low));
}

ZOR_ALWAYS_INLINE __m128i PackHighBytes(__m128i a, __m128i b) {
  return _mm_packus_epi16(_mm_srli_epi16(a, 8), _mm_srli_epi16(b, 8));
}

struct Block {
  static constexpr std::int32_t kColumns = 16;
  Yuy2ToYuv420Pair rows;

  template <bool>
  ZOR_ALWAYS_INLINE void Convert(std::int32_t x) const {
    __m128i smoothed[2][2];
    for (int row = 0; row < 2; ++row) {
      for (int half = 0; half < 2; ++half) {
        smoothed[row][half] = Smooth<LoadSixteen>(rows.source[row], 2 * x + 16 * half);
      }
      _mm_storeu_si128(reinterpret_cast<__m128i*>(rows.luma[row] + x),
                       PackLowBytes(smoothed[row][0], smoothed[row][1]));
    }
    const __m128i chroma = PackHighBytes(_mm_avg_epu8(smoothed[0][0], smoothed[1][0]),
                                         _mm_avg_epu8(smoothed[0][1], smoothed[1][1]));
    // U V U V ... as words of U and of V.
    _mm_storel_epi64(reinterpret_cast<__m128i*>(rows.u + x / 2), PackLowBytes(chroma, chroma));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(rows.v + x / 2), PackHighBytes(chroma, chroma));
  }
};

std::int32_t ConvertRows(const Yuy2ToYuv420Pair& rows, std::int32_t columns, bool) noexcept {
  return ForEachBlock<BlockCover::kOverlap>(columns, false, Block{rows}, rows.ahead);
}

constexpr RowsByLevel<Yuy2ToYuv420Rows> kRows = {
    {ConvertRows, Yuy2ToYuv420RowsAvx2, Yuy2ToYuv420RowsAvx512}};

}  // namespace

void ConvertYuy2ToYuv420Sse2(std::uint8_t* luma, std::uint8_t* u, std::uint8_t* v,
                             std::int32_t lumaStride, std::int32_t chromaStride,
                             const std::uint8_t* source, std::int32_t sourceStride,
                             std::int32_t width, std::int32_t height) noexcept {
  const VectorLevel widest = InnerVectorLevel();
  const bool stream = PlanesArePastCaches(luma, u, v, lumaStride, chromaStride, width, height);
  WalkYuy2ToYuv420({luma, u, v, lumaStride, chromaStride, source, sourceStride, width, height},
                   [widest, stream](const Yuy2ToYuv420Pair& rows, std::int32_t columns) {
                     return kRows.Convert(widest, rows, columns, stream);
                   });
  if (stream) _mm_sfence();
}

}  // namespace zor
