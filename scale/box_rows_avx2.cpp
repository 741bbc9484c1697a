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
};

}  // namespace

void BoxRowAvx2(std::uint8_t* out, const BoxRow& row, const BoxScratch& scratch) noexcept {
  AverageRow<Avx2>(out, row, scratch);
}

}  // namespace zor
