// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <emmintrin.h>

#include "compositor/blend_rows_vector.h"

namespace zor {
namespace {

struct Sse2 {
  using V = __m128i;
  static constexpr std::size_t kBytes = 16;
  static constexpr bool kMaskedTail = false;

  static ZOR_ALWAYS_INLINE V Load(const std::uint8_t* p) {
    return _mm_loadu_si128(reinterpret_cast<const V*>(p));
  }
  static ZOR_ALWAYS_INLINE void Store(std::uint8_t* p, V v) {
    _mm_storeu_si128(reinterpret_cast<V*>(p), v);
  }
  static ZOR_ALWAYS_INLINE V Set(std::uint32_t w) {
    return _mm_set1_epi16(static_cast<short>(w));
  }
  // 16-bit lanes: ((256 - w) c + w d) >> 8 = (256 c + w (d - c)) >> 8, exact modulo 2^16 as the
  // true value fits 16 bits unsigned.
  static ZOR_ALWAYS_INLINE V Lanes(V c, V d, V w) {
    const V product = _mm_mullo_epi16(_mm_sub_epi16(d, c), w);
    return _mm_srli_epi16(_mm_add_epi16(_mm_slli_epi16(c, 8), product), 8);
  }
  static ZOR_ALWAYS_INLINE V Both(V c, V d, V wLow, V wHigh) {
    const V zero = _mm_setzero_si128();
    const V low = Lanes(_mm_unpacklo_epi8(c, zero), _mm_unpacklo_epi8(d, zero), wLow);
    const V high = Lanes(_mm_unpackhi_epi8(c, zero), _mm_unpackhi_epi8(d, zero), wHigh);
    return _mm_packus_epi16(low, high);
  }
  static ZOR_ALWAYS_INLINE V Blend(V c, V d, V w) {
    const V zero = _mm_setzero_si128();
    return Both(c, d, _mm_unpacklo_epi8(w, zero), _mm_unpackhi_epi8(w, zero));
  }
  static ZOR_ALWAYS_INLINE V BlendWide(V c, V d, V w) { return Both(c, d, w, w); }
  static ZOR_ALWAYS_INLINE V Evens(V first, V second) {
    const V low = _mm_set1_epi16(0x00FF);
    return _mm_packus_epi16(_mm_and_si128(first, low), _mm_and_si128(second, low));
  }
  static ZOR_ALWAYS_INLINE V PairsLow(V m) { return _mm_unpacklo_epi8(m, m); }
  static ZOR_ALWAYS_INLINE V PairsHigh(V m) { return _mm_unpackhi_epi8(m, m); }
};

}  // namespace

const BlendRows kBlendRowsSse2 = {MaskedRow<Sse2>, MaskedByEvensRow<Sse2>, MaskedByPairsRow<Sse2>,
                                  ConstantRow<Sse2>};

}  // namespace zor
