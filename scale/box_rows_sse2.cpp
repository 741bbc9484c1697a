// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <emmintrin.h>

#include "scale/box_rows_vector.h"

namespace zor {
namespace {

struct Sse2 {
  using V = __m128i;
  static constexpr std::int32_t kLanes = 8;

  static ZOR_ALWAYS_INLINE V Widen(const std::uint8_t* p) {
    return _mm_unpacklo_epi8(_mm_loadl_epi64(reinterpret_cast<const V*>(p)), _mm_setzero_si128());
  }
  static ZOR_ALWAYS_INLINE V Load(const std::uint16_t* p) {
    return _mm_loadu_si128(reinterpret_cast<const V*>(p));
  }
  static ZOR_ALWAYS_INLINE void Store(std::uint16_t* p, V v) {
    _mm_storeu_si128(reinterpret_cast<V*>(p), v);
  }
  static ZOR_ALWAYS_INLINE V Add(V a, V b) { return _mm_add_epi16(a, b); }
  static ZOR_ALWAYS_INLINE V Shift(V v, int count) {
    return _mm_srl_epi16(v, _mm_cvtsi32_si128(count));
  }
  static ZOR_ALWAYS_INLINE void StoreBytes(std::uint8_t* p, V v) {
    _mm_storel_epi64(reinterpret_cast<V*>(p), _mm_packus_epi16(v, v));
  }
  static ZOR_ALWAYS_INLINE void StoreBytes(std::uint8_t* p, V a, V b) {
    _mm_storeu_si128(reinterpret_cast<V*>(p), _mm_packus_epi16(a, b));
  }
  static ZOR_ALWAYS_INLINE V AddPixels(V a, V b) {
    // a0 a1, b0 b1 -> a0 + a1, b0 + b1
    return _mm_add_epi16(_mm_unpacklo_epi64(a, b), _mm_unpackhi_epi64(a, b));
  }
  static ZOR_ALWAYS_INLINE V Sized(const std::uint32_t* counts, std::uint32_t size) {
    const V two = _mm_loadl_epi64(reinterpret_cast<const V*>(counts));
    const V same = _mm_cmpeq_epi32(two, _mm_set1_epi32(static_cast<int>(size)));
    return _mm_unpacklo_epi32(same, same);
  }
  static ZOR_ALWAYS_INLINE V Select(V which, V a, V b) {
    return _mm_or_si128(_mm_andnot_si128(which, a), _mm_and_si128(which, b));
  }
  static ZOR_ALWAYS_INLINE std::int32_t InTurn(std::uint8_t*, const BoxRow&, const BoxRun&,
                                               const std::uint16_t*) {
    return 0;
  }
  template <int kBytes>
  static ZOR_ALWAYS_INLINE V Pairs(const std::uint8_t* p) {
    if (kBytes == 4) return AddPixels(Widen(p), Widen(p + 8));
    const V zero = _mm_setzero_si128();
    const V even = _mm_unpacklo_epi32(Pixel(p), Pixel(p + 6));
    const V odd = _mm_unpacklo_epi32(Pixel(p + 3), Pixel(p + 9));
    return Add(_mm_unpacklo_epi8(even, zero), _mm_unpacklo_epi8(odd, zero));
  }
  static ZOR_ALWAYS_INLINE V Pixel(const std::uint8_t* p) {
    int word;
    __builtin_memcpy(&word, p, 4);
    return _mm_cvtsi32_si128(word);
  }
};

std::uint64_t NoPlan(const BoxRun&) noexcept {
  return 0;
}

void Row(std::uint8_t* out, const BoxRow& row, const BoxRun& run,
         const BoxScratch& scratch) noexcept {
  AverageRow<Sse2>(out, row, run, scratch);
}

void Columns(std::uint16_t* sums, const BoxRow& row, const BoxRun& run) noexcept {
  SumColumns<Sse2>(sums, row, run);
}

}  // namespace

const BoxRowForm kBoxRowsSse2 = {NoPlan, nullptr, Row, Columns};

}  // namespace zor
