// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <immintrin.h>

#include "ipl/warp_spans_walk.h"

namespace zor {
namespace {

struct Lanes {
  using V = __m256i;
  static constexpr std::int32_t kCount = 8;

  static ZOR_ALWAYS_INLINE V Fill(std::uint32_t v) noexcept {
    return _mm256_set1_epi32(static_cast<int>(v));
  }
  static ZOR_ALWAYS_INLINE V Ramp(std::uint32_t at, std::uint32_t step) noexcept {
    const V places = _mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7);
    return _mm256_add_epi32(Fill(at), _mm256_mullo_epi32(Fill(step), places));
  }
  static ZOR_ALWAYS_INLINE V Add(V a, V b) noexcept { return _mm256_add_epi32(a, b); }
  static ZOR_ALWAYS_INLINE V HighHalves(V above, V below) noexcept {
    return _mm256_blend_epi16(_mm256_srli_epi32(below, 16), above, 0xAA);
  }
  static ZOR_ALWAYS_INLINE V MultiplyAdd(V a, V b) noexcept { return _mm256_madd_epi16(a, b); }
  static ZOR_ALWAYS_INLINE void Store(std::int32_t* out, V v) noexcept {
    _mm256_store_si256(reinterpret_cast<V*>(out), v);
  }
};

}  // namespace

const WarpSpanForm kWarpSpansAvx2 = FormOf<VectorOffsets<Lanes>>("avx2");

}  // namespace zor
