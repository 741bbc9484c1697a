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
};

}  // namespace

void BoxRowAvx512(std::uint8_t* out, const BoxRow& row, const BoxScratch& scratch) noexcept {
  AverageRow<Avx512>(out, row, scratch);
}

}  // namespace zor
