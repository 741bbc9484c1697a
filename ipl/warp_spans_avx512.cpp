// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <immintrin.h>

#include "ipl/warp_spans_walk.h"

namespace zor {
namespace {

struct Lanes {
  using V = __m512i;
  static constexpr std::int32_t kCount = 16;

  static ZOR_ALWAYS_INLINE V Fill(std::uint32_t v) noexcept {
    return _mm512_set1_epi32(static_cast<int>(v));
  }
  static ZOR_ALWAYS_INLINE V Ramp(std::uint32_t at, std::uint32_t step) noexcept {
    const V places = _mm512_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15);
    return _mm512_add_epi32(Fill(at), _mm512_mullo_epi32(Fill(step), places));
  }
  static ZOR_ALWAYS_INLINE V Add(V a, V b) noexcept { return _mm512_add_epi32(a, b); }
  static ZOR_ALWAYS_INLINE V HighHalves(V above, V below) noexcept {
    return _mm512_mask_blend_epi16(0xAAAAAAAA, _mm512_srli_epi32(below, 16), above);
  }
  static ZOR_ALWAYS_INLINE V MultiplyAdd(V a, V b) noexcept { return _mm512_madd_epi16(a, b); }
  static ZOR_ALWAYS_INLINE void Store(std::int32_t* out, V v) noexcept {
    _mm512_store_si512(out, v);
  }
};

}  // namespace

const WarpSpanForm kWarpSpansAvx512 = FormOf<VectorOffsets<Lanes>>("avx512");

}  // namespace zor
