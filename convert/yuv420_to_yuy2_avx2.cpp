// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/column_blocks.h"
#include "convert/row_filter_avx2.h"
#include "convert/store_avx2.h"
#include "convert/yuv420_to_yuy2_rows.h"

namespace zor {
namespace {

template <bool kInner>
struct Block {
  static constexpr std::int32_t kColumns = 32;
  Yuv420ToYuy2Pair rows;

  template <bool kStream>
  ZOR_ALWAYS_INLINE void Convert(std::int32_t x) const {
    const __m128i u = SmoothSixteen(rows.u, x / 2);
    const __m128i v = SmoothSixteen(rows.v, x / 2);
    const __m256i chroma = _mm256_set_m128i(_mm_unpackhi_epi8(u, v), _mm_unpacklo_epi8(u, v));
    const PairOf32 luma = SmoothPair<kInner>(rows.luma, x);
#pragma GCC unroll 2
    for (int row = 0; row < 2; ++row) {
      // Columns 0-7 | 16-23 and 8-15 | 24-31.
      const __m256i low = _mm256_unpacklo_epi8(luma.row[row], chroma);
      const __m256i high = _mm256_unpackhi_epi8(luma.row[row], chroma);
      std::uint8_t* target = rows.target[row] + 2 * x;
      Store32<kStream>(target, _mm256_permute2x128_si256(low, high, 0x20));
      Store32<kStream>(target + 32, _mm256_permute2x128_si256(low, high, 0x31));
    }
  }
};

}  // namespace

std::int32_t Yuv420ToYuy2RowsAvx2(const Yuv420ToYuy2Pair& rows, std::int32_t columns,
                                  bool stream) noexcept {
  return ForEachBlockOfPair<Block>(rows, columns, stream);
}

}  // namespace zor
