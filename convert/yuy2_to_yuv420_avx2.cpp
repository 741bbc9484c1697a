// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/column_blocks.h"
#include "convert/row_filter_avx2.h"
#include "convert/store_avx2.h"
#include "convert/yuy2_to_yuv420_rows.h"

namespace zor {
namespace {

/// Quadwords of a pack in the order of its operands.
ZOR_ALWAYS_INLINE __m256i InOrder(__m256i packed) {
  return _mm256_permute4x64_epi64(packed, _MM_SHUFFLE(3, 1, 2, 0));
}

ZOR_ALWAYS_INLINE __m256i LowBytes(__m256i words) {
  return _mm256_and_si256(words, _mm256_set1_epi16(0x00FF));
}

template <bool kInner>
struct Block {
  static constexpr std::int32_t kColumns = 32;
  Yuy2ToYuv420Pair rows;

  template <bool kStream>
  ZOR_ALWAYS_INLINE void Convert(std::int32_t x) const {
    const PairOf32 low = SmoothPair<kInner>(rows.source, 2 * x);
    const PairOf32 high = SmoothPair<kInner>(rows.source, 2 * x + 32);
#pragma GCC unroll 2
    for (int row = 0; row < 2; ++row) {
      Store32<kStream>(rows.luma[row] + x, InOrder(_mm256_packus_epi16(LowBytes(low.row[row]),
                                                                       LowBytes(high.row[row]))));
    }
    const __m256i chroma = InOrder(
        _mm256_packus_epi16(_mm256_srli_epi16(_mm256_avg_epu8(low.row[0], low.row[1]), 8),
                            _mm256_srli_epi16(_mm256_avg_epu8(high.row[0], high.row[1]), 8)));
    const __m256i planes =
        InOrder(_mm256_packus_epi16(LowBytes(chroma), _mm256_srli_epi16(chroma, 8)));
    Store16<kStream>(rows.u + x / 2, _mm256_castsi256_si128(planes));
    Store16<kStream>(rows.v + x / 2, _mm256_extracti128_si256(planes, 1));
  }
};

}  // namespace

std::int32_t Yuy2ToYuv420RowsAvx2(const Yuy2ToYuv420Pair& rows, std::int32_t columns,
                                  bool stream) noexcept {
  return ForEachBlockOfPair<Block>(rows, columns, stream);
}

}  // namespace zor
