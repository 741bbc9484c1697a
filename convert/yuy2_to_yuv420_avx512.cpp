// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/column_blocks.h"
#include "convert/permute_table_avx512.h"
#include "convert/row_filter_avx512.h"
#include "convert/store_avx512.h"
#include "convert/yuy2_to_yuv420_rows.h"

namespace zor {
namespace {

/// Luma of 64 columns out of two registers.
struct LumaOfTwo {
  static constexpr int Byte(int i) { return 2 * i; }
};

/// 32 U, then 32 V, out of two registers.
struct ChromaOfTwo {
  static constexpr int Byte(int i) { return 4 * (i % 32) + (i < 32 ? 1 : 3); }
};

template <bool kInner>
struct Block {
  static constexpr std::int32_t kColumns = 64;
  Yuy2ToYuv420Pair rows;

  template <bool kStream>
  ZOR_ALWAYS_INLINE void Convert(std::int32_t x) const {
    const PairOf64 low = SmoothPair<kInner>(rows.source, 2 * x);
    const PairOf64 high = SmoothPair<kInner>(rows.source, 2 * x + 64);
#pragma GCC unroll 2
    for (int row = 0; row < 2; ++row) {
      Store64<kStream>(rows.luma[row] + x,
                       _mm512_permutex2var_epi8(low.row[row], TableOf<LumaOfTwo>(), high.row[row]));
    }
    const __m512i planes =
        _mm512_permutex2var_epi8(_mm512_avg_epu8(low.row[0], low.row[1]), TableOf<ChromaOfTwo>(),
                                 _mm512_avg_epu8(high.row[0], high.row[1]));
    Store32<kStream>(rows.u + x / 2, _mm512_castsi512_si256(planes));
    Store32<kStream>(rows.v + x / 2, _mm512_extracti64x4_epi64(planes, 1));
  }
};

}  // namespace

std::int32_t Yuy2ToYuv420RowsAvx512(const Yuy2ToYuv420Pair& rows, std::int32_t columns,
                                    bool stream) noexcept {
  return ForEachBlockOfPair<Block>(rows, columns, stream);
}

}  // namespace zor
