// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/column_blocks.h"
#include "convert/permute_table_avx512.h"
#include "convert/row_filter_avx512.h"
#include "convert/store_avx512.h"
#include "convert/yuv420_to_yuy2_rows.h"

namespace zor {
namespace {

/// Y0 U Y1 V out of a register of luma and one of 32 U and 32 V, from column 32 x `kHalf` on.
template <int kHalf>
struct Interleave {
  static constexpr int Byte(int i) {
    const int luma = 32 * kHalf + i / 2;
    const int chroma = 64 + 16 * kHalf + i / 4 + (i % 4 == 3 ? 32 : 0);
    return i % 2 == 0 ? luma : chroma;
  }
};

template <bool kInner>
struct Block {
  static constexpr std::int32_t kColumns = 64;
  Yuv420ToYuy2Pair rows;

  template <bool kStream>
  ZOR_ALWAYS_INLINE void Convert(std::int32_t x) const {
    const __m512i chroma = SmoothHalves(rows.u, rows.v, x / 2);
    const PairOf64 luma = SmoothPair<kInner>(rows.luma, x);
#pragma GCC unroll 2
    for (int row = 0; row < 2; ++row) {
      std::uint8_t* target = rows.target[row] + 2 * x;
      Store64<kStream>(target,
                       _mm512_permutex2var_epi8(luma.row[row], TableOf<Interleave<0>>(), chroma));
      Store64<kStream>(target + 64,
                       _mm512_permutex2var_epi8(luma.row[row], TableOf<Interleave<1>>(), chroma));
    }
  }
};

}  // namespace

std::int32_t Yuv420ToYuy2RowsAvx512(const Yuv420ToYuy2Pair& rows, std::int32_t columns,
                                    bool stream) noexcept {
  return ForEachBlockOfPair<Block>(rows, columns, stream);
}

}  // namespace zor
