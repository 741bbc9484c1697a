// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <immintrin.h>

#include "compositor/blend_rows_vector.h"

namespace zor {
namespace {

// Byte numbers 0 to 63, from which the permutes make their patterns.
ZOR_ALWAYS_INLINE __m512i Iota() {
  const __m128i first =
      _mm_setr_epi8(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15);
  const __m512i quarters = _mm512_broadcast_i32x4(first);
  return _mm512_add_epi8(
      quarters, _mm512_setr_epi32(0, 0, 0, 0, 0x10101010, 0x10101010, 0x10101010, 0x10101010,
                                  0x20202020, 0x20202020, 0x20202020, 0x20202020, 0x30303030,
                                  0x30303030, 0x30303030, 0x30303030));
}

struct Avx512 {
  using V = __m512i;
  static constexpr std::size_t kBytes = 64;
  static constexpr bool kMaskedTail = true;

  static ZOR_ALWAYS_INLINE V Load(const std::uint8_t* p) { return _mm512_loadu_si512(p); }
  static ZOR_ALWAYS_INLINE void Store(std::uint8_t* p, V v) { _mm512_storeu_si512(p, v); }
  static ZOR_ALWAYS_INLINE __mmask64 First(std::size_t n) {  // 0 to 64 bytes
    return n == 0 ? 0 : ~0ull >> (64 - n);
  }
  static ZOR_ALWAYS_INLINE V LoadTail(const std::uint8_t* p, std::size_t n) {
    return _mm512_maskz_loadu_epi8(First(n), p);
  }
  static ZOR_ALWAYS_INLINE void StoreTail(std::uint8_t* p, std::size_t n, V v) {
    _mm512_mask_storeu_epi8(p, First(n), v);
  }
  static ZOR_ALWAYS_INLINE V Set(std::uint32_t w) {
    return _mm512_set1_epi16(static_cast<short>(w));
  }
  static ZOR_ALWAYS_INLINE V Lanes(V c, V d, V w) {
    const V product = _mm512_mullo_epi16(_mm512_sub_epi16(d, c), w);
    return _mm512_srli_epi16(_mm512_add_epi16(_mm512_slli_epi16(c, 8), product), 8);
  }
  static ZOR_ALWAYS_INLINE V Both(V c, V d, V wLow, V wHigh) {
    const V zero = _mm512_setzero_si512();
    const V low = Lanes(_mm512_unpacklo_epi8(c, zero), _mm512_unpacklo_epi8(d, zero), wLow);
    const V high = Lanes(_mm512_unpackhi_epi8(c, zero), _mm512_unpackhi_epi8(d, zero), wHigh);
    return _mm512_packus_epi16(low, high);
  }
  static ZOR_ALWAYS_INLINE V Blend(V c, V d, V w) {
    const V zero = _mm512_setzero_si512();
    return Both(c, d, _mm512_unpacklo_epi8(w, zero), _mm512_unpackhi_epi8(w, zero));
  }
  static ZOR_ALWAYS_INLINE V BlendWide(V c, V d, V w) { return Both(c, d, w, w); }
  static ZOR_ALWAYS_INLINE V Evens(V first, V second) {
    return _mm512_permutex2var_epi8(first, _mm512_add_epi8(Iota(), Iota()), second);
  }
  // Byte i takes sample i / 2: a 16-bit shift of the byte numbers, with the bits that cross
  // between bytes masked off.
  static ZOR_ALWAYS_INLINE V PairsLow(V m) {
    const V half =
        _mm512_and_si512(_mm512_srli_epi16(Iota(), 1), _mm512_set1_epi8(0x1F));
    return _mm512_permutexvar_epi8(half, m);
  }
  static ZOR_ALWAYS_INLINE V PairsHigh(V m) {
    const V half =
        _mm512_and_si512(_mm512_srli_epi16(Iota(), 1), _mm512_set1_epi8(0x1F));
    return _mm512_permutexvar_epi8(_mm512_add_epi8(half, _mm512_set1_epi8(32)), m);
  }
};

}  // namespace

const BlendRows kBlendRowsAvx512 = {MaskedRow<Avx512>, MaskedByEvensRow<Avx512>,
                                    MaskedByPairsRow<Avx512>, ConstantRow<Avx512>};

}  // namespace zor
