// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <emmintrin.h>

#include "ipl/warp_spans_walk.h"

namespace zor {
namespace {

struct Lanes {
  using V = __m128i;
  static constexpr std::int32_t kCount = 4;

  static ZOR_ALWAYS_INLINE V Fill(std::uint32_t v) noexcept {
    return _mm_set1_epi32(static_cast<int>(v));
  }
  static ZOR_ALWAYS_INLINE V Ramp(std::uint32_t at, std::uint32_t step) noexcept {
    return _mm_setr_epi32(static_cast<int>(at), static_cast<int>(at + step),
                          static_cast<int>(at + 2 * step), static_cast<int>(at + 3 * step));
  }
  static ZOR_ALWAYS_INLINE V Add(V a, V b) noexcept { return _mm_add_epi32(a, b); }
  static ZOR_ALWAYS_INLINE V HighHalves(V above, V below) noexcept {
    const V high = _mm_set1_epi32(static_cast<int>(0xFFFF0000));
    return _mm_or_si128(_mm_and_si128(above, high), _mm_srli_epi32(below, 16));
  }
  static ZOR_ALWAYS_INLINE V MultiplyAdd(V a, V b) noexcept { return _mm_madd_epi16(a, b); }
  static ZOR_ALWAYS_INLINE void Store(std::int32_t* out, V v) noexcept {
    _mm_store_si128(reinterpret_cast<V*>(out), v);
  }
};

}  // namespace

const WarpSpanForm kWarpSpansSse2 = FormOf<VectorOffsets<Lanes>>("sse2");

}  // namespace zor
