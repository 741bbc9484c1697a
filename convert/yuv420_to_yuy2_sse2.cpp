// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/column_blocks.h"
#include "convert/row_filter_sse2.h"
#include "convert/rows_by_level.h"
#include "convert/streaming.h"
#include "convert/yuv420_to_yuy2.h"
#include "convert/yuv420_to_yuy2_rows.h"

namespace zor {
namespace {

struct Block {
  static constexpr std::int32_t kColumns = 16;
  Yuv420ToYuy2Pair rows;

  template <bool>
  ZOR_ALWAYS_INLINE void Convert(std::int32_t x) const {
    const __m128i chroma =
        _mm_unpacklo_epi8(Smooth<LoadLowEight>(rows.u, x / 2), Smooth<LoadLowEight>(rows.v, x / 2));
    for (int row = 0; row < 2; ++row) {
      const __m128i luma = Smooth<LoadSixteen>(rows.luma[row], x);
      auto* target = reinterpret_cast<__m128i*>(rows.target[row] + 2 * x);
      _mm_storeu_si128(target, _mm_unpacklo_epi8(luma, chroma));
      _mm_storeu_si128(target + 1, _mm_unpackhi_epi8(luma, chroma));
    }
  }
};

std::int32_t ConvertRows(const Yuv420ToYuy2Pair& rows, std::int32_t columns, bool) noexcept {
  return ForEachBlock<BlockCover::kOverlap>(columns, false, Block{rows}, rows.ahead);
}

constexpr RowsByLevel<Yuv420ToYuy2Rows> kRows = {
    {ConvertRows, Yuv420ToYuy2RowsAvx2, Yuv420ToYuy2RowsAvx512}};

}  // namespace

void ConvertYuv420ToYuy2Sse2(std::uint8_t* target, std::int32_t targetStride,
                             const std::uint8_t* luma, const std::uint8_t* u, const std::uint8_t* v,
                             std::int32_t lumaStride, std::int32_t chromaStride, std::int32_t width,
                             std::int32_t height) noexcept {
  const VectorLevel widest = InnerVectorLevel();
  const bool stream =
      (width & 1) == 0 && RowsArePastCaches(target, targetStride, std::int64_t{width} * 2, height);
  WalkYuv420ToYuy2({target, targetStride, luma, u, v, lumaStride, chromaStride, width, height},
                   [widest, stream](const Yuv420ToYuy2Pair& rows, std::int32_t columns) {
                     return kRows.Convert(widest, rows, columns, stream);
                   });
  if (stream) _mm_sfence();
}

}  // namespace zor
