// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <immintrin.h>

#include "compositor/blend_rows_vector.h"

namespace zor {
namespace {

// Unpack and pack work in 128-bit halves and undo one another there; only Evens and Pairs, which
// change the number of bytes, cross the halves.
struct Avx2 {
  using V = __m256i;
  static constexpr std::size_t kBytes = 32;
  static constexpr bool kMaskedTail = false;

  static ZOR_ALWAYS_INLINE V Load(const std::uint8_t* p) {
    return _mm256_loadu_si256(reinterpret_cast<const V*>(p));
  }
  static ZOR_ALWAYS_INLINE void Store(std::uint8_t* p, V v) {
    _mm256_storeu_si256(reinterpret_cast<V*>(p), v);
  }
  static ZOR_ALWAYS_INLINE V Set(std::uint32_t w) {
    return _mm256_set1_epi16(static_cast<short>(w));
  }
  static ZOR_ALWAYS_INLINE V Lanes(V c, V d, V w) {
    const V product = _mm256_mullo_epi16(_mm256_sub_epi16(d, c), w);
    return _mm256_srli_epi16(_mm256_add_epi16(_mm256_slli_epi16(c, 8), product), 8);
  }
  static ZOR_ALWAYS_INLINE V Both(V c, V d, V wLow, V wHigh) {
    const V zero = _mm256_setzero_si256();
    const V low = Lanes(_mm256_unpacklo_epi8(c, zero), _mm256_unpacklo_epi8(d, zero), wLow);
    const V high = Lanes(_mm256_unpackhi_epi8(c, zero), _mm256_unpackhi_epi8(d, zero), wHigh);
    return _mm256_packus_epi16(low, high);
  }
  static ZOR_ALWAYS_INLINE V Blend(V c, V d, V w) {
    const V zero = _mm256_setzero_si256();
    return Both(c, d, _mm256_unpacklo_epi8(w, zero), _mm256_unpackhi_epi8(w, zero));
  }
  static ZOR_ALWAYS_INLINE V BlendWide(V c, V d, V w) { return Both(c, d, w, w); }
  static ZOR_ALWAYS_INLINE V Evens(V first, V second) {
    const V low = _mm256_set1_epi16(0x00FF);
    // quarters: f0 s0 f1 s1 -> f0 f1 s0 s1
    return _mm256_permute4x64_epi64(
        _mm256_packus_epi16(_mm256_and_si256(first, low), _mm256_and_si256(second, low)), 0xD8);
  }
  // quarters of m: 0 1 2 3 -> 0 2 1 3, so that the low halves hold quarters 0 and 1
  static ZOR_ALWAYS_INLINE V PairsLow(V m) {
    const V q = _mm256_permute4x64_epi64(m, 0xD8);
    return _mm256_unpacklo_epi8(q, q);
  }
  static ZOR_ALWAYS_INLINE V PairsHigh(V m) {
    const V q = _mm256_permute4x64_epi64(m, 0xD8);
    return _mm256_unpackhi_epi8(q, q);
  }
};

}  // namespace

const BlendRows kBlendRowsAvx2 = {MaskedRow<Avx2>, MaskedByEvensRow<Avx2>, MaskedByPairsRow<Avx2>,
                                  ConstantRow<Avx2>};

}  // namespace zor
