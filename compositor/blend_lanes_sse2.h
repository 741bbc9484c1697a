// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Policies of 16 and of 8 bytes. Included by the vector forms only.

#include <emmintrin.h>

#include <cstring>

#include "compositor/blend_rows_vector.h"

namespace zor {
namespace {

struct Lanes16 {
  using V = __m128i;
  static constexpr std::size_t kBytes = 16;

  static ZOR_ALWAYS_INLINE V Load(const std::uint8_t* p) {
    return _mm_loadu_si128(reinterpret_cast<const V*>(p));
  }
  static ZOR_ALWAYS_INLINE void Store(std::uint8_t* p, V v) {
    _mm_storeu_si128(reinterpret_cast<V*>(p), v);
  }
  static ZOR_ALWAYS_INLINE V Evens(const std::uint8_t* p) {
    return _mm_packus_epi16(Low(Load(p)), Low(Load(p + 16)));
  }
  static ZOR_ALWAYS_INLINE V Doubled(const std::uint8_t* p) {
    return _mm_unpacklo_epi8(_mm_loadl_epi64(reinterpret_cast<const V*>(p)), _mm_setzero_si128());
  }
  static ZOR_ALWAYS_INLINE V Set(std::uint32_t w) { return _mm_set1_epi16(static_cast<short>(w)); }
  static ZOR_ALWAYS_INLINE V Low(V v) { return _mm_and_si128(v, Set(0x00FF)); }
  static ZOR_ALWAYS_INLINE V High(V v) { return _mm_srli_epi16(v, 8); }
  static ZOR_ALWAYS_INLINE V Sub(V a, V b) { return _mm_sub_epi16(a, b); }
  static ZOR_ALWAYS_INLINE V Mul(V a, V b) { return _mm_mullo_epi16(a, b); }
  static ZOR_ALWAYS_INLINE V Join(V low, V high) {
    return _mm_or_si128(_mm_srli_epi16(low, 8), _mm_and_si128(high, Set(0xFF00)));
  }
  static ZOR_ALWAYS_INLINE V AddBytes(V a, V b) { return _mm_add_epi8(a, b); }
};

/// Half a register; what stands in its upper half is never stored.
struct Lanes8 : Lanes16 {
  static constexpr std::size_t kBytes = 8;

  static ZOR_ALWAYS_INLINE V Load(const std::uint8_t* p) {
    return _mm_loadl_epi64(reinterpret_cast<const V*>(p));
  }
  static ZOR_ALWAYS_INLINE void Store(std::uint8_t* p, V v) {
    _mm_storel_epi64(reinterpret_cast<V*>(p), v);
  }
  static ZOR_ALWAYS_INLINE V Evens(const std::uint8_t* p) {
    const V even = Low(Lanes16::Load(p));
    return _mm_packus_epi16(even, even);
  }
  static ZOR_ALWAYS_INLINE V Doubled(const std::uint8_t* p) {
    std::int32_t four;
    std::memcpy(&four, p, sizeof four);
    return _mm_unpacklo_epi8(_mm_cvtsi32_si128(four), _mm_setzero_si128());
  }
};

}  // namespace
}  // namespace zor
