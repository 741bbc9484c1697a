// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <immintrin.h>

#include "scale/box_rows_vector.h"

namespace zor {
namespace {

struct Avx512 {
  using V = __m512i;
  static constexpr std::int32_t kLanes = 32;

  static ZOR_ALWAYS_INLINE V Widen(const std::uint8_t* p) {
    return _mm512_cvtepu8_epi16(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(p)));
  }
  static ZOR_ALWAYS_INLINE V Load(const std::uint16_t* p) { return _mm512_loadu_si512(p); }
  static ZOR_ALWAYS_INLINE void Store(std::uint16_t* p, V v) { _mm512_storeu_si512(p, v); }
  static ZOR_ALWAYS_INLINE V Add(V a, V b) { return _mm512_add_epi16(a, b); }
  static ZOR_ALWAYS_INLINE V Shift(V v, int count) {
    return _mm512_srl_epi16(v, _mm_cvtsi32_si128(count));
  }
  static ZOR_ALWAYS_INLINE void StoreBytes(std::uint8_t* p, V v) {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), _mm512_cvtusepi16_epi8(v));
  }
  static ZOR_ALWAYS_INLINE V AddPixels(V a, V b) {
    // a01 b01 | a23 b23 | a45 b45 | a67 b67 -> the a in front of the b
    const V sums = _mm512_add_epi16(_mm512_unpacklo_epi64(a, b), _mm512_unpackhi_epi64(a, b));
    return _mm512_permutexvar_epi64(_mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7), sums);
  }
  template <int kBytes>
  static ZOR_ALWAYS_INLINE V Pairs(const std::uint8_t* p) {
    // Of each pair of pixels the bytes side by side, then added.
    const V bytes = _mm512_loadu_si512(p);
    if (kBytes == 4) {
      const V order = _mm512_broadcast_i32x4(
          _mm_setr_epi8(0, 4, 1, 5, 2, 6, 3, 7, 8, 12, 9, 13, 10, 14, 11, 15));
      return _mm512_maddubs_epi16(_mm512_shuffle_epi8(bytes, order), _mm512_set1_epi8(1));
    }
    // Each quarter takes four pixels, 12 bytes on from the one before.
    const V quarters = _mm512_permutexvar_epi32(
        _mm512_setr_epi32(0, 1, 2, 3, 3, 4, 5, 6, 6, 7, 8, 9, 9, 10, 11, 12), bytes);
    const V order =
        _mm512_broadcast_i32x4(_mm_setr_epi8(0, 3, 1, 4, 2, 5, 3, 6, 6, 9, 7, 10, 8, 11, 9, 12));
    return _mm512_maddubs_epi16(_mm512_shuffle_epi8(quarters, order), _mm512_set1_epi8(1));
  }
};

}  // namespace

void BoxRowAvx512(std::uint8_t* out, const BoxRow& row, const BoxRun& run,
                  const BoxScratch& scratch) noexcept {
  AverageRow<Avx512>(out, row, run, scratch);
}

}  // namespace zor
