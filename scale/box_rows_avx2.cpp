// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <immintrin.h>

#include "scale/box_rows_vector.h"

namespace zor {
namespace {

struct Avx2 {
  using V = __m256i;
  static constexpr std::int32_t kLanes = 16;

  static ZOR_ALWAYS_INLINE V Widen(const std::uint8_t* p) {
    return _mm256_cvtepu8_epi16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
  }
  static ZOR_ALWAYS_INLINE V Load(const std::uint16_t* p) {
    return _mm256_loadu_si256(reinterpret_cast<const V*>(p));
  }
  static ZOR_ALWAYS_INLINE void Store(std::uint16_t* p, V v) {
    _mm256_storeu_si256(reinterpret_cast<V*>(p), v);
  }
  static ZOR_ALWAYS_INLINE V Add(V a, V b) { return _mm256_add_epi16(a, b); }
  static ZOR_ALWAYS_INLINE V Shift(V v, int count) {
    return _mm256_srl_epi16(v, _mm_cvtsi32_si128(count));
  }
  static ZOR_ALWAYS_INLINE void StoreBytes(std::uint8_t* p, V v) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p),
                     _mm_packus_epi16(_mm256_castsi256_si128(v), _mm256_extracti128_si256(v, 1)));
  }
  static ZOR_ALWAYS_INLINE void StoreBytes(std::uint8_t* p, V a, V b) {
    const V packed = _mm256_packus_epi16(a, b);  // a0 b0 | a1 b1
    _mm256_storeu_si256(reinterpret_cast<V*>(p),
                        _mm256_permute4x64_epi64(packed, _MM_SHUFFLE(3, 1, 2, 0)));
  }
  static ZOR_ALWAYS_INLINE V AddPixels(V a, V b) {
    // a0 a1 | a2 a3, b0 b1 | b2 b3 -> a01 b01 | a23 b23 -> a01 a23 | b01 b23
    const V sums = _mm256_add_epi16(_mm256_unpacklo_epi64(a, b), _mm256_unpackhi_epi64(a, b));
    return _mm256_permute4x64_epi64(sums, _MM_SHUFFLE(3, 1, 2, 0));
  }
  static ZOR_ALWAYS_INLINE V Sized(const std::uint32_t* counts, std::uint32_t size) {
    const __m128i four = _mm_loadu_si128(reinterpret_cast<const __m128i*>(counts));
    return _mm256_cvtepi32_epi64(_mm_cmpeq_epi32(four, _mm_set1_epi32(static_cast<int>(size))));
  }
  static ZOR_ALWAYS_INLINE V Select(V which, V a, V b) { return _mm256_blendv_epi8(a, b, which); }
  static ZOR_ALWAYS_INLINE std::int32_t InTurn(std::uint8_t*, const BoxRow&, const BoxRun&,
                                               const std::uint16_t*) {
    return 0;
  }
  template <int kBytes>
  static ZOR_ALWAYS_INLINE V Pairs(const std::uint8_t* p) {
    // Of each pair of pixels the bytes side by side, then added. Four pixels a half.
    const auto* half = reinterpret_cast<const __m128i*>(p);
    const auto* other = reinterpret_cast<const __m128i*>(p + 4 * kBytes);
    const V bytes = _mm256_inserti128_si256(_mm256_castsi128_si256(_mm_loadu_si128(half)),
                                            _mm_loadu_si128(other), 1);
    const __m128i order = kBytes == 4
                              ? _mm_setr_epi8(0, 4, 1, 5, 2, 6, 3, 7, 8, 12, 9, 13, 10, 14, 11, 15)
                              : _mm_setr_epi8(0, 3, 1, 4, 2, 5, 3, 6, 6, 9, 7, 10, 8, 11, 9, 12);
    return _mm256_maddubs_epi16(_mm256_shuffle_epi8(bytes, _mm256_broadcastsi128_si256(order)),
                                _mm256_set1_epi8(1));
  }
};

std::uint64_t NoPlan(const BoxRun&) noexcept {
  return 0;
}

void Row(std::uint8_t* out, const BoxRow& row, const BoxRun& run,
         const BoxScratch& scratch) noexcept {
  AverageRow<Avx2>(out, row, run, scratch);
}

void Columns(std::uint16_t* sums, const BoxRow& row, const BoxRun& run) noexcept {
  SumColumns<Avx2>(sums, row, run);
}

}  // namespace

const BoxRowForm kBoxRowsAvx2 = {NoPlan, nullptr, Row, Columns};

}  // namespace zor
